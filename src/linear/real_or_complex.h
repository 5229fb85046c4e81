// The one place where a routine chooses between its real and its complex form, and what both forms have in common.
#pragma once

#include <algorithm>

#include "messages/message.h"
#include "platform/parallel.h"
#include "values/numeric_array.h"

namespace kelo {

/// Calls f with the matrix in doubles where it holds only real numbers, whatever its record is, else as complex
/// numbers. The array is moved in, so that what nobody else holds may be overwritten.
template <class F>
auto realOrComplex(NumericArray a, F&& f) {
  return a.has(Property::allReals) ? f(std::move(a).toDoubleArray()) : f(std::move(a).toComplexArray());
}

inline double magnitudeOf(double x) { return std::fabs(x); }
inline double magnitudeOf(ComplexDouble z) { return z.magnitude(); }
inline double conjugateOf(double x) { return x; }
inline ComplexDouble conjugateOf(ComplexDouble z) { return conj(z); }

/// throws Problem with this text unless `info` says that the routine is done
inline void requireDone(int info, const char* failed) {
  if (info != 0) throw expectation(failed);
}

/// rows x columns with 1 on the diagonal.
template <class T>
TypedArray<T> identityMatrix(int64_t rows, int64_t columns) {
  TypedArray<T> result(SizeVector(rows, columns), T{});
  T* x = result.writable();
  for (int64_t k = 0; k < std::min(rows, columns); ++k) x[k * (rows + 1)] = T{1};
  return result;
}

/// rows x columns with the given elements on the diagonal. REQUIRES: they are no more than the diagonal holds
template <class T>
TypedArray<T> diagonalMatrix(int64_t rows, int64_t columns, const TypedArray<T>& diagonal) {
  TypedArray<T> result(SizeVector(rows, columns), T{});
  T* x = result.writable();
  for (int64_t k = 0; k < diagonal.numElements(); ++k) x[k * (rows + 1)] = diagonal[k];
  return result;
}

/// The upper triangle of the first `rows` rows of a packed matrix. REQUIRES: rows <= those of `packed`
template <class T>
TypedArray<T> upperTriangle(const TypedArray<T>& packed, int64_t rows) {
  const int64_t n = packed.size().columns();
  const int64_t ld = packed.size().rows();
  auto result = TypedArray<T>::uninitialized(SizeVector(rows, n));
  T* out = result.writable();
  const T* in = packed.data();
  platform::parallelForUnits(n, rows, [=](int64_t begin, int64_t end) {
    for (int64_t j = begin; j < end; ++j) {
      const int64_t kept = std::min(j + 1, rows);
      std::copy_n(in + j * ld, kept, out + j * rows);
      std::fill(out + j * rows + kept, out + (j + 1) * rows, T{});
    }
  });
  return result;
}

}  // namespace kelo
