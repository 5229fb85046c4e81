// Whole contiguous columns: the kernels for a single long slice, where the processor would wait for
// each addition or comparison before the next. With `parallel` a long column is split over the
// cores; it must not be given inside a loop that is split already. Results do not depend on it.
#pragma once

#include <cstdint>

#include "platform/parallel.h"

namespace kelo::builtins {

/// 0 + x[0] + x[1] + ..., rounded after each addition from the left: bit for bit what the plain
/// loop gives, up to four times as fast on one core where the running sum is large against the
/// numbers.
double sumInOrder(const double* x, int64_t n, platform::ParallelFor* parallel = nullptr);

/// The largest number, NaN passed over; of equal numbers (zeros of both signs) any. -Inf when there
/// is none.
double largest(const double* x, int64_t n, platform::ParallelFor* parallel = nullptr);
/// The smallest one; Inf when there is none.
double smallest(const double* x, int64_t n, platform::ParallelFor* parallel = nullptr);

}  // namespace kelo::builtins
