// Sorting of arrays of any kind along a dimension.
#pragma once

#include "values/numeric_array.h"

namespace kelo::builtins {

struct SortOrder {
  /// What numbers are compared by. value: real parts, ties by imaginary parts. magnitude: absolute values, ties by phase
  /// angles in (-pi, pi]. automatic: magnitude where a part is imaginary, else value.
  enum class By { value, magnitude, automatic };
  /// Where NaNs go. automatic: last when ascending, first when descending.
  enum class Missing { first, last, automatic };

  bool descending = false;
  By by = By::automatic;
  Missing missing = Missing::automatic;
};

struct SortedArray {
  NumericArray values;    ///< of the kind and size of the array
  DoubleArray positions;  ///< where each stood along the dimension, from 1; 0 x 0 unless asked for
};

/// Equal elements keep their order, also when descending; zeros of both signs are equal. NaNs, and complex numbers with a NaN
/// part, keep their order among themselves.
///
/// dimension  from 1; past ndim nothing moves
SortedArray sortedAlong(const NumericArray& array, int64_t dimension, const SortOrder& order, bool withPositions);

}  // namespace kelo::builtins
