// Angles of points on flat arrays, by the vector units where that is faster.
#pragma once

#include <cstdint>

namespace kelo::platform {

/// z[i] = atan2(y[i], x[i]) for i from 0 to n - 1. An element does not depend on its neighbours.
using AngleRoutine = void (*)(double* z, const double* y, const double* x, int64_t n);

/// The fastest routine for this processor: within 1 ULP.
AngleRoutine angleRoutine();
/// The routine that calls the C library element by element.
AngleRoutine plainAngleRoutine();

}  // namespace kelo::platform
