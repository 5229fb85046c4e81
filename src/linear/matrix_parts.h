// What the real and the complex form of the routines have in common: matrices made of parts of
// others, and the reading of a status.
#pragma once

#include <algorithm>

#include "messages/message.h"
#include "platform/parallel.h"
#include "values/numbers.h"

namespace kelo {

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

/// rows x columns with the given elements on the diagonal. REQUIRES: they are no more than the
/// diagonal holds
template <class T>
TypedArray<T> diagonalMatrix(int64_t rows, int64_t columns, const TypedArray<T>& diagonal) {
  TypedArray<T> result(SizeVector(rows, columns), T{});
  T* x = result.writable();
  for (int64_t k = 0; k < diagonal.numElements(); ++k) x[k * (rows + 1)] = diagonal[k];
  return result;
}

/// The upper triangle of the first `rows` rows of a packed matrix. REQUIRES: rows <= those of
/// `packed`
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
