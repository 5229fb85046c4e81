// Where a matrix has its nonzero elements, and whether it mirrors itself. NaN is not zero, and
// equals nothing.
#pragma once

#include "values/numeric_array.h"

namespace kelo {

/// How far the nonzero elements reach from the main diagonal.
struct Bandwidth {
  int64_t lower = 0;
  int64_t upper = 0;
};

/// REQUIRES: a matrix that is not of characters
Bandwidth bandwidthOf(const NumericArray& a);

enum class Mirror { plain, conjugated };

/// Whether the matrix is square and differs from its (conjugated) transpose nowhere by more than
/// the tolerance.
bool isMirrored(const NumericArray& a, Mirror mirror, double tolerance);

}  // namespace kelo
