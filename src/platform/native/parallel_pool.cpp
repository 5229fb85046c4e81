// The caller takes pieces along with the pool's threads, so that a machine with one core has no
// pool at all. It waits only for threads that joined in before the pieces ran out: one that wakes
// late, since its core was busy, finds the loop closed and costs nothing.
#include "platform/native/parallel_pool.h"

#include <algorithm>

namespace kelo::platform::native {

ParallelPool::~ParallelPool() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    ending_ = true;
  }
  begun_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void ParallelPool::start() {
  const unsigned others = std::max(1u, std::thread::hardware_concurrency()) - 1;
  try {
    for (unsigned k = 0; k < others; ++k) threads_.emplace_back([this] { serve(); });
  } catch (const std::system_error&) {
    // Fewer threads than cores: those that there are do the work.
  }
}

void ParallelPool::run(int64_t count, int64_t grain, const Body& body) {
  static const bool hasOthers = std::thread::hardware_concurrency() > 1;
  if (threads_.empty() && hasOthers) start();
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    body_ = &body;
    count_ = count;
    grain_ = std::max<int64_t>(1, grain);
    next_ = 0;
    open_ = true;
    ++round_;
  }
  begun_.notify_all();
  work();
  std::unique_lock<std::mutex> lock(mutex_);
  open_ = false;
  ended_.wait(lock, [this] { return active_ == 0; });
}

void ParallelPool::serve() {
  int64_t seen = 0;
  std::unique_lock<std::mutex> lock(mutex_);
  while (true) {
    begun_.wait(lock, [&] { return ending_ || (open_ && round_ != seen); });
    if (ending_) return;
    seen = round_;
    ++active_;
    lock.unlock();
    work();
    lock.lock();
    if (--active_ == 0) ended_.notify_one();
  }
}

void ParallelPool::work() {
  while (true) {
    const int64_t begin = next_.fetch_add(grain_);
    if (begin >= count_) return;
    (*body_)(begin, std::min(count_, begin + grain_));
  }
}

}  // namespace kelo::platform::native
