#include "linear/triangle_kernels.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/vector_clones.h"
#include "values/numbers.h"

namespace kelo::triangles {
namespace {

constexpr int kLanes = 4;  // wider vectors gain nothing here, and cost where a processor lacks them
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
constexpr int kParts = kLeaf / kLanes;
struct Leaf {
  Lanes columns[kLeaf][kParts] = {};
  double reciprocals[kLeaf];
};

// Two right sides side by side: the steps of one wait for each other. `order(step)` is the column
// of a step, `value` what becomes of the number that stands there.
constexpr int kSides = 2;

template <class Order, class Value>
__attribute__((always_inline)) inline void solveSides(const Leaf& leaf, double* b, int64_t ldb, Order order,
                                                      Value value) {
  double x[kSides][kLeaf];
  Lanes rest[kSides][kParts];
#pragma GCC unroll 8
  for (int q = 0; q < kSides; ++q) {
#pragma GCC unroll 8
    for (int h = 0; h < kParts; ++h) {
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
      for (int h = 0; h < kParts; ++h) rest[q][h] = rest[q][h] - leaf.columns[j][h] * known;
      b[q * ldb + j] = known;
      // What comes next is in one part.
      const int next = step + 1 < kLeaf ? order(step + 1) / kLanes : 0;
      KELO_LANES_AT(x[q] + next * kLanes) = rest[q][next];
    }
  }
}

}  // namespace

KELO_WIDE_CLONES void subtractColumns(double* a, const double* l, int64_t ld, const double* u, int count, int64_t m) {
  int64_t i = subtractBlocks<8>(a, l, ld, u, count, 0, m);
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

KELO_WIDE_CLONES double quickNorm1(int m, int n, const ComplexDouble* a) {
  constexpr int kTogether = 16;
  double greatest = 0;
  for (int64_t j = 0; j < n; ++j) {
    const auto* column = reinterpret_cast<const double*>(a + j * m);
    double sums[kTogether] = {};
    int64_t i = 0;
    for (; i + kTogether <= m; i += kTogether) {
      for (int k = 0; k < kTogether; ++k) {
        const double re = column[2 * (i + k)], im = column[2 * (i + k) + 1];
        sums[k] += __builtin_sqrt(re * re + im * im);
      }
    }
    for (; i < m; ++i) sums[0] += __builtin_sqrt(column[2 * i] * column[2 * i] + column[2 * i + 1] * column[2 * i + 1]);
    double sum = 0;
    for (const double each : sums) sum += each;
    if (greatest < sum || std::isnan(sum)) greatest = sum;
  }
  return greatest;
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

// One right side. Columns go four at a time, so that the vector is read and written once for all of
// them.
namespace {

constexpr int64_t kTogether = 4;

/// products[q] = the sum of conj(a(i, q)) * x[i], for four columns.
__attribute__((always_inline)) inline void multiplyFour(const double* a, int64_t ld, const double* x, int64_t n,
                                                        double* products) {
  Lanes sums[kTogether] = {};
  int64_t i = 0;
  for (; i + kLanes <= n; i += kLanes) {
    const Lanes factor = KELO_LANES(x + i);
#pragma GCC unroll 4
    for (int64_t q = 0; q < kTogether; ++q) sums[q] = sums[q] + KELO_LANES(a + i + q * ld) * factor;
  }
#pragma GCC unroll 4
  for (int64_t q = 0; q < kTogether; ++q) {
    double sum = 0;
    for (int64_t k = i; k < n; ++k) sum = sum + a[k + q * ld] * x[k];
#pragma GCC unroll 8
    for (int64_t k = 0; k < kLanes; ++k) sum = sum + sums[q][k];
    products[q] = sum;
  }
}
__attribute__((always_inline)) inline void multiplyFour(const ComplexDouble* a, int64_t ld, const ComplexDouble* x,
                                                        int64_t n, ComplexDouble* products) {
  ComplexDouble sums[kTogether] = {};
  for (int64_t i = 0; i < n; ++i) {
    for (int64_t q = 0; q < kTogether; ++q) sums[q] = sums[q] + conj(a[i + q * ld]) * x[i];
  }
  std::copy_n(sums, kTogether, products);
}

/// x[i] -= a(i, 0) * known[0] + ..., one product after the other, for `count` columns.
template <int64_t kCount, class T>
__attribute__((always_inline)) inline void subtractFrom(T* __restrict x, const T* __restrict a, int64_t ld,
                                                        const T* known, int64_t rows) {
  T factors[kCount];
  for (int64_t q = 0; q < kCount; ++q) factors[q] = known[q];
#pragma GCC ivdep
  for (int64_t i = 0; i < rows; ++i) {
    T rest = x[i];
#pragma GCC unroll 4
    for (int64_t q = 0; q < kCount; ++q) rest = rest - a[i + q * ld] * factors[q];
    x[i] = rest;
  }
}

template <class T>
__attribute__((always_inline)) inline void lowerOne(int64_t n, const T* factors, T* x) {
  for (int64_t j = 0; j < n; j += kTogether) {
    const int64_t end = std::min(n, j + kTogether);
    for (int64_t k = j; k < end; ++k) {
      for (int64_t i = k + 1; i < end; ++i) x[i] = x[i] - factors[k * n + i] * x[k];
    }
    if (end < n) subtractFrom<kTogether>(x + end, factors + j * n + end, n, x + j, n - end);
  }
}
template <class T>
__attribute__((always_inline)) inline void upperOne(int64_t n, const T* factors, T* x) {
  for (int64_t end = n; end > 0;) {
    const int64_t begin = end % kTogether == 0 ? end - kTogether : end / kTogether * kTogether;
    for (int64_t k = end - 1; k >= begin; --k) {
      x[k] = x[k] / factors[k * n + k];
      for (int64_t i = begin; i < k; ++i) x[i] = x[i] - factors[k * n + i] * x[k];
    }
    if (end - begin == kTogether) {
      subtractFrom<kTogether>(x, factors + begin * n, n, x + begin, begin);
    } else {
      for (int64_t k = begin; k < end; ++k) subtractFrom<1>(x, factors + k * n, n, x + k, begin);
    }
    end = begin;
  }
}
template <class T>
__attribute__((always_inline)) inline void lowerTransposed(int64_t n, const T* factors, T* x) {
  int64_t j = n;
  for (; j >= kTogether; j -= kTogether) {
    const int64_t begin = j - kTogether;
    T products[kTogether];
    multiplyFour(factors + begin * n + j, n, x + j, n - j, products);
    for (int64_t k = j - 1; k >= begin; --k) {
      x[k] = x[k] - products[k - begin];
      for (int64_t i = k + 1; i < j; ++i) x[k] = x[k] - conj(factors[k * n + i]) * x[i];
    }
  }
  for (int64_t k = j - 1; k >= 0; --k) {
    for (int64_t i = k + 1; i < n; ++i) x[k] = x[k] - conj(factors[k * n + i]) * x[i];
  }
}
template <class T>
__attribute__((always_inline)) inline void upperTransposed(int64_t n, const T* factors, T* x) {
  int64_t j = 0;
  for (; j + kTogether <= n; j += kTogether) {
    T products[kTogether];
    multiplyFour(factors + j * n, n, x, j, products);
    for (int64_t k = j; k < j + kTogether; ++k) {
      x[k] = x[k] - products[k - j];
      for (int64_t i = j; i < k; ++i) x[k] = x[k] - conj(factors[k * n + i]) * x[i];
      x[k] = x[k] / conj(factors[k * n + k]);
    }
  }
  for (int64_t k = j; k < n; ++k) {
    for (int64_t i = 0; i < k; ++i) x[k] = x[k] - conj(factors[k * n + i]) * x[i];
    x[k] = x[k] / conj(factors[k * n + k]);
  }
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
