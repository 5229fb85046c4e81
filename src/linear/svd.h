// Singular values and what follows from them: the rank and the pseudo-inverse.
//
// REQUIRES throughout: no NaN and no Inf, of which the library does not promise to come to an end.
#pragma once

#include <optional>

#include "values/numeric_array.h"

namespace kelo {

/// How many singular vectors. full: u is m x m, s is m x n, v is n x n. economy: u is m x k, s is k
/// x k, v is n x k, k = min(m, n).
enum class SvdSize { full, economy };

/// a = u * s * v'.
struct Svd {
  NumericArray u;
  DoubleArray s;
  NumericArray v;
};

/// min(m, n) of them, a column, the largest first. throws Problem with the text `failed`
DoubleArray singularValues(NumericArray a, const char* failed);
/// throws Problem
Svd svd(NumericArray a, SvdSize size);

/// Below it a singular value of a matrix of this size counts as 0: max(size) times the distance
/// from `norm`, the greatest singular value, to the next number.
double rankTolerance(const SizeVector& size, double norm);

/// v * s^+ * u', n x m. A singular value up to the tolerance counts as 0. throws Problem
NumericArray pseudoInverse(NumericArray a, std::optional<double> tolerance);

}  // namespace kelo
