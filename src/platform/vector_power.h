// Powers of flat arrays, by the vector units where that is faster.
#pragma once

#include <cstdint>

namespace kelo::platform {

/// z[i] = x[i] to the power y[i] for i from 0 to n - 1, NaN where that is not real. z may be x or
/// y, but not overlap them otherwise. An element does not depend on its neighbours.
using PowerRoutine = void (*)(double* z, const double* x, const double* y, int64_t n);

/// The fastest routine for this processor: within 1 ULP, and exact where the power is a whole
/// number below 2^53 of a whole number.
PowerRoutine powerRoutine();
/// The routine that calls the C library element by element.
PowerRoutine plainPowerRoutine();

/// z[i] = x[i] to the power `exponent`, which is not 0 and has a magnitude up to kMostWholePower.
/// z may be x, but not overlap it otherwise. An element does not depend on its neighbours.
using WholePowerRoutine = void (*)(double* z, const double* x, int exponent, int64_t n);
inline constexpr int kMostWholePower = 64;

/// The true powers rounded, but for one in many millions. Null where powerRoutine() is as fast.
WholePowerRoutine wholePowerRoutine();

}  // namespace kelo::platform
