// Norms of vectors and matrices. NaN anywhere gives NaN; without elements the norm is 0.
#pragma once

#include "values/numeric_array.h"

namespace kelo {

/// (sum of |x|^p)^(1/p); the greatest magnitude for p = Inf, the least for -Inf. REQUIRES: p > 0 or
/// p is -Inf
double vectorNorm(const NumericArray& x, double p);
/// p = 1: greatest column sum of magnitudes; Inf: greatest row sum; 2: greatest singular value.
/// throws Problem
/// REQUIRES: a matrix; p is one of these
double matrixNorm(NumericArray a, double p);

}  // namespace kelo
