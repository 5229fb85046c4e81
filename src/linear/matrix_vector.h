// The product of a matrix and a vector, which waits for memory: that of real numbers on several
// cores where it is large. No fused product is used there, and what an element of the result is
// does not depend on the cores. Complex numbers are the library's matter.
#pragma once

#include <cstdint>

#include "values/complex_double.h"

namespace kelo {

/// y = a * x, a of m x n, column-major. y may not overlap the others.
void multiplyVector(int64_t m, int64_t n, const double* a, const double* x, double* y);
void multiplyVector(int64_t m, int64_t n, const ComplexDouble* a, const ComplexDouble* x, ComplexDouble* y);
/// y = transpose(a) * x
void multiplyVectorTransposed(int64_t m, int64_t n, const double* a, const double* x, double* y);
void multiplyVectorTransposed(int64_t m, int64_t n, const ComplexDouble* a, const ComplexDouble* x, ComplexDouble* y);

}  // namespace kelo
