#include "platform/native/synchronization.h"

#include <condition_variable>
#include <mutex>

namespace kelo::platform::native {
namespace {

class ConditionSemaphore : public Semaphore {
 public:
  void signal() override {
    {
      const std::lock_guard<std::mutex> guard(mutex_);
      ++count_;
    }
    changed_.notify_one();
  }
  void wait() override {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [this] { return count_ > 0; });
    --count_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int count_ = 0;
};

class MutexLock : public Lock {
 public:
  void lock() override { mutex_.lock(); }
  void unlock() override { mutex_.unlock(); }

 private:
  std::mutex mutex_;
};

}  // namespace

std::shared_ptr<Semaphore> ThreadSynchronization::makeSemaphore() { return std::make_shared<ConditionSemaphore>(); }
std::unique_ptr<Lock> ThreadSynchronization::makeLock() { return std::make_unique<MutexLock>(); }

}  // namespace kelo::platform::native
