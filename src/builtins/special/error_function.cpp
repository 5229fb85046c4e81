#include "builtins/special/error_function.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "platform/vector_clones.h"

namespace kelo::special {
namespace {

constexpr double kCoefficients[] = {-1.3026537197817094,
                                    0.6419697923564902,
                                    0.019476473204185836,
                                    -0.00956151478680863,
                                    -0.000946595344482036,
                                    0.000366839497852761,
                                    4.2523324806907e-05,
                                    -2.0278578112534e-05,
                                    -1.624290004647e-06,
                                    1.30365583558e-06,
                                    1.5626441722e-08,
                                    -8.5238095915e-08,
                                    6.529054439e-09,
                                    5.059343495e-09,
                                    -9.91364156e-10,
                                    -2.27365122e-10,
                                    9.6467911e-11,
                                    2.394038e-12,
                                    -6.886027e-12,
                                    8.94487e-13,
                                    3.13092e-13,
                                    -1.12708e-13,
                                    3.81e-16,
                                    7.106e-15,
                                    -1.523e-15,
                                    -9.4e-17,
                                    1.21e-16,
                                    -2.8e-17};

constexpr int64_t kLanes = 8;
constexpr int64_t kChains = 4;  // side by side, since each waits for its own last step
constexpr int64_t kBlock = kLanes * kChains;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));

/// erfc(z) = t * exp(exponent) for a block of z >= 0, by Clenshaw's recurrence.
KELO_WIDE_CLONES void coresOf(const double* z, double* t, double* exponent) {
  Lanes at[kChains], factor[kChains], d[kChains] = {}, dd[kChains] = {};
  __builtin_memcpy(at, z, sizeof at);
  Lanes scale[kChains];
  for (int64_t k = 0; k < kChains; ++k) {
    scale[k] = 2 / (2 + at[k]);
    factor[k] = 4 * scale[k] - 2;
  }
  for (size_t j = std::size(kCoefficients) - 1; j > 0; --j) {
    for (int64_t k = 0; k < kChains; ++k) {
      const Lanes last = d[k];
      d[k] = factor[k] * d[k] - dd[k] + kCoefficients[j];
      dd[k] = last;
    }
  }
  for (int64_t k = 0; k < kChains; ++k) at[k] = -at[k] * at[k] + 0.5 * (kCoefficients[0] + factor[k] * d[k]) - dd[k];
  __builtin_memcpy(exponent, at, sizeof at);
  __builtin_memcpy(t, scale, sizeof scale);
}

/// f(negative, erfc of the magnitude) of n numbers, a block of them at a time.
template <class F>
void mapCores(double* y, const double* x, int64_t n, F f) {
  alignas(sizeof(Lanes)) double z[kBlock] = {}, t[kBlock], exponent[kBlock];
  for (int64_t begin = 0; begin < n; begin += kBlock) {
    const int64_t count = std::min(kBlock, n - begin);
    for (int64_t k = 0; k < count; ++k) z[k] = x[begin + k] >= 0 ? x[begin + k] : -x[begin + k];
    coresOf(z, t, exponent);
    for (int64_t k = 0; k < count; ++k) y[begin + k] = f(!(x[begin + k] >= 0), t[k] * std::exp(exponent[k]));
  }
}

}  // namespace

void erf(double* y, const double* x, int64_t n) {
  mapCores(y, x, n, [](bool negative, double core) { return negative ? core - 1 : 1 - core; });
}
void erfc(double* y, const double* x, int64_t n) {
  mapCores(y, x, n, [](bool negative, double core) { return negative ? 2 - core : core; });
}

double erf(double x) {
  erf(&x, &x, 1);
  return x;
}
double erfc(double x) {
  erfc(&x, &x, 1);
  return x;
}

}  // namespace kelo::special
