// The reduced row echelon form.
#pragma once

#include <optional>
#include <vector>

#include "values/numeric_array.h"

namespace kelo {

struct Rref {
  NumericArray reduced;
  std::vector<int64_t> pivots;  ///< columns of the leading 1s, from 0
};

/// By Gauss-Jordan elimination with exchanges of rows. What is left of a column counts as 0 up to
/// the tolerance, which is by default that of the rank, with the greatest row sum for the norm.
/// REQUIRES: a matrix
Rref rref(NumericArray a, std::optional<double> tolerance);

}  // namespace kelo
