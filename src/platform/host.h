// All that the interpreter needs of the outside, in one record. A shell fills it with native forms,
// a test with the twins of memory/.
#pragma once

#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/key_value_store.h"
#include "platform/queues.h"
#include "platform/semaphore.h"

namespace kelo::platform {

struct Host {
  WorkQueue& parserQueue;
  MainQueue& mainQueue;
  Synchronization& synchronization;
  FileSystem& files;
  KeyValueStore& store;
  Clock& clock;
};

}  // namespace kelo::platform
