// The two threads of control, as the engine sees them: the serial queue on which all parsing and
// evaluation run, and the main queue, on which the shell lives. The engine only submits; what a
// queue is made of is the shell's affair.
#pragma once

#include <functional>

namespace kelo::platform {

using Block = std::function<void()>;

/// A serial queue: blocks run one after the other, in the order of submission.
class WorkQueue {
 public:
  virtual ~WorkQueue() = default;
  /// Thread: any. Returns at once. The block must not throw.
  virtual void async(Block block) = 0;
};

/// The queue of the main thread, with one-shot timers.
class MainQueue : public WorkQueue {
 public:
  /// Runs the block once on this queue, when `seconds` have passed. Thread: any.
  virtual void after(double seconds, Block block) = 0;
};

}  // namespace kelo::platform
