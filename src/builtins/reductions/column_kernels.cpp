// Kernels on one column, with vectors of four doubles.
//
// The sum in order. Let the running sum s lie between p and 2p, p a power of 2, and let u be the
// distance of neighbouring doubles there. As long as it stays there, s is a multiple of u, and
// adding x moves it by x rounded to a multiple of u; only when x lies half way between two
// multiples does the way of rounding depend on s. So a block of numbers is rounded first (adding
// and subtracting 1.5 p rounds to multiples of u), and the rounded numbers are added up in any
// order: all these sums are exact. The block's sum is that of the plain loop if
//   - no number was half way or rounded more coarsely: |x - rounded| < u/2 throughout (NaN and Inf
//     fail here),
//   - the magnitudes add up to p/2 at most, so that the rounding was to u and every partial sum is
//     exact,
//   - s less all negative numbers and s plus all positive ones lie strictly between p and 2p.
// Otherwise the plain loop adds the block, and after several such blocks in a row trying is put off
// for a while.
//
// Rounding a block needs no more of the sum than p. So over several cores, the blocks of a long
// stretch are rounded side by side for the present p, and then added one after the other as long as
// the sum stays between p and 2p.
#include "builtins/reductions/column_kernels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

#include "platform/parallel.h"
#include "platform/vector_clones.h"
#include "values/numbers.h"

namespace kelo::builtins {
namespace {

typedef double Lanes __attribute__((vector_size(32), aligned(8), may_alias));
typedef int64_t Bits __attribute__((vector_size(32), aligned(8), may_alias));
constexpr int64_t kLanes = 4;

constexpr int64_t kBlock = 256;
constexpr int64_t kMostPutOff = 16;

struct RoundedSums {
  double sum = 0;
  double magnitude = 0;
  bool isRounded = false;  // every number to within less than half a unit
};

KELO_VECTOR_CLONES RoundedSums roundBlock(const double* x, double power) {
  const double shift = 1.5 * power;
  const Bits noSign = Bits{} + std::numeric_limits<int64_t>::max();
  const Bits halfUnit = Bits{} + std::bit_cast<int64_t>(power * 0x1p-53);
  Lanes sum[4] = {};
  Lanes magnitude[4] = {};
  Bits below[4] = {~Bits{}, ~Bits{}, ~Bits{}, ~Bits{}};  // sign bits: errors below u/2
  for (int64_t i = 0; i < kBlock; i += 4 * kLanes) {
#pragma GCC unroll 4
    for (int64_t k = 0; k < 4; ++k) {
      const Lanes v = *reinterpret_cast<const Lanes*>(x + i + k * kLanes);
      const Lanes rounded = (v + shift) - shift;
      const Lanes error = v - rounded;
      sum[k] += rounded;
      const Bits size = reinterpret_cast<const Bits&>(rounded) & noSign;
      magnitude[k] += reinterpret_cast<const Lanes&>(size);
      below[k] &= (reinterpret_cast<const Bits&>(error) & noSign) - halfUnit;
    }
  }
  const Lanes s = (sum[0] + sum[1]) + (sum[2] + sum[3]);
  const Lanes m = (magnitude[0] + magnitude[1]) + (magnitude[2] + magnitude[3]);
  const Bits b = below[0] & below[1] & below[2] & below[3];
  return {(s[0] + s[1]) + (s[2] + s[3]), (m[0] + m[1]) + (m[2] + m[3]), (b[0] & b[1] & b[2] & b[3]) < 0};
}

/// The power of 2 at or below |s|; 0 where it or its unit would be out of range.
double powerOf(double s) {
  const uint64_t exponent = std::bit_cast<uint64_t>(s) & 0x7ff0000000000000;
  if (exponent < (uint64_t{100} << 52) || exponent > (uint64_t{2000} << 52)) return 0;
  return std::bit_cast<double>(exponent);
}

/// Adds a rounded block to the sum; false, and nothing done, when a condition fails.
bool addRounded(const RoundedSums& block, double p, double* sum) {
  const double s = *sum;
  if (!block.isRounded || !(block.magnitude <= p / 2)) return false;
  const double positive = (block.magnitude + block.sum) / 2;
  const double negative = (block.magnitude - block.sum) / 2;
  const double nearest = s > 0 ? s - negative : -s - positive;
  const double farthest = s > 0 ? s + positive : negative - s;
  if (!(nearest > p && farthest < 2 * p)) return false;
  *sum = s + block.sum;
  return true;
}

double addPlainly(const double* x, int64_t n, double s) {
  for (int64_t i = 0; i < n; ++i) s += x[i];
  return s;
}

template <bool kSmallest>
__attribute__((always_inline)) inline double extreme(const double* x, int64_t n) {
  const double worst = kSmallest ? kInf : -kInf;
  const auto better = [](auto v, auto best) { return kSmallest ? v < best : v > best; };
  Lanes best[4];
  for (Lanes& b : best) b = Lanes{} + worst;
  int64_t i = 0;
  for (; i + 4 * kLanes <= n; i += 4 * kLanes) {
#pragma GCC unroll 4
    for (int64_t k = 0; k < 4; ++k) {
      const Lanes v = *reinterpret_cast<const Lanes*>(x + i + k * kLanes);
      if constexpr (kSmallest)
        best[k] = v < best[k] ? v : best[k];
      else
        best[k] = v > best[k] ? v : best[k];
    }
  }
  double r = worst;
  for (const Lanes& b : best) {
    for (int64_t j = 0; j < kLanes; ++j) r = better(b[j], r) ? b[j] : r;
  }
  for (; i < n; ++i) r = better(x[i], r) ? x[i] : r;
  return r;
}

KELO_VECTOR_CLONES double largestOf(const double* x, int64_t n) { return extreme<false>(x, n); }
KELO_VECTOR_CLONES double smallestOf(const double* x, int64_t n) { return extreme<true>(x, n); }

// Blocks that are rounded side by side; fewer are not worth waking the other cores.
constexpr int64_t kFewestInStretch = 1536;
constexpr int64_t kMostInStretch = 1 << 14;

/// Blocks until the sum of `added` elements will have reached the next power of 2, if it goes on
/// growing as it did.
int64_t blocksAhead(double sum, double p, int64_t added) {
  const double elements = static_cast<double>(added) * (2 * p - std::fabs(sum)) / std::fabs(sum);
  return static_cast<int64_t>(std::fmin(elements / kBlock, kMostInStretch));
}

/// Adds as many of `count` blocks as the present power of 2 serves for. Returns how many, and
/// counts those that had to be added plainly.
int64_t addStretch(const double* x, int64_t count, platform::ParallelFor& parallel, double* sum, int64_t* plain) {
  const double p = powerOf(*sum);
  std::vector<RoundedSums> blocks(static_cast<size_t>(count));
  parallel.run(count, kFewestInStretch / 8, [&](int64_t begin, int64_t end) {
    for (int64_t k = begin; k < end; ++k) blocks[static_cast<size_t>(k)] = roundBlock(x + k * kBlock, p);
  });
  int64_t k = 0;
  for (; k < count && powerOf(*sum) == p; ++k) {
    if (addRounded(blocks[static_cast<size_t>(k)], p, sum)) continue;
    *sum = addPlainly(x + k * kBlock, kBlock, *sum);
    ++*plain;
  }
  return k;
}

/// Elements before the next address that vectors like.
int64_t untilAligned(const double* x) {
  return static_cast<int64_t>((-reinterpret_cast<uintptr_t>(x) & (sizeof(Lanes) - 1)) / sizeof(double));
}

template <bool kSmallest>
double extremeOf(const double* x, int64_t n, platform::ParallelFor* parallel) {
  constexpr int64_t kGrain = platform::kParallelThreshold / 2;
  const auto kernel = kSmallest ? smallestOf : largestOf;
  const int64_t head = untilAligned(x) < n ? untilAligned(x) : n;
  const double first = extreme<kSmallest>(x, head);
  double rest;
  if (parallel == nullptr || n < platform::kParallelThreshold) {
    rest = kernel(x + head, n - head);
  } else {
    std::vector<double> parts(static_cast<size_t>(n / kGrain + 1), kSmallest ? kInf : -kInf);
    parallel->run(n - head, kGrain, [&](int64_t begin, int64_t end) {
      parts[static_cast<size_t>(begin / kGrain)] = kernel(x + head + begin, end - begin);
    });
    rest = extreme<kSmallest>(parts.data(), static_cast<int64_t>(parts.size()));
  }
  return (kSmallest ? first < rest : first > rest) ? first : rest;
}

}  // namespace

double sumInOrder(const double* x, int64_t n, platform::ParallelFor* parallel) {
  int64_t i = untilAligned(x) < n ? untilAligned(x) : n;
  double s = addPlainly(x, i, 0);
  int64_t putOff = 1;
  while (i + kBlock <= n) {
    const double p = powerOf(s);
    if (parallel && p != 0 && putOff == 1) {
      const int64_t count = std::min(blocksAhead(s, p, i), (n - i) / kBlock);
      if (count >= kFewestInStretch) {
        int64_t plain = 0;
        const int64_t done = addStretch(x + i, count, *parallel, &s, &plain);
        if (done - plain < count / 2) parallel = nullptr;  // not as foreseen: no more of it
        i += done * kBlock;
        continue;
      }
    }
    if (p != 0 && addRounded(roundBlock(x + i, p), p, &s)) {
      i += kBlock;
      putOff = 1;
      continue;
    }
    const int64_t plain = putOff * kBlock < n - i ? putOff * kBlock : n - i;
    s = addPlainly(x + i, plain, s);
    i += plain;
    putOff = putOff < kMostPutOff ? 2 * putOff : putOff;
  }
  return addPlainly(x + i, n - i, s);
}

double largest(const double* x, int64_t n, platform::ParallelFor* parallel) { return extremeOf<false>(x, n, parallel); }
double smallest(const double* x, int64_t n, platform::ParallelFor* parallel) { return extremeOf<true>(x, n, parallel); }

}  // namespace kelo::builtins
