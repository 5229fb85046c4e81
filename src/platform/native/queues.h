// The two queues on threads: a work queue that owns the interpreter's thread, and the main queue,
// which the shell's own loop serves.
#pragma once

#include <pthread.h>

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>

#include "platform/queues.h"

namespace kelo::platform::native {

/// The interpreter's thread, with a stack of up to 1 GiB that is reserved, not used: recursion ends
/// by address long before. The thread starts with the first block, and sets the stack limit for the
/// engine.
class ThreadQueue : public WorkQueue {
 public:
  ~ThreadQueue() override;  ///< waits for the block that runs; those after it are dropped
  void async(Block block) override;
  /// Runs the block on the queue and waits for its end. REQUIRES: not called on the queue
  void runAndWait(const Block& block);

 private:
  static void* threadMain(void* self);
  void start();
  void serve();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Block> blocks_;
  std::optional<pthread_t> thread_;
  bool ending_ = false;
};

/// Blocks and timers for the main thread. Its loop waits on wakeDescriptor(), at most
/// secondsToNextTimer(), and calls runReady(), which only the main thread may do.
class LoopQueue : public MainQueue {
 public:
  LoopQueue();
  ~LoopQueue() override;
  LoopQueue(const LoopQueue&) = delete;
  LoopQueue& operator=(const LoopQueue&) = delete;

  void async(Block block) override;
  void after(double seconds, Block block) override;

  /// Readable when there is something to run, or when the time to wait has changed.
  int wakeDescriptor() const { return wakePipe_[0]; }
  std::optional<double> secondsToNextTimer();
  /// Runs the blocks and timers that are due.
  void runReady();
  /// Runs a block on another queue, after all that waits there, and returns at its end; meanwhile
  /// this queue is served, since what runs there may wait for it. Thread: main
  void serveWhileRunning(WorkQueue& other, const Block& block);

 private:
  void wake();
  std::optional<Block> takeReady();

  int wakePipe_[2];
  std::mutex mutex_;
  std::deque<Block> blocks_;
  std::multimap<double, Block> timers_;  // by monotonic seconds
};

}  // namespace kelo::platform::native
