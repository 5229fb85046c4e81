#include "linear/triangles.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "linear/lapack.h"
#include "linear/triangle_kernels.h"
#include "platform/vector_clones.h"
#include "values/numbers.h"

namespace kelo::triangles {
namespace {

/// The first part of so many columns, in whole leaves.
int firstHalf(int n) { return (n / 2 + kLeaf - 1) / kLeaf * kLeaf; }

/// Above the rows that a panel has, each column is what is left after the ones before it.
void reduceTop(int rows, const double* l, int64_t ld, double* column) {
  for (int k = 1; k < rows; ++k) {
    double rest = column[k];
    for (int p = 0; p < k; ++p) rest = rest - l[k + p * ld] * column[p];
    column[k] = rest;
  }
}

void divide(double* x, double by, int64_t n) {
  if (std::fabs(by) >= std::numeric_limits<double>::min()) return scale(x, 1 / by, n);
  for (int64_t i = 0; i < n; ++i) x[i] /= by;
}

// Column by column, each reduced by those before it when its turn comes. Pivots count from 0.
int factorPanel(int m, int n, double* a, int64_t ld, int* pivots) {
  int firstZero = 0;
  for (int j = 0; j < n; ++j) {
    double* column = a + j * ld;
    reduceTop(std::min(j, m), a, ld, column);
    if (j >= m) continue;
    subtractColumns(column + j, a + j, ld, column, j, m - j);
    pivots[j] = j + static_cast<int>(positionOfGreatest(column + j, m - j));
    if (column[pivots[j]] == 0) {
      if (firstZero == 0) firstZero = j + 1;
      continue;
    }
    if (pivots[j] != j) {
      for (int k = 0; k < n; ++k) std::swap(a[j + k * ld], a[pivots[j] + k * ld]);
    }
    divide(column + j + 1, column[j], m - j - 1);
  }
  return firstZero;
}

// Four columns at a time, since one exchange waits for another.
void exchange(int n, double* a, int64_t ld, const int* pivots, int begin, int end) {
  constexpr int kTogether = 4;
  int j = 0;
  for (; j + kTogether <= n; j += kTogether) {
    double* columns = a + j * ld;
    for (int k = begin; k < end; ++k) {
      const int64_t other = pivots[k];
      if (other == k) continue;
#pragma GCC unroll 4
      for (int q = 0; q < kTogether; ++q) std::swap(columns[k + q * ld], columns[other + q * ld]);
    }
  }
  for (; j < n; ++j) {
    double* column = a + j * ld;
    for (int k = begin; k < end; ++k) std::swap(column[k], column[pivots[k]]);
  }
}

int factorHalves(int m, int n, double* a, int64_t ld, int* pivots) {
  if (n <= kLeaf) return factorPanel(m, n, a, ld, pivots);
  const int left = std::min(firstHalf(n), m);
  int firstZero = factorHalves(m, left, a, ld, pivots);
  double* right = a + left * ld;
  exchange(n - left, right, ld, pivots, 0, left);
  solveLower(left, n - left, a, ld, right, ld);
  if (m == left) return firstZero;
  lapack::subtractProduct(m - left, n - left, left, a + left, ld, right, ld, right + left, ld);
  const int secondZero = factorHalves(m - left, n - left, right + left, ld, pivots + left);
  if (firstZero == 0 && secondZero != 0) firstZero = left + secondZero;
  const int all = std::min(m, n);
  for (int k = left; k < all; ++k) pivots[k] += left;
  exchange(left, a, ld, pivots, left, all);
  return firstZero;
}

}  // namespace

int factor(int m, int n, double* a, int64_t ld, int* pivots) {
  const int firstZero = factorHalves(m, n, a, ld, pivots);
  for (int k = 0; k < std::min(m, n); ++k) ++pivots[k];
  return firstZero;
}

void solveLower(int k, int n, const double* l, int64_t ldl, double* b, int64_t ldb) {
  if (k <= kLeaf) return solveLowerLeaf(k, n, l, ldl, b, ldb);
  if (n == 1 && k == ldl) return solveLowerOne(k, l, b);
  const int top = firstHalf(k);
  solveLower(top, n, l, ldl, b, ldb);
  lapack::subtractProduct(k - top, n, top, l + top, ldl, b, ldb, b + top, ldb);
  solveLower(k - top, n, l + top * (ldl + 1), ldl, b + top, ldb);
}

void solveUpper(int k, int n, const double* u, int64_t ldu, double* b, int64_t ldb) {
  if (k <= kLeaf) return solveUpperLeaf(k, n, u, ldu, b, ldb);
  if (n == 1 && k == ldu) return solveUpperOne(k, u, b);
  const int top = firstHalf(k);
  solveUpper(k - top, n, u + top * (ldu + 1), ldu, b + top, ldb);
  lapack::subtractProduct(top, n, k - top, u + top * ldu, ldu, b + top, ldb, b, ldb);
  solveUpper(top, n, u, ldu, b, ldb);
}

void exchangeRows(int n, double* a, int64_t ld, const int* pivots, int count) {
  for (int j = 0; j < n; ++j) {
    double* column = a + j * ld;
    for (int k = 0; k < count; ++k) std::swap(column[k], column[pivots[k] - 1]);
  }
}

// The inverse of L, of which a column begins with its 1, and then U \ that, whose columns are in the
// order of the exchanged rows.
void invert(int n, const double* factors, const int* pivots, double* inverse) {
  constexpr int kColumns = 64;
  const int64_t ld = n;
  std::fill_n(inverse, ld * n, 0.0);
  for (int64_t j = 0; j < n; ++j) inverse[j * (ld + 1)] = 1;
  for (int j = 0; j < n; j += kColumns) {
    const int64_t corner = j * (ld + 1);
    solveLower(n - j, std::min(kColumns, n - j), factors + corner, ld, inverse + corner, ld);
  }
  solveUpper(n, n, factors, ld, inverse, ld);
  for (int64_t k = n - 1; k >= 0; --k) {
    const int64_t other = pivots[k] - 1;
    if (other != k) std::swap_ranges(inverse + k * ld, inverse + (k + 1) * ld, inverse + other * ld);
  }
}

KELO_WIDE_CLONES bool areFinite(const double* x, int64_t n) {
  constexpr int64_t kBlock = 4096;
  for (int64_t begin = 0; begin < n; begin += kBlock) {
    int64_t others = 0;  // as wide as an element, so that the loop vectorises
    for (int64_t i = begin; i < std::min(n, begin + kBlock); ++i) {
      others |= static_cast<int64_t>(!(std::fabs(x[i]) <= std::numeric_limits<double>::max()));
    }
    if (others != 0) return false;
  }
  return true;
}

namespace {

template <class T>
double sumOfMagnitudes(const std::vector<T>& x) {
  double sum = 0;
  for (const T& element : x) sum += magnitudeOf(element);
  return sum;
}

template <class T>
size_t positionOfGreatest(const std::vector<T>& x) {
  size_t best = 0;
  for (size_t i = 1; i < x.size(); ++i) best = magnitudeOf(x[i]) > magnitudeOf(x[best]) ? i : best;
  return best;
}

double signOf(double x) { return std::copysign(1.0, x); }
ComplexDouble signOf(ComplexDouble z) {
  const double magnitude = z.magnitude();
  return magnitude > 0 ? ComplexDouble{z.real / magnitude, z.imaginary / magnitude} : ComplexDouble{1, 0};
}

/// Puts the signs of x in place of others; whether they differ.
template <class T>
bool takeSigns(const std::vector<T>& x, std::vector<T>& signs) {
  bool differ = false;
  for (size_t i = 0; i < x.size(); ++i) {
    const T sign = signOf(x[i]);
    differ = sign != std::exchange(signs[i], sign) || differ;
  }
  return differ;
}

template <class T>
void solveBoth(const T* factors, std::vector<T>& x) {
  solveLowerOne(static_cast<int>(x.size()), factors, x.data());
  solveUpperOne(static_cast<int>(x.size()), factors, x.data());
}

/// Numbers of both signs whose magnitudes grow from 1 to 2: against matrices that deceive the steps.
template <class T>
void alternate(std::vector<T>& x) {
  for (size_t i = 0; i < x.size(); ++i) {
    const double size = 1 + static_cast<double>(i) / static_cast<double>(x.size() - 1);
    x[i] = T{i % 2 == 0 ? size : -size};
  }
}

}  // namespace

template <class T>
double inverseNorm(int n, const T* factors) {
  constexpr int kRounds = 5;
  const auto order = static_cast<size_t>(n);
  std::vector<T> x(order, T{1.0 / n}), signs(order), row(order);
  solveBoth(factors, x);
  double estimate = sumOfMagnitudes(x);
  takeSigns(x, signs);
  size_t last = order;
  for (int round = 1; std::isfinite(estimate) && round < kRounds; ++round) {
    row = signs;
    solveUpperTransposed(n, factors, row.data());
    solveLowerTransposed(n, factors, row.data());
    const size_t j = positionOfGreatest(row);
    if (last < order && magnitudeOf(row[last]) == magnitudeOf(row[j])) break;
    last = j;
    std::fill(x.begin(), x.end(), T{});
    x[j] = T{1};
    solveBoth(factors, x);
    const double next = sumOfMagnitudes(x);
    const bool grows = next > estimate;
    if (!(next <= estimate)) estimate = next;  // also a NaN
    if (!takeSigns(x, signs) || !grows) break;
  }
  alternate(x);
  solveBoth(factors, x);
  const double other = 2 * sumOfMagnitudes(x) / (3.0 * n);
  return other <= estimate ? estimate : other;
}

template double inverseNorm(int, const double*);
template double inverseNorm(int, const ComplexDouble*);

}  // namespace kelo::triangles
