// Squares and sums are kept in two parts, a double and what its rounding left over, in sixteen
// lanes. What the rounding of a square left over is exact either way, by a fused product where the
// processor has one, so that every processor gives the same. Long vectors go in pieces of one
// length, side by side, whose sums are added in their order.
#include "linear/euclidean_norm.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/parallel.h"

namespace kelo {
namespace {

constexpr int64_t kLanes = 8, kChains = 2;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));

template <class T>
struct TwoParts {
  T high{}, low{};
};

/// high + low is x * x.
struct SplitSquare {
  template <class T>
  __attribute__((always_inline)) void operator()(const T& x, TwoParts<T>* square) const {
    const T scaled = 134217729.0 * x;  // 2^27 + 1
    const T head = scaled - (scaled - x), tail = x - head;
    square->high = x * x;
    square->low = ((head * head - square->high) + 2.0 * head * tail) + tail * tail;
  }
};

template <class T>
__attribute__((always_inline)) inline void add(TwoParts<T>& sum, const TwoParts<T>& x) {
  const T high = sum.high + x.high, part = high - sum.high;
  const T error = (sum.high - (high - part)) + (x.high - part);
  sum.high = high;
  sum.low = sum.low + (x.low + error);
}

template <class Square>
__attribute__((always_inline)) inline void sumOfSquares(const double* x, int64_t n, Square squareOf,
                                                        TwoParts<double>* result) {
  TwoParts<Lanes> sums[kChains] = {};
  int64_t i = 0;
  for (; i + kLanes * kChains <= n; i += kLanes * kChains) {
    for (int64_t k = 0; k < kChains; ++k) {
      Lanes lanes;
      __builtin_memcpy(&lanes, x + i + k * kLanes, sizeof lanes);
      TwoParts<Lanes> square;
      squareOf(lanes, &square);
      add(sums[k], square);
    }
  }
  for (; i < n; ++i) {
    TwoParts<double> square;
    SplitSquare()(x[i], &square);
    add(*result, square);
  }
  for (const auto& sum : sums) {
    for (int64_t k = 0; k < kLanes; ++k) add(*result, {sum.high[k], sum.low[k]});
  }
}

using Sum = void (*)(const double* x, int64_t n, TwoParts<double>* result);

void plainSum(const double* x, int64_t n, TwoParts<double>* result) { sumOfSquares(x, n, SplitSquare(), result); }

#if defined(__x86_64__) && defined(__gnu_linux__)
/// The same by the fused product of a processor that has it.
struct FusedSquare {
  __attribute__((always_inline)) void operator()(const Lanes& x, TwoParts<Lanes>* square) const {
    square->high = x * x;
    for (int64_t k = 0; k < kLanes; ++k) square->low[k] = __builtin_fma(x[k], x[k], -square->high[k]);
  }
};
__attribute__((target("arch=x86-64-v3"))) void sumOfFour(const double* x, int64_t n, TwoParts<double>* result) {
  sumOfSquares(x, n, FusedSquare(), result);
}
__attribute__((target("arch=x86-64-v4"))) void sumOfEight(const double* x, int64_t n, TwoParts<double>* result) {
  sumOfSquares(x, n, FusedSquare(), result);
}
Sum sumForProcessor() {
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl")) return sumOfEight;
  if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) return sumOfFour;
  return plainSum;
}
#else
Sum sumForProcessor() { return plainSum; }
#endif

TwoParts<double> sumInPieces(const double* x, int64_t n) {
  static const Sum sum = sumForProcessor();
  constexpr int64_t kPiece = platform::kParallelThreshold / 2;
  const int64_t count = n < 2 * kPiece ? 1 : (n + kPiece - 1) / kPiece;
  if (count == 1) {
    TwoParts<double> result;
    sum(x, n, &result);
    return result;
  }
  std::vector<TwoParts<double>> pieces(static_cast<size_t>(count));
  platform::parallelForUnits(count, kPiece, [&](int64_t begin, int64_t end) {
    for (int64_t k = begin; k < end; ++k) {
      sum(x + k * kPiece, std::min(kPiece, n - k * kPiece), &pieces[static_cast<size_t>(k)]);
    }
  });
  TwoParts<double> result;
  for (const auto& piece : pieces) add(result, piece);
  return result;
}

}  // namespace

double euclideanNorm(const double* x, int64_t n) {
  constexpr double kLeast = 1e-250, kMost = 1e290;
  const TwoParts<double> sum = sumInPieces(x, n);
  if (!(sum.high > kLeast && sum.high < kMost)) return -1;
  const double root = std::sqrt(sum.high + sum.low);
  TwoParts<double> square;
  SplitSquare()(root, &square);
  return root + (((sum.high - square.high) - square.low) + sum.low) / (2 * root);
}

}  // namespace kelo
