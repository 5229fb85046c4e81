// Covariances and correlations of the columns of a matrix, apart from how they are asked for.
#pragma once

#include <functional>

#include "values/numeric_array.h"

namespace kelo::builtins {

/// cov: what it is given, and the variance of column data.
struct Cov {
  struct Arg {
    enum class Nanflag { includenan, omitrows, partialrows };

    NumericArray A;
    std::optional<NumericArray> B;
    int64_t w = 0;  ///< 0: over n - 1, 1: over n
    Nanflag nanflag = Nanflag::includenan;
  };

  /// The covariances of the columns of a matrix: as many rows and columns as it has columns. Rows of one observation
  /// each; NaN where there is none. omitrows drops the rows with a NaN, partialrows those with one in a pair of
  /// columns.
  static DoubleArray getVarDouble(const DoubleArray& columns, int64_t w, Arg::Nanflag nanflag);
  static ComplexDoubleArray getVarComplexDouble(const ComplexDoubleArray& columns, int64_t w, Arg::Nanflag nanflag);

  static bool isReal(const NumericArray& a) { return a.has(Property::allReals); }
  static bool areBothReal(const NumericArray& a, const NumericArray& b) { return isReal(a) && isReal(b); }
};

/// The two columns of all elements of each of two arrays. REQUIRES: equal numbers of elements
template <class T>
TypedArray<T> twoColumns(const TypedArray<T>& a, const TypedArray<T>& b);
/// A vector as a column; a matrix as it is.
template <class T>
TypedArray<T> asColumns(const TypedArray<T>& a);

/// The rows of a matrix without a NaN.
template <class T>
TypedArray<T> completeRows(const TypedArray<T>& columns);
/// Calls f(i, j, the rows of columns i and j where neither is NaN) for i <= j.
template <class T>
void forPairsOfColumns(const TypedArray<T>& columns,
                       const std::function<void(int64_t, int64_t, const TypedArray<T>&)>& f);

}  // namespace kelo::builtins
