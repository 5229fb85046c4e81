// The columns are centred once, then each pair gives one product; the other half of the matrix is
// the mirror image.
#include "builtins/reductions/covariance.h"

#include <cmath>

#include "builtins/reductions/handlers.h"
#include "platform/vector_clones.h"

namespace kelo::builtins {
namespace {

double over(double x, double n) { return x / n; }
ComplexDouble over(ComplexDouble z, double n) { return {z.real / n, z.imaginary / n}; }

/// The sum of conj(x) * y, in four sums side by side.
ComplexDouble product(const ComplexDouble* x, const ComplexDouble* y, int64_t n) {
  ComplexDouble sums[4] = {};
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
  const T* in = columns.data();
  platform::parallelForUnits(columns.size().columns(), n, [&](int64_t begin, int64_t end) {
    for (int64_t j = begin; j < end; ++j) {
      const T mean = means[j];
#pragma GCC ivdep
      for (int64_t i = j * n; i < (j + 1) * n; ++i) out[i] = in[i] - mean;
    }
  });
  return result;
}

// Products of real columns, many at a time, each as above. A band of columns goes with all columns
// up to its end, so many rows at a time that they stay in the cache.
namespace bands {

constexpr int64_t kBand = 32, kSide = 8, kRows = 512;
struct Sums {
  double of[4] = {};
};
using Lanes = double __attribute__((vector_size(4 * sizeof(double))));
using Stored = double __attribute__((vector_size(4 * sizeof(double)), aligned(sizeof(double)), may_alias));

template <int64_t kCount>
__attribute__((always_inline)) inline void addProducts(const double* x, const double* y, int64_t n, int64_t rows,
                                                       Sums* sums) {
  Lanes own[kCount];
#pragma GCC unroll 8
  for (int64_t k = 0; k < kCount; ++k) own[k] = *reinterpret_cast<const Stored*>(sums[k].of);
  for (int64_t i = 0; i < rows; i += 4) {
    const Lanes factor = *reinterpret_cast<const Stored*>(y + i);
#pragma GCC unroll 8
    for (int64_t k = 0; k < kCount; ++k) own[k] = own[k] + *reinterpret_cast<const Stored*>(x + i + k * n) * factor;
  }
#pragma GCC unroll 8
  for (int64_t k = 0; k < kCount; ++k) *reinterpret_cast<Stored*>(sums[k].of) = own[k];
}

/// sums[(j - begin) * end + i] of the columns i below `end` and j from `begin` on. REQUIRES: rows is
/// a multiple of 4
KELO_VECTOR_CLONES void addBand(const double* x, int64_t n, int64_t rows, int64_t begin, int64_t end, Sums* sums) {
  for (int64_t first = 0; first < rows; first += kRows) {
    const int64_t count = std::min(kRows, rows - first);
    for (int64_t i = 0; i < end; i += kSide) {
      for (int64_t j = begin; j < end; ++j) {
        const double *left = x + i * n + first, *right = x + j * n + first;
        Sums* to = sums + (j - begin) * end + i;
        if (i + kSide <= end) {
          addProducts<kSide>(left, right, n, count, to);
        } else {
          for (int64_t k = 0; k < end - i; ++k) addProducts<1>(left + k * n, right, n, count, to + k);
        }
      }
    }
  }
}

/// take(i, j, product) for all pairs i <= j of the m columns of n rows.
template <class Take>
void forProducts(const double* x, int64_t n, int64_t m, Take take) {
  const int64_t whole = n / 4 * 4;
  platform::parallelForUnits((m + kBand - 1) / kBand, kBand * n * m / 2, [&](int64_t firstBand, int64_t endBand) {
    for (int64_t begin = firstBand * kBand; begin < std::min(m, endBand * kBand); begin += kBand) {
      const int64_t end = std::min(m, begin + kBand);
      std::vector<Sums> sums(static_cast<size_t>(end * (end - begin)));
      addBand(x, n, whole, begin, end, sums.data());
      for (int64_t j = begin; j < end; ++j) {
        for (int64_t i = 0; i <= j; ++i) {
          double(&sum)[4] = sums[static_cast<size_t>((j - begin) * end + i)].of;
          for (int64_t k = whole; k < n; ++k) sum[0] = sum[0] + x[i * n + k] * x[j * n + k];
          take(i, j, (sum[0] + sum[1]) + (sum[2] + sum[3]));
        }
      }
    }
  });
}

}  // namespace bands

template <class Take>
void forProducts(const DoubleArray& x, Take take) {
  bands::forProducts(x.data(), x.size().rows(), x.size().columns(), take);
}
template <class Take>
void forProducts(const ComplexDoubleArray& x, Take take) {
  const int64_t n = x.size().rows(), m = x.size().columns();
  platform::parallelForUnits(m, n * m / 2, [&](int64_t begin, int64_t end) {
    for (int64_t j = begin; j < end; ++j) {
      for (int64_t i = 0; i <= j; ++i) take(i, j, product(x.data() + i * n, x.data() + j * n, n));
    }
  });
}

template <class T>
TypedArray<T> plainCovariance(const TypedArray<T>& columns, int64_t w) {
  const int64_t n = columns.size().rows();
  const int64_t m = columns.size().columns();
  const auto divisor = static_cast<double>(w == 1 || n <= 1 ? n : n - 1);
  const TypedArray<T> x = centred(columns);
  auto result = TypedArray<T>::uninitialized(SizeVector(m, m));
  T* out = result.writable();
  forProducts(x, [&](int64_t i, int64_t j, T sum) {
    const T c = over(sum, divisor);
    out[j + i * m] = conj(c);
    out[i + j * m] = c;
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
