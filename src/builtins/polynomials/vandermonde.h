// The matrix of powers of points.
#pragma once

#include "messages/fatal_fault.h"
#include "values/numeric_array.h"

namespace kelo::builtins {

/// A row for each element of x, with its powers from `degree` down to 0. REQUIRES: degree >= 0
template <class T>
TypedArray<T> vandermonde(const TypedArray<T>& x, int64_t degree) {
  const int64_t m = x.numElements();
  auto matrix = TypedArray<T>::uninitialized(SizeVector(m, checkedAdd(degree, 1)));
  const T* points = x.data();
  T* column = matrix.writable() + degree * m;
  std::fill_n(column, m, T{1});
  for (; column != matrix.data(); column -= m) {
    for (int64_t i = 0; i < m; ++i) column[i - m] = column[i] * points[i];
  }
  return matrix;
}

}  // namespace kelo::builtins
