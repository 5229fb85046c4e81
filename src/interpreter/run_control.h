// The state of the run, the request to stop it, and what it sleeps on in `pause` and `input`.
//
// Two threads meet here: the main thread, which presses buttons, and the parser queue, which runs.
// What both touch is the request to stop (atomic), the permission to pause (atomic) and the wait
// (under one lock, which is never held while waiting). The run state belongs to the main thread.
#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include "interpreter/console.h"
#include "platform/host.h"

namespace kelo {

/// Whether `pause` waits.
enum class AllowingPause { on, off };

class RunControl {
 public:
  /// What a sleeping run waits for.
  struct Wait {
    RunState::Status status;  ///< paused or waitInput
    bool isTimed;             ///< a timer ends it, if nobody does before
    int64_t number = 0;       ///< of this wait: each has its own
  };

  /// REQUIRES: what is given outlives this
  RunControl(const platform::Host& host, Console& console);

  // ---- Thread: the parser queue

  /// True once after the stop button.
  bool takeStopRequest() {
    return shouldExitExecution_.load(std::memory_order_relaxed) && shouldExitExecution_.exchange(false);
  }
  /// The request itself, for native code, which looks at it and leaves it.
  const std::atomic<bool>& stopRequest() const { return shouldExitExecution_; }
  /// Sleeps until a line is there; false when the run is being stopped.
  bool waitForInput();
  /// Sleeps until the run button, or until `seconds` have passed. Returns at once when pausing is
  /// off.
  void pauseFor(std::optional<double> seconds);

  /// Runs a block on the main thread and returns when it has ended; what it throws is thrown here.
  void runOnMain(const platform::Block& block);

  // ---- Thread: main

  RunState::Status status() const { return console_.runState.status; }
  /// What the run waits for at present; nothing when it does not wait, or has been answered or
  /// stopped.
  std::optional<Wait> wait() const;
  /// A run begins: an old request to stop is taken back, one that comes from now on is for this
  /// run.
  void begin();
  /// Answers the wait, if there is one.
  void wake();
  /// Asks the run to stop, and wakes it.
  void stop();
  /// A run has ended.
  void end(const RunResult& result);

  std::atomic<AllowingPause> allowPause = AllowingPause::on;

 private:
  using SemaphoreRef = std::shared_ptr<platform::Semaphore>;
  /// A wait and what the run sleeps on; no semaphore: it has been answered.
  struct Sleep {
    SemaphoreRef semaphore;
    Wait wait;
  };

  void sleep(Wait wait, std::optional<double> seconds);
  void timerFired(const SemaphoreRef& own);
  SemaphoreRef takeSemaphore();
  void setStatus(RunState::Status status);

  platform::MainQueue& mainQueue_;
  platform::Synchronization& synchronization_;
  Console& console_;
  std::atomic<bool> shouldExitExecution_ = false;
  const std::unique_ptr<platform::Lock> lock_;
  Sleep sleep_{};  // under lock_
  int64_t waits_ = 0;
};

}  // namespace kelo
