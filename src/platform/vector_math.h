// Mathematics on flat arrays: one scalar function applied to each element, by the vector units
// where that is faster.
//
// A routine gives for each element what it would give for that element alone: results depend
// neither on the neighbours nor on where a loop was split. A result is within 1 ULP of the true
// value, or is that of the C library (whose sinh, tanh, acosh, asinh, atanh and log10 err by up to
// 2). ceil, floor, fix, round, absolute, reciprocal and sqrt are exact.
#pragma once

#include <cstdint>

namespace kelo::platform {

// clang-format off
enum class VectorFunction : uint8_t {
  cos, sin, tan, cosh, sinh, tanh, acos, asin, atan, acosh, asinh, atanh,
  exp, log, log2, log10, sqrt, reciprocal, absolute, ceil, fix, floor, round,
};
// clang-format on
inline constexpr int kVectorFunctionCount = 23;

/// y[i] = f(x[i]) for i from 0 to n - 1. y may be x itself, but not overlap it otherwise.
using VectorRoutine = void (*)(double* y, const double* x, int64_t n);

/// The fastest routine for this processor. `round` rounds halves away from zero, `fix` towards
/// zero.
VectorRoutine vectorRoutine(VectorFunction function);
/// The routine that calls the C library element by element.
VectorRoutine plainRoutine(VectorFunction function);

}  // namespace kelo::platform
