// Both queues are a list under a mutex. The work queue waits on a condition, the main queue on a
// pipe, so that the shell can wait for the terminal and for blocks with one poll.
#include "platform/native/queues.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "platform/native/clock.h"
#include "platform/native/machine.h"
#include "platform/stack_guard.h"

namespace kelo::platform::native {
namespace {

constexpr size_t kStackBytes = size_t{1} << 30;
// What stays below the limit: for library code that does not ask, the parser's runtime among it.
constexpr size_t kStackReserve = size_t{64} << 20;

/// At most an eighth of what there is, in whole pages.
size_t stackBytes() {
  constexpr int64_t kPage = 4096;
  const int64_t most = std::max<int64_t>(addressSpaceLimit() / 8, int64_t{8} << 20);
  return std::min(kStackBytes, static_cast<size_t>(most / kPage * kPage));
}

void limitStackOfThisThread() {
  pthread_attr_t attributes;
  void* lowest = nullptr;
  size_t size = 0;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return;
  if (pthread_attr_getstack(&attributes, &lowest, &size) == 0) {
    setStackLimit(static_cast<const char*>(lowest) + (size > 2 * kStackReserve ? kStackReserve : size / 2));
  }
  pthread_attr_destroy(&attributes);
}

}  // namespace

// ---- ThreadQueue

ThreadQueue::~ThreadQueue() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    ending_ = true;
    blocks_.clear();
  }
  changed_.notify_all();
  if (thread_) pthread_join(*thread_, nullptr);
}

void ThreadQueue::async(Block block) {
  const std::lock_guard<std::mutex> guard(mutex_);
  blocks_.push_back(std::move(block));
  if (!thread_) start();
  changed_.notify_all();
}

void ThreadQueue::runAndWait(const Block& block) {
  bool done = false;
  async([this, &block, &done] {
    block();
    {
      const std::lock_guard<std::mutex> guard(mutex_);
      done = true;
    }
    changed_.notify_all();
  });
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait(lock, [&done] { return done; });
}

void ThreadQueue::start() {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  // Where address space is limited, smaller stacks serve, with less recursion.
  int fault = 1;
  for (size_t bytes = stackBytes(); fault != 0 && bytes >= (size_t{8} << 20); bytes /= 2) {
    pthread_t thread;
    pthread_attr_setstacksize(&attributes, bytes);
    fault = pthread_create(&thread, &attributes, threadMain, this);
    if (fault == 0) thread_ = thread;
  }
  pthread_attr_destroy(&attributes);
  if (fault != 0) {
    std::fputs("kelo: the interpreter's thread cannot be started\n", stderr);
    std::_Exit(70);
  }
}

void* ThreadQueue::threadMain(void* self) {
  limitStackOfThisThread();
  static_cast<ThreadQueue*>(self)->serve();
  return nullptr;
}

void ThreadQueue::serve() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return ending_ || !blocks_.empty(); });
    if (ending_) return;
    Block block = std::move(blocks_.front());
    blocks_.pop_front();
    lock.unlock();
    block();
    block = nullptr;
    lock.lock();
  }
}

// ---- LoopQueue

LoopQueue::LoopQueue() {
  if (pipe2(wakePipe_, O_NONBLOCK | O_CLOEXEC) != 0) {
    std::perror("kelo: pipe");
    std::_Exit(70);
  }
}

LoopQueue::~LoopQueue() {
  close(wakePipe_[0]);
  close(wakePipe_[1]);
}

void LoopQueue::async(Block block) {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    blocks_.push_back(std::move(block));
  }
  wake();
}

void LoopQueue::after(double seconds, Block block) {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    timers_.emplace(MonotonicClock::now() + seconds, std::move(block));
  }
  wake();
}

// A full pipe wakes as well as one more byte would.
void LoopQueue::wake() {
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(wakePipe_[1], &byte, 1);
}

std::optional<double> LoopQueue::secondsToNextTimer() {
  const std::lock_guard<std::mutex> guard(mutex_);
  if (!blocks_.empty()) return 0;
  if (timers_.empty()) return std::nullopt;
  return std::fmax(0, timers_.begin()->first - MonotonicClock::now());
}

std::optional<Block> LoopQueue::takeReady() {
  const std::lock_guard<std::mutex> guard(mutex_);
  if (!blocks_.empty()) {
    Block block = std::move(blocks_.front());
    blocks_.pop_front();
    return block;
  }
  if (timers_.empty() || timers_.begin()->first > MonotonicClock::now()) return std::nullopt;
  return std::move(timers_.extract(timers_.begin()).mapped());
}

void LoopQueue::runReady() {
  char bytes[256];
  while (read(wakePipe_[0], bytes, sizeof bytes) > 0) continue;
  while (const std::optional<Block> block = takeReady()) (*block)();
}

void LoopQueue::serveWhileRunning(WorkQueue& other, const Block& block) {
  bool hasEnded = false;
  other.async([this, &block, &hasEnded] {
    block();
    async([&hasEnded] { hasEnded = true; });
  });
  while (!hasEnded) {
    const std::optional<double> seconds = secondsToNextTimer();
    pollfd wakes = {wakeDescriptor(), POLLIN, 0};
    poll(&wakes, 1, seconds ? static_cast<int>(std::fmin(std::ceil(*seconds * 1000), 3600e3)) : -1);
    runReady();
  }
}

}  // namespace kelo::platform::native
