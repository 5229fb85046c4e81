// A key-value store that both threads may use: one at a time.
#pragma once

#include <memory>
#include <mutex>

#include "platform/key_value_store.h"
#include "platform/semaphore.h"

namespace kelo::platform {

class LockedStore final : public KeyValueStore {
 public:
  /// REQUIRES: the store outlives this and is used by nobody else
  LockedStore(KeyValueStore& store, Synchronization& synchronization)
      : store_(store), lock_(synchronization.makeLock()) {}

  std::optional<StoredValue> get(const std::string& key) override {
    const std::lock_guard<Lock> guard(*lock_);
    return store_.get(key);
  }
  void change(const std::string& key, Change change) override {
    const std::lock_guard<Lock> guard(*lock_);
    store_.change(key, std::move(change));
  }
  bool save() override {
    const std::lock_guard<Lock> guard(*lock_);
    return store_.save();
  }

 private:
  KeyValueStore& store_;
  std::unique_ptr<Lock> lock_;
};

}  // namespace kelo::platform
