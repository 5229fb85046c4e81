// Semaphores and locks of the machine.
#pragma once

#include "platform/semaphore.h"

namespace kelo::platform::native {

class ThreadSynchronization : public Synchronization {
 public:
  std::shared_ptr<Semaphore> makeSemaphore() override;
  std::unique_ptr<Lock> makeLock() override;
};

}  // namespace kelo::platform::native
