// Squares and sums are kept in two parts, a double and what its rounding left over, in sixteen
// lanes. No fused product is used, so that every processor gives the same.
#include "linear/euclidean_norm.h"

#include <cmath>

#include "platform/vector_clones.h"

namespace kelo {
namespace {

constexpr int64_t kLanes = 8, kChains = 2;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));

template <class T>
struct TwoParts {
  T high{}, low{};
};

/// high + low is x * x.
template <class T>
inline TwoParts<T> squareOf(T x) {
  const T scaled = 134217729.0 * x;  // 2^27 + 1
  const T head = scaled - (scaled - x), tail = x - head;
  const T square = x * x;
  return {square, ((head * head - square) + 2.0 * head * tail) + tail * tail};
}

template <class T>
inline void add(TwoParts<T>& sum, TwoParts<T> x) {
  const T high = sum.high + x.high, part = high - sum.high;
  const T error = (sum.high - (high - part)) + (x.high - part);
  sum = {high, sum.low + (x.low + error)};
}

KELO_WIDE_CLONES void sumOfSquares(const double* x, int64_t n, TwoParts<double>* result) {
  TwoParts<Lanes> sums[kChains] = {};
  int64_t i = 0;
  for (; i + kLanes * kChains <= n; i += kLanes * kChains) {
    for (int64_t k = 0; k < kChains; ++k) {
      Lanes lanes;
      __builtin_memcpy(&lanes, x + i + k * kLanes, sizeof lanes);
      add(sums[k], squareOf(lanes));
    }
  }
  for (; i < n; ++i) add(*result, squareOf(x[i]));
  for (const auto& sum : sums) {
    for (int64_t k = 0; k < kLanes; ++k) add(*result, {sum.high[k], sum.low[k]});
  }
}

}  // namespace

double euclideanNorm(const double* x, int64_t n) {
  constexpr double kLeast = 1e-250, kMost = 1e290;
  TwoParts<double> sum;
  sumOfSquares(x, n, &sum);
  if (!(sum.high > kLeast && sum.high < kMost)) return -1;
  const double root = std::sqrt(sum.high + sum.low);
  const TwoParts<double> square = squareOf(root);
  return root + (((sum.high - square.high) - square.low) + sum.low) / (2 * root);
}

}  // namespace kelo
