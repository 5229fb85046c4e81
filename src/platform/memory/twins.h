// The outside in memory, for tests and for the transcripts: nothing here waits, reads a disk or
// looks at a clock, so a test gives the same result each time.
//
// InlineQueue runs a block where it is submitted, unless one is running: then after it.
// ManualMainQueue collects what is submitted until the test runs it; its timers go by its own time,
// which the test moves. A ScriptedSemaphore that is waited for asks the test what happens meanwhile
// (a press of a button, a timer), again and again until it is signalled.
#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <vector>

#include "platform/clock.h"
#include "platform/key_value_store.h"
#include "platform/queues.h"
#include "platform/semaphore.h"

namespace kelo::platform {

class InlineQueue : public WorkQueue {
 public:
  void async(Block block) override {
    blocks_.push_back(std::move(block));
    if (running_) return;
    running_ = true;
    while (!blocks_.empty()) {
      const Block next = std::move(blocks_.front());
      blocks_.pop_front();
      next();
    }
    running_ = false;
  }

 private:
  std::deque<Block> blocks_;
  bool running_ = false;
};

class ManualClock : public Clock {
 public:
  CalendarTime localTime() override { return calendar; }
  double unixSeconds() override { return utc; }
  double monotonicSeconds() override { return seconds; }

  CalendarTime calendar = {2024, 2, 29, 12, 30, 15.25};
  double utc = 1709206215.25;  ///< the same moment
  double seconds = 1000;
};

class ManualMainQueue : public MainQueue {
 public:
  explicit ManualMainQueue(ManualClock& clock) : clock_(clock) {}

  void async(Block block) override { blocks_.push_back(std::move(block)); }
  void after(double seconds, Block block) override { timers_.emplace(clock_.seconds + seconds, std::move(block)); }

  /// Runs what was submitted.
  void drain() {
    while (!blocks_.empty()) {
      const Block next = std::move(blocks_.front());
      blocks_.pop_front();
      next();
    }
  }
  bool hasTimer() const { return !timers_.empty(); }
  /// Moves the time to the next timer and runs it. REQUIRES: hasTimer()
  void fireNextTimer() {
    const auto timer = timers_.extract(timers_.begin());
    clock_.seconds = std::max(clock_.seconds, timer.key());
    timer.mapped()();
    drain();
  }

 private:
  ManualClock& clock_;
  std::deque<Block> blocks_;
  std::multimap<double, Block> timers_;
};

class ScriptedSynchronization : public Synchronization {
 public:
  /// What happens while a run is asleep. It must come to a signal in the end.
  Block whileAsleep = [] {};

  std::shared_ptr<Semaphore> makeSemaphore() override { return std::make_shared<ScriptedSemaphore>(*this); }
  std::unique_ptr<Lock> makeLock() override { return std::make_unique<NoLock>(); }

 private:
  class ScriptedSemaphore : public Semaphore {
   public:
    explicit ScriptedSemaphore(ScriptedSynchronization& owner) : owner_(owner) {}
    void signal() override { ++count_; }
    void wait() override {
      while (count_ == 0) owner_.whileAsleep();
      --count_;
    }

   private:
    ScriptedSynchronization& owner_;
    int count_ = 0;
  };
  class NoLock : public Lock {
   public:
    void lock() override {}
    void unlock() override {}
  };
};

class MemoryStore : public KeyValueStore {
 public:
  std::optional<StoredValue> get(const std::string& key) override {
    const auto found = values.find(key);
    if (found == values.end()) return std::nullopt;
    return found->second;
  }
  void change(const std::string& key, Change change) override {
    const std::optional<StoredValue> old = get(key);
    values[key] = change(old ? &*old : nullptr);
  }
  bool save() override {
    ++saves;
    return true;
  }

  std::map<std::string, StoredValue> values;
  int saves = 0;
};

}  // namespace kelo::platform
