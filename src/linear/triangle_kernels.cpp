#include "linear/triangle_kernels.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/vector_clones.h"
#include "values/numbers.h"

namespace kelo::triangles {
namespace {

constexpr int kLanes = 8;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));
using Bits = int64_t __attribute__((vector_size(kLanes * sizeof(int64_t))));
// The same in memory, at any address of a double.
using Stored = double __attribute__((vector_size(kLanes * sizeof(double)), aligned(sizeof(double)), may_alias));
using StoredBits = int64_t __attribute__((vector_size(kLanes * sizeof(int64_t)), aligned(sizeof(double)), may_alias));

#define KELO_LANES(x) (*reinterpret_cast<const Stored*>(x))
#define KELO_LANES_AT(x) (*reinterpret_cast<Stored*>(x))

// kBlocks vectors of a column at a time, so that they stay in registers.
template <int kBlocks>
__attribute__((always_inline)) inline int64_t subtractBlocks(double* a, const double* l, int64_t ld, const double* u,
                                                             int count, int64_t i, int64_t m) {
  for (; i + kBlocks * kLanes <= m; i += kBlocks * kLanes) {
    Lanes rest[kBlocks];
#pragma GCC unroll 8
    for (int q = 0; q < kBlocks; ++q) rest[q] = KELO_LANES(a + i + q * kLanes);
    for (int k = 0; k < count; ++k) {
      const double* column = l + i + k * ld;
#pragma GCC unroll 8
      for (int q = 0; q < kBlocks; ++q) rest[q] = rest[q] - KELO_LANES(column + q * kLanes) * u[k];
    }
#pragma GCC unroll 8
    for (int q = 0; q < kBlocks; ++q) KELO_LANES_AT(a + i + q * kLanes) = rest[q];
  }
  return i;
}

// A triangle of at most 16 columns with zeros beside it, and one over its diagonal.
struct Leaf {
  Lanes columns[kLeaf][2] = {};
  double reciprocals[kLeaf];
};

// Four right sides side by side: the steps of one wait for each other. `order(step)` is the column
// of a step; `stepOf` what becomes of the number that stands there.
constexpr int kSides = 4;

template <class Order, class Value>
__attribute__((always_inline)) inline void solveSides(const Leaf& leaf, double* b, int64_t ldb, Order order,
                                                      Value value) {
  double x[kSides][kLeaf];
  Lanes rest[kSides][2];
#pragma GCC unroll 8
  for (int q = 0; q < kSides; ++q) {
#pragma GCC unroll 8
    for (int h = 0; h < 2; ++h) {
      rest[q][h] = KELO_LANES(b + q * ldb + h * kLanes);
      KELO_LANES_AT(x[q] + h * kLanes) = rest[q][h];
    }
  }
#pragma GCC unroll 16
  for (int step = 0; step < kLeaf; ++step) {
    const int j = order(step);
#pragma GCC unroll 8
    for (int q = 0; q < kSides; ++q) {
      const double known = value(x[q][j], j);
#pragma GCC unroll 8
      for (int h = 0; h < 2; ++h) rest[q][h] = rest[q][h] - leaf.columns[j][h] * known;
      b[q * ldb + j] = known;
      // What comes next is in one half.
      const int next = step + 1 < kLeaf ? order(step + 1) / kLanes : 0;
      KELO_LANES_AT(x[q] + next * kLanes) = rest[q][next];
    }
  }
}

}  // namespace

KELO_WIDE_CLONES void subtractColumns(double* a, const double* l, int64_t ld, const double* u, int count, int64_t m) {
  int64_t i = subtractBlocks<4>(a, l, ld, u, count, 0, m);
  i = subtractBlocks<1>(a, l, ld, u, count, i, m);
  for (; i < m; ++i) {
    double rest = a[i];
    for (int k = 0; k < count; ++k) rest = rest - l[i + k * ld] * u[k];
    a[i] = rest;
  }
}

KELO_WIDE_CLONES int64_t positionOfGreatest(const double* x, int64_t n) {
  const Bits noSign = Bits{} + std::numeric_limits<int64_t>::max();
  Lanes most = {};
  int64_t i = 0;
  for (; i + kLanes <= n; i += kLanes) {
    const Bits bits = *reinterpret_cast<const StoredBits*>(x + i) & noSign;
    Lanes magnitude;
    __builtin_memcpy(&magnitude, &bits, sizeof magnitude);
    most = magnitude > most ? magnitude : most;
  }
  double greatest = 0;
  for (int k = 0; k < kLanes; ++k) greatest = std::max(greatest, most[k]);
  for (; i < n; ++i) greatest = std::max(greatest, std::fabs(x[i]));
  for (i = 0; std::fabs(x[i]) != greatest;) ++i;
  return i;
}

KELO_WIDE_CLONES void scale(double* x, double factor, int64_t n) {
  for (int64_t i = 0; i < n; ++i) x[i] *= factor;
}

KELO_WIDE_CLONES void solveLowerLeaf(int k, int n, const double* l, int64_t ldl, double* b, int64_t ldb) {
  int c = 0;
  if (k == kLeaf && n >= kSides) {
    Leaf leaf;
    for (int j = 0; j < k; ++j) {
      for (int i = j + 1; i < k; ++i) leaf.columns[j][i / kLanes][i % kLanes] = l[i + j * ldl];
    }
    for (; c + kSides <= n; c += kSides) {
      solveSides(
          leaf, b + c * ldb, ldb, [](int step) { return step; }, [](double x, int) { return x; });
    }
  }
  for (; c < n; ++c) {
    double* x = b + c * ldb;
    for (int j = 0; j < k; ++j) {
      for (int i = j + 1; i < k; ++i) x[i] = x[i] - l[i + j * ldl] * x[j];
    }
  }
}

KELO_WIDE_CLONES void solveUpperLeaf(int k, int n, const double* u, int64_t ldu, double* b, int64_t ldb) {
  Leaf leaf;
  for (int j = 0; j < k; ++j) leaf.reciprocals[j] = 1 / u[j + j * ldu];
  int c = 0;
  if (k == kLeaf && n >= kSides) {
    for (int j = 0; j < k; ++j) {
      for (int i = 0; i < j; ++i) leaf.columns[j][i / kLanes][i % kLanes] = u[i + j * ldu];
    }
    for (; c + kSides <= n; c += kSides) {
      solveSides(
          leaf, b + c * ldb, ldb, [](int step) { return kLeaf - 1 - step; },
          [&](double x, int j) { return x * leaf.reciprocals[j]; });
    }
  }
  for (; c < n; ++c) {
    double* x = b + c * ldb;
    for (int j = k - 1; j >= 0; --j) {
      x[j] = x[j] * leaf.reciprocals[j];
      for (int i = 0; i < j; ++i) x[i] = x[i] - u[i + j * ldu] * x[j];
    }
  }
}

namespace {

__attribute__((always_inline)) inline double product(const double* a, const double* b, int64_t n) {
  Lanes sums[2] = {};
  int64_t i = 0;
  for (; i + 2 * kLanes <= n; i += 2 * kLanes) {
#pragma GCC unroll 8
    for (int h = 0; h < 2; ++h) sums[h] = sums[h] + KELO_LANES(a + i + h * kLanes) * KELO_LANES(b + i + h * kLanes);
  }
  double sum = 0;
  for (; i < n; ++i) sum = sum + a[i] * b[i];
  for (int k = 0; k < kLanes; ++k) sum = sum + (sums[0][k] + sums[1][k]);
  return sum;
}
__attribute__((always_inline)) inline ComplexDouble product(const ComplexDouble* a, const ComplexDouble* b, int64_t n) {
  ComplexDouble sums[4] = {};
  int64_t i = 0;
  for (; i + 4 <= n; i += 4) {
    for (int k = 0; k < 4; ++k) sums[k] = sums[k] + conj(a[i + k]) * b[i + k];
  }
  for (; i < n; ++i) sums[0] = sums[0] + conj(a[i]) * b[i];
  return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

template <class T>
__attribute__((always_inline)) inline void lowerOne(int64_t n, const T* factors, T* x) {
  for (int64_t j = 0; j < n; ++j) {
    const T* column = factors + j * n;
    const T known = x[j];
#pragma GCC ivdep
    for (int64_t i = j + 1; i < n; ++i) x[i] = x[i] - column[i] * known;
  }
}
template <class T>
__attribute__((always_inline)) inline void upperOne(int64_t n, const T* factors, T* x) {
  for (int64_t j = n - 1; j >= 0; --j) {
    const T* column = factors + j * n;
    const T known = x[j] / column[j];
    x[j] = known;
#pragma GCC ivdep
    for (int64_t i = 0; i < j; ++i) x[i] = x[i] - column[i] * known;
  }
}
template <class T>
__attribute__((always_inline)) inline void lowerTransposed(int64_t n, const T* factors, T* x) {
  for (int64_t j = n - 1; j >= 0; --j) {
    x[j] = x[j] - product(factors + j * n + j + 1, x + j + 1, n - 1 - j);
  }
}
template <class T>
__attribute__((always_inline)) inline void upperTransposed(int64_t n, const T* factors, T* x) {
  for (int64_t j = 0; j < n; ++j) x[j] = (x[j] - product(factors + j * n, x, j)) / conj(factors[j * n + j]);
}

}  // namespace

KELO_WIDE_CLONES void solveLowerOne(int n, const double* factors, double* x) { lowerOne(n, factors, x); }
KELO_WIDE_CLONES void solveLowerOne(int n, const ComplexDouble* factors, ComplexDouble* x) { lowerOne(n, factors, x); }
KELO_WIDE_CLONES void solveUpperOne(int n, const double* factors, double* x) { upperOne(n, factors, x); }
KELO_WIDE_CLONES void solveUpperOne(int n, const ComplexDouble* factors, ComplexDouble* x) { upperOne(n, factors, x); }
KELO_WIDE_CLONES void solveLowerTransposed(int n, const double* factors, double* x) { lowerTransposed(n, factors, x); }
KELO_WIDE_CLONES void solveLowerTransposed(int n, const ComplexDouble* factors, ComplexDouble* x) {
  lowerTransposed(n, factors, x);
}
KELO_WIDE_CLONES void solveUpperTransposed(int n, const double* factors, double* x) { upperTransposed(n, factors, x); }
KELO_WIDE_CLONES void solveUpperTransposed(int n, const ComplexDouble* factors, ComplexDouble* x) {
  upperTransposed(n, factors, x);
}

}  // namespace kelo::triangles
