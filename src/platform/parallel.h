// Splitting of large loops over the cores, as an interface: the engine knows no threads.
#pragma once

#include <cstdint>
#include <functional>

namespace kelo::platform {

/// Runs pieces of one loop side by side. The native form keeps a pool of threads; without one,
/// everything runs here.
class ParallelFor {
 public:
  virtual ~ParallelFor() = default;
  /// Calls body(begin, end) for pieces that together cover 0 to count - 1 and returns when all are
  /// done. Pieces begin at multiples of `grain`, so that what a piece computes does not depend on
  /// the number of cores. The body must not throw.
  virtual void run(int64_t count, int64_t grain, const std::function<void(int64_t, int64_t)>& body) = 0;
};

/// The one in use; a shell sets it at start. Null: loops run in one piece on the caller's thread.
void setParallelFor(ParallelFor* parallel);
ParallelFor* currentParallelFor();

/// Elements below which splitting a loop costs more than it gains.
inline constexpr int64_t kParallelThreshold = 1 << 16;

/// The loop of a kernel: in one call for small counts, split over the cores for large ones.
template <class Body>
void parallelFor(int64_t count, Body&& body, int64_t grain = kParallelThreshold / 2) {
  ParallelFor* parallel = currentParallelFor();
  if (count < kParallelThreshold || parallel == nullptr) {
    body(int64_t{0}, count);
  } else {
    parallel->run(count, grain, body);
  }
}

/// The loop of a kernel over units of about so many elements each.
template <class Body>
void parallelForUnits(int64_t count, int64_t elementsEach, Body&& body) {
  ParallelFor* parallel = currentParallelFor();
  const int64_t each = elementsEach < 1 ? 1 : elementsEach;
  const int64_t grain = kParallelThreshold / 2 / each + 1;
  if (parallel == nullptr || count <= grain || count < kParallelThreshold / each) {
    body(int64_t{0}, count);
  } else {
    parallel->run(count, grain, body);
  }
}

}  // namespace kelo::platform
