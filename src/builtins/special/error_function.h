// The error functions, as plain functions of doubles. Their inverses stand in error_inverse.h.
#pragma once

namespace kelo::special {

/// source: Chebyshev sum of 28 terms for erfc; relative error near 1e-15 for erfc. erf is a
/// difference from 1, so near 0 its error is absolute: some 1e-16.
double erf(double x);
double erfc(double x);

}  // namespace kelo::special
