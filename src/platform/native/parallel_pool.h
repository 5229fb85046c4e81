// The pool behind parallelFor: one thread a core, started with the first large loop.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/parallel.h"

namespace kelo::platform::native {

/// REQUIRES: one caller at a time (the interpreter's thread)
class ParallelPool : public ParallelFor {
 public:
  ~ParallelPool() override;
  void run(int64_t count, int64_t grain, const std::function<void(int64_t, int64_t)>& body) override;

 private:
  using Body = std::function<void(int64_t, int64_t)>;

  void start();
  void serve();
  void work();

  std::vector<std::thread> threads_;
  std::mutex mutex_;
  std::condition_variable begun_, ended_;
  bool ending_ = false;
  bool open_ = false;   // threads may join in the loop that runs
  int64_t round_ = 0;   // of that loop
  int64_t active_ = 0;  // threads that have joined in and not finished

  const Body* body_ = nullptr;
  int64_t count_ = 0, grain_ = 0;
  std::atomic<int64_t> next_ = 0;  // where the next piece begins
};

}  // namespace kelo::platform::native
