// Powers with one whole exponent: products of numbers in two parts, so that the result is the true
// one rounded, but for one in some 10^12. For vectors of any length.
//
// Only the sources of the routines for certain processors include this. `Lanes` is a vector of
// doubles, kMultiplyAdd(a, b, c) gives a * b + c rounded once.
//
// source: Dekker (1971), "A floating-point technique for extending the available precision"
#pragma once

#include <cstdint>

#include "platform/vector_power.h"

namespace kelo::platform {
namespace {

/// A number as the sum of two, the second smaller than the rounding of the first.
template <class Lanes>
struct Product {
  Lanes high, low;
};

template <auto kMultiplyAdd, class Lanes>
inline Product<Lanes> times(const Product<Lanes>& a, const Product<Lanes>& b) {
  const Lanes high = a.high * b.high;
  const Lanes rest = kMultiplyAdd(a.high, b.high, -high);
  return {high, rest + kMultiplyAdd(a.high, b.low, a.low * b.high)};
}

/// REQUIRES: exponent is not 0
template <auto kMultiplyAdd, class Lanes>
inline Product<Lanes> wholePower(Lanes x, int exponent) {
  Product<Lanes> result{}, square{x, Lanes{}};
  bool isFirst = true;
  for (int rest = exponent < 0 ? -exponent : exponent;;) {
    if (rest & 1) result = isFirst ? square : times<kMultiplyAdd>(result, square);
    if (rest & 1) isFirst = false;
    if ((rest >>= 1) == 0) break;
    square = times<kMultiplyAdd>(square, square);
  }
  if (exponent > 0) return result;
  const Lanes inverse = 1 / result.high;
  const Lanes rest = kMultiplyAdd(-inverse, result.high, Lanes{} + 1) - inverse * result.low;
  return {inverse, inverse * rest};
}

/// One vector, in which lanes with a product near the ends of the range are left to `plain`.
template <auto kMultiplyAdd, auto kPlain, auto kIsAny, class Lanes>
inline Lanes wholePowerAnywhere(Lanes x, int exponent) {
  const Product<Lanes> power = wholePower<kMultiplyAdd>(x, exponent);
  const auto isExact = (x == 0) | !(x - x == 0);  // zeros, infinities and NaN
  const Lanes result = isExact ? power.high : power.high + power.low;
  const Lanes size = power.high < 0 ? -power.high : power.high;
  const auto isInside = ((size > 0x1p-900) & (size < 0x1p900)) | isExact;
  if (!kIsAny(!isInside)) return result;
  return isInside ? result : kPlain(x, Lanes{} + exponent);
}

template <auto kMultiplyAdd, auto kPlain, auto kIsAny, class Lanes>
void wholePowers(double* z, const double* x, int exponent, int64_t n) {
  constexpr int64_t kLanes = sizeof(Lanes) / sizeof(double);
  typedef Lanes Unaligned __attribute__((aligned(8), may_alias));
  const auto one = [=](const double* from, double* to) {
    const Lanes v = *reinterpret_cast<const Unaligned*>(from);
    *reinterpret_cast<Unaligned*>(to) = wholePowerAnywhere<kMultiplyAdd, kPlain, kIsAny>(v, exponent);
  };
  int64_t i = 0;
  for (; i + kLanes <= n; i += kLanes) one(x + i, z + i);
  double rest[kLanes] = {};
  for (int64_t k = i; k < n; ++k) rest[k - i] = x[k];
  one(rest, rest);
  for (int64_t k = i; k < n; ++k) z[k] = rest[k - i];
}

}  // namespace
}  // namespace kelo::platform
