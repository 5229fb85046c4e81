// The direct convolution of two vectors.
#pragma once

#include <span>

#include "values/numeric_array.h"

namespace kelo::builtins {

/// Elements `first` to `first + count - 1` of the full convolution of u and v: out[k] is the sum of
/// u[i] * v[j] over all i + j == first + k. A sum runs in the order of the shorter vector. Large
/// ones are split over the cores.
///
/// REQUIRES: neither is empty; 0 <= first, first + count <= u.size() + v.size() - 1; out is neither
void convolve(std::span<const double> u, std::span<const double> v, int64_t first, int64_t count, double* out);
void convolve(std::span<const ComplexDouble> u, std::span<const ComplexDouble> v, int64_t first, int64_t count,
              ComplexDouble* out);

/// The product of two polynomials, as a row. REQUIRES: neither is empty
template <class T>
TypedArray<T> polynomialProduct(const TypedArray<T>& a, const TypedArray<T>& b) {
  const int64_t n = a.numElements() + b.numElements() - 1;
  auto product = TypedArray<T>::uninitialized(SizeVector(1, n));
  convolve(a.values(), b.values(), 0, n, product.writable());
  return product;
}

}  // namespace kelo::builtins
