#include "linear/matrix_vector.h"

#include <algorithm>
#include <vector>

#include "linear/lapack.h"
#include "platform/parallel.h"
#include "platform/vector_clones.h"

namespace kelo {
namespace {

constexpr int64_t kLanes = 8;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));
using Stored = double __attribute__((vector_size(kLanes * sizeof(double)), aligned(sizeof(double)), may_alias));

constexpr int64_t kLeastShared = 1 << 18;  // elements; fewer are in the cache, where one core is as quick
constexpr int64_t kColumns = 8;            // side by side: y is read and written once for all of them

template <int64_t kCount>
__attribute__((always_inline)) inline void addColumns(int64_t rows, const double* a, int64_t ld, const double* x,
                                                      double* y) {
  int64_t i = 0;
  for (; i + kLanes <= rows; i += kLanes) {
    Lanes sum = *reinterpret_cast<const Stored*>(y + i);
#pragma GCC unroll 8
    for (int64_t j = 0; j < kCount; ++j) sum = sum + *reinterpret_cast<const Stored*>(a + i + j * ld) * x[j];
    *reinterpret_cast<Stored*>(y + i) = sum;
  }
  for (; i < rows; ++i) {
    double sum = y[i];
#pragma GCC unroll 8
    for (int64_t j = 0; j < kCount; ++j) sum = sum + a[i + j * ld] * x[j];
    y[i] = sum;
  }
}

KELO_WIDE_CLONES void multiplyRows(int64_t rows, int64_t n, const double* a, int64_t ld, const double* x, double* y) {
  std::fill_n(y, rows, 0.0);
  int64_t j = 0;
  for (; j + kColumns <= n; j += kColumns) addColumns<kColumns>(rows, a + j * ld, ld, x + j, y);
  for (; j < n; ++j) addColumns<1>(rows, a + j * ld, ld, x + j, y);
}

template <int64_t kCount>
__attribute__((always_inline)) inline void multiplyColumns(int64_t m, const double* a, const double* x, double* y) {
  Lanes sums[kCount] = {};
  int64_t i = 0;
  for (; i + kLanes <= m; i += kLanes) {
    const Lanes factor = *reinterpret_cast<const Stored*>(x + i);
#pragma GCC unroll 8
    for (int64_t j = 0; j < kCount; ++j) sums[j] = sums[j] + *reinterpret_cast<const Stored*>(a + i + j * m) * factor;
  }
#pragma GCC unroll 8
  for (int64_t j = 0; j < kCount; ++j) {
    double sum = 0;
    for (int64_t k = i; k < m; ++k) sum = sum + a[k + j * m] * x[k];
    for (int64_t k = 0; k < kLanes; ++k) sum = sum + sums[j][k];
    y[j] = sum;
  }
}

KELO_WIDE_CLONES void multiplyAllColumns(int64_t m, int64_t n, const double* a, const double* x, double* y) {
  int64_t j = 0;
  for (; j + kColumns <= n; j += kColumns) multiplyColumns<kColumns>(m, a + j * m, x, y + j);
  for (; j < n; ++j) multiplyColumns<1>(m, a + j * m, x, y + j);
}

}  // namespace

// Each piece is a stretch of memory, or a few long ones, which is what the processor fetches ahead.
void multiplyVector(int64_t m, int64_t n, const double* a, const double* x, double* y) {
  constexpr int64_t kLongColumn = 8192, kPiece = 1 << 17;
  const int64_t columns = (kPiece / std::max<int64_t>(m, 1) + kColumns) / kColumns * kColumns;
  const int64_t pieces = (n + columns - 1) / columns;
  if (m * n < kLeastShared || pieces == 0) return multiplyRows(m, n, a, m, x, y);
  if (m >= kLongColumn) {
    constexpr int64_t kRows = kLongColumn / 2;
    return platform::parallelForUnits((m + kRows - 1) / kRows, kRows * n, [=](int64_t begin, int64_t end) {
      const int64_t first = begin * kRows;
      multiplyRows(std::min(m, end * kRows) - first, n, a + first, m, x, y + first);
    });
  }
  std::vector<double> parts(static_cast<size_t>(pieces * m));
  platform::parallelForUnits(pieces, columns * m, [&](int64_t begin, int64_t end) {
    for (int64_t k = begin; k < end; ++k) {
      const int64_t first = k * columns;
      multiplyRows(m, std::min(columns, n - first), a + first * m, m, x + first, parts.data() + k * m);
    }
  });
  const std::vector<double> ones(static_cast<size_t>(pieces), 1.0);
  multiplyRows(m, pieces, parts.data(), m, ones.data(), y);
}

void multiplyVectorTransposed(int64_t m, int64_t n, const double* a, const double* x, double* y) {
  if (m * n < kLeastShared) return multiplyAllColumns(m, n, a, x, y);
  platform::parallelForUnits((n + kColumns - 1) / kColumns, kColumns * m, [=](int64_t begin, int64_t end) {
    const int64_t first = begin * kColumns;
    multiplyAllColumns(m, std::min(n, end * kColumns) - first, a + first * m, x, y + first);
  });
}

void multiplyVector(int64_t m, int64_t n, const ComplexDouble* a, const ComplexDouble* x, ComplexDouble* y) {
  lapack::gemv(CblasNoTrans, checkedInt32(m), checkedInt32(n), a, x, y);
}
void multiplyVectorTransposed(int64_t m, int64_t n, const ComplexDouble* a, const ComplexDouble* x, ComplexDouble* y) {
  lapack::gemv(CblasTrans, checkedInt32(m), checkedInt32(n), a, x, y);
}

}  // namespace kelo
