// The error functions, as plain functions of doubles. Their inverses stand in error_inverse.h.
#pragma once

#include <cstdint>

namespace kelo::special {

/// source: Chebyshev sum of 28 terms for erfc; relative error near 1e-15 for erfc. erf is a
/// difference from 1, so near 0 its error is absolute: some 1e-16.
double erf(double x);
double erfc(double x);

/// The same of n numbers, many at a time; y may be x.
void erf(double* y, const double* x, int64_t n);
void erfc(double* y, const double* x, int64_t n);

}  // namespace kelo::special
