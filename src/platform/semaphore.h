// What a run sleeps on, and the lock that guards the little that both threads share.
#pragma once

#include <memory>

namespace kelo::platform {

/// A counting semaphore. Thread: any.
class Semaphore {
 public:
  virtual ~Semaphore() = default;
  virtual void signal() = 0;
  virtual void wait() = 0;  ///< no time limit
};

/// A lock for use with std::lock_guard. Never held while waiting.
class Lock {
 public:
  virtual ~Lock() = default;
  virtual void lock() = 0;
  virtual void unlock() = 0;
};

/// Makes the objects that threads meet at.
class Synchronization {
 public:
  virtual ~Synchronization() = default;
  virtual std::shared_ptr<Semaphore> makeSemaphore() = 0;  ///< with count 0
  virtual std::unique_ptr<Lock> makeLock() = 0;
};

}  // namespace kelo::platform
