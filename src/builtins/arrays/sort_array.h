// Sorting of arrays of any kind along a dimension.
#pragma once

#include "values/numeric_array.h"

namespace kelo::builtins {

struct SortOrder {
  enum class Direction { ascend, descend };
  /// What numbers are compared by. real: real parts, ties by imaginary parts. abs: absolute values,
  /// ties by phase angles in (-pi, pi]. auto_: abs where a part is imaginary, else real.
  enum class ComparisonMethod { real, abs, auto_ };
  /// Where NaNs go. auto_: last when ascending, first when descending.
  enum class MissingPlacement { last, first, auto_ };

  bool isDescending() const { return direction == Direction::descend; }

  Direction direction = Direction::ascend;
  ComparisonMethod comparisonMethod = ComparisonMethod::auto_;
  MissingPlacement missingPlacement = MissingPlacement::auto_;
};

struct SortedArray {
  NumericArray values;    ///< of the kind and size of the array
  DoubleArray positions;  ///< where each stood along the dimension, from 1; 0 x 0 unless asked for
};

/// Equal elements keep their order, also when descending; zeros of both signs are equal. NaNs, and
/// complex numbers with a NaN part, keep their order among themselves.
///
/// dimension  from 1; past ndim nothing moves
SortedArray sortedAlong(const NumericArray& array, int64_t dimension, const SortOrder& order, bool withPositions);

}  // namespace kelo::builtins
