// The columns are centred once, then each pair gives one product; the other half of the matrix is
// the mirror image.
#include "builtins/reductions/covariance.h"

#include <cmath>

#include "builtins/reductions/handlers.h"

namespace kelo::builtins {
namespace {

double over(double x, double n) { return x / n; }
ComplexDouble over(ComplexDouble z, double n) { return {z.real / n, z.imaginary / n}; }

/// The sum of conj(x) * y, in four sums side by side.
template <class T>
T product(const T* x, const T* y, int64_t n) {
  T sums[4] = {};
  int64_t i = 0;
  for (; i + 4 <= n; i += 4) {
    for (int64_t j = 0; j < 4; ++j) sums[j] = sums[j] + conj(x[i + j]) * y[i + j];
  }
  for (; i < n; ++i) sums[0] = sums[0] + conj(x[i]) * y[i];
  return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

template <class T>
TypedArray<T> centred(const TypedArray<T>& columns) {
  const int64_t n = columns.size().rows();
  const TypedArray<T> means = meanAlong(columns, 1);
  auto result = TypedArray<T>::uninitialized(columns.size());
  T* out = result.writable();
  for (int64_t i = 0; i < columns.numElements(); ++i) out[i] = columns[i] - means[i / n];
  return result;
}

template <class T>
TypedArray<T> plainCovariance(const TypedArray<T>& columns, int64_t w) {
  const int64_t n = columns.size().rows();
  const int64_t m = columns.size().columns();
  const auto divisor = static_cast<double>(w == 1 || n <= 1 ? n : n - 1);
  const TypedArray<T> x = centred(columns);
  auto result = TypedArray<T>::uninitialized(SizeVector(m, m));
  T* out = result.writable();
  platform::parallelForUnits(m, n * m / 2, [&](int64_t begin, int64_t end) {
    for (int64_t j = begin; j < end; ++j) {
      for (int64_t i = 0; i <= j; ++i) {
        const T c = over(product(x.data() + i * n, x.data() + j * n, n), divisor);
        out[j + i * m] = conj(c);
        out[i + j * m] = c;
      }
    }
  });
  return result;
}

template <class T>
TypedArray<T> pairwiseCovariance(const TypedArray<T>& columns, int64_t w) {
  const int64_t m = columns.size().columns();
  auto result = TypedArray<T>::uninitialized(SizeVector(m, m));
  T* out = result.writable();
  forPairsOfColumns<T>(columns, [&](int64_t i, int64_t j, const TypedArray<T>& pair) {
    const T c = plainCovariance(pair, w)[2];
    out[j + i * m] = conj(c);
    out[i + j * m] = c;
  });
  return result;
}

template <class T>
TypedArray<T> covariance(const TypedArray<T>& columns, int64_t w, Nanflag nanflag) {
  switch (nanflag) {
    case Nanflag::omitrows: return plainCovariance(completeRows(columns), w);
    case Nanflag::partialrows: return pairwiseCovariance(columns, w);
    case Nanflag::includenan: break;
  }
  return plainCovariance(columns, w);
}

/// The given rows of the given columns.
template <class T>
TypedArray<T> selected(const TypedArray<T>& from, const std::vector<int64_t>& rows,
                       const std::vector<int64_t>& columns) {
  auto result =
      TypedArray<T>::uninitialized(SizeVector(static_cast<int64_t>(rows.size()), static_cast<int64_t>(columns.size())));
  T* out = result.writable();
  for (const int64_t j : columns) {
    for (const int64_t i : rows) *out++ = from[i + j * from.size().rows()];
  }
  return result;
}

template <class T>
std::vector<int64_t> rowsWithoutNaN(const TypedArray<T>& from, const std::vector<int64_t>& columns) {
  std::vector<int64_t> rows;
  const int64_t n = from.size().rows();
  for (int64_t i = 0; i < n; ++i) {
    if (std::none_of(columns.begin(), columns.end(), [&](int64_t j) { return isNaN(from[i + j * n]); }))
      rows.push_back(i);
  }
  return rows;
}

}  // namespace

DoubleArray covariances(const DoubleArray& columns, int64_t w, Nanflag nanflag) {
  return covariance(columns, w, nanflag);
}

ComplexDoubleArray covariances(const ComplexDoubleArray& columns, int64_t w, Nanflag nanflag) {
  return covariance(columns, w, nanflag);
}

template <class T>
TypedArray<T> twoColumns(const TypedArray<T>& a, const TypedArray<T>& b) {
  auto result = TypedArray<T>::uninitialized(SizeVector(a.numElements(), 2));
  T* out = result.writable();
  std::copy_n(a.data(), a.numElements(), out);
  std::copy_n(b.data(), b.numElements(), out + a.numElements());
  return result;
}

template <class T>
TypedArray<T> asColumns(const TypedArray<T>& a) {
  return a.size().isRow() ? a.reshaped(SizeVector(a.numElements(), 1)) : a;
}

template <class T>
TypedArray<T> completeRows(const TypedArray<T>& columns) {
  std::vector<int64_t> all;
  for (int64_t j = 0; j < columns.size().columns(); ++j) all.push_back(j);
  return selected(columns, rowsWithoutNaN(columns, all), all);
}

template <class T>
void forPairsOfColumns(const TypedArray<T>& columns,
                       const std::function<void(int64_t, int64_t, const TypedArray<T>&)>& f) {
  for (int64_t j = 0; j < columns.size().columns(); ++j) {
    for (int64_t i = 0; i <= j; ++i) f(i, j, selected(columns, rowsWithoutNaN(columns, {i, j}), {i, j}));
  }
}

template DoubleArray twoColumns(const DoubleArray&, const DoubleArray&);
template ComplexDoubleArray twoColumns(const ComplexDoubleArray&, const ComplexDoubleArray&);
template DoubleArray asColumns(const DoubleArray&);
template ComplexDoubleArray asColumns(const ComplexDoubleArray&);
template DoubleArray completeRows(const DoubleArray&);
template ComplexDoubleArray completeRows(const ComplexDoubleArray&);
template void forPairsOfColumns(const DoubleArray&, const std::function<void(int64_t, int64_t, const DoubleArray&)>&);
template void forPairsOfColumns(const ComplexDoubleArray&,
                                const std::function<void(int64_t, int64_t, const ComplexDoubleArray&)>&);

}  // namespace kelo::builtins
