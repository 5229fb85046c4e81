// Covariances and correlations of the columns of a matrix, apart from how they are asked for.
#pragma once

#include <functional>

#include "values/numeric_array.h"

namespace kelo::builtins {

/// What rows with a NaN become: as they are, dropped, or dropped for the pair of columns that has
/// it.
enum class Nanflag { includenan, omitrows, partialrows };

/// The covariances of the columns of a matrix: as many rows and columns as it has columns. A row is
/// one observation; NaN where there is none.
///
/// w   0: the sums of products over n - 1, 1: over n
DoubleArray covariances(const DoubleArray& columns, int64_t w, Nanflag nanflag);
ComplexDoubleArray covariances(const ComplexDoubleArray& columns, int64_t w, Nanflag nanflag);

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
