// The exponential and the natural logarithm of eight doubles, about twice as fast as SLEEF's: a
// short table in registers leaves an argument so small that a short polynomial serves. Measured on
// 4 million arguments of all sizes, errors stay below 0.65 ULP.
//
// Only vector_math_avx512.cpp includes this. Numbers of which the tables do not hold (subnormal,
// without a logarithm, with a result out of range) are SLEEF's matter, lane by lane.
//
// source: Tang (1989), (1990), "Table-driven implementation of the exponential (logarithm) function
// in IEEE floating-point arithmetic"
#pragma once

#include <immintrin.h>
#include <sleef.h>

namespace kelo::platform {
namespace {

inline __m512d all(double x) { return _mm512_set1_pd(x); }

/// An element of a table of 16, by the low bits of each lane.
inline __m512d entry(const double (&table)[16], __m512i index) {
  return _mm512_permutex2var_pd(_mm512_loadu_pd(table), index, _mm512_loadu_pd(table + 8));
}

// 2^(k / 16) in two parts.
constexpr double kRootHigh[16] = {0x1p+0,
                                  0x1.0b5586cf9890fp+0,
                                  0x1.172b83c7d517bp+0,
                                  0x1.2387a6e756238p+0,
                                  0x1.306fe0a31b715p+0,
                                  0x1.3dea64c123422p+0,
                                  0x1.4bfdad5362a27p+0,
                                  0x1.5ab07dd485429p+0,
                                  0x1.6a09e667f3bcdp+0,
                                  0x1.7a11473eb0187p+0,
                                  0x1.8ace5422aa0dbp+0,
                                  0x1.9c49182a3f09p+0,
                                  0x1.ae89f995ad3adp+0,
                                  0x1.c199bdd85529cp+0,
                                  0x1.d5818dcfba487p+0,
                                  0x1.ea4afa2a490dap+0};
constexpr double kRootLow[16] = {0x0p+0,     0x1.8a8p-54, -0x1.19p-55, 0x1.9bp-54,  0x1.6fp-55,  0x1.aep-55,
                                 0x1.d4p-56, 0x1.63p-54,  -0x1.bep-54, -0x1.42p-55, 0x1.6e8p-54, 0x1.c8p-56,
                                 0x1.7ap-54, 0x1.11p-55,  0x1.2fp-55,  -0x1.eap-54};

/// x = k * log(2) / 16 + r, k whole and |r| up to log(2) / 32; `index` is k modulo 16.
struct Reduced {
  __m512d k, r;
  __m512i index;
};

inline Reduced reduced(__m512d x) {
  constexpr double kShift = 0x1.8p52;  // leaves the whole part of a sum in its low bits
  constexpr double kStepHigh = 0x1.62e42fefa39efp-5, kStepLow = 0x1.abc9e3b39803fp-60;
  const __m512d shifted = _mm512_fmadd_pd(x, all(0x1.71547652b82fep+4), all(kShift));
  const __m512d k = _mm512_sub_pd(shifted, all(kShift));
  const __m512d r = _mm512_fnmadd_pd(k, all(kStepLow), _mm512_fnmadd_pd(k, all(kStepHigh), x));
  return {k, r, _mm512_castpd_si512(shifted)};
}

/// exp(x) = 2^(k / 16) * exp(r).
inline __m512d exponentialOf(const Reduced& x) {
  const __m512d r = x.r, r2 = _mm512_mul_pd(r, r);
  const __m512d low = _mm512_fmadd_pd(r, all(1.0 / 6), all(1.0 / 2));
  const __m512d middle = _mm512_fmadd_pd(r, all(1.0 / 120), all(1.0 / 24));
  const __m512d high = _mm512_fmadd_pd(r, all(1.0 / 5040), all(1.0 / 720));
  const __m512d sum = _mm512_fmadd_pd(r2, _mm512_fmadd_pd(r2, high, middle), low);
  const __m512d less1 = _mm512_fmadd_pd(r2, sum, r);  // exp(r) - 1
  const __m512d root = entry(kRootHigh, x.index);
  const __m512d power = _mm512_add_pd(root, _mm512_fmadd_pd(root, less1, entry(kRootLow, x.index)));
  return _mm512_scalef_pd(power, _mm512_mul_pd(x.k, all(1.0 / 16)));
}

inline __m512d exponential(__m512d x) {
  const __m512d result = exponentialOf(reduced(x));
  const __mmask8 outside = _mm512_cmp_pd_mask(_mm512_abs_pd(x), all(708), _CMP_NLE_UQ);
  return outside == 0 ? result : _mm512_mask_mov_pd(result, outside, Sleef_finz_expd8_u10avx512f(x));
}

// -log(c / 16) in two parts, the first with 42 bits behind the point, at c modulo 16 for c from 11
// to 21.
constexpr double kLogHigh[16] = {0x0p+0,
                                 -0x1.f0a30c0118p-5,
                                 -0x1.e27076e2bp-4,
                                 -0x1.5ff3070a7ap-3,
                                 -0x1.c8ff7c79aap-3,
                                 -0x1.1675cababap-2,
                                 0x0p+0,
                                 0x0p+0,
                                 0x0p+0,
                                 0x0p+0,
                                 0x0p+0,
                                 0x1.7fafa3bd81p-2,
                                 0x1.269621134ep-2,
                                 0x1.a93ed3c8aep-3,
                                 0x1.1178e8227ep-3,
                                 0x1.08598b59e4p-4};
constexpr double kLogLow[16] = {0x0p+0,         0x1.d599e8p-45,  0x1.a342c4p-45, 0x1.8586fp-44,
                                0x1.7794f8p-45, -0x1.8380e8p-44, 0x0p+0,         0x0p+0,
                                0x0p+0,         0x0p+0,          0x0p+0,         0x1.46fb78p-44,
                                -0x1.1b61fp-44, -0x1.87243p-45,  0x1.1ef79p-45,  -0x1.7e5dd8p-46};

/// x = 2^e * m, m from 3/4 to 3/2.
struct Scaled {
  __m512d e, m;
};

inline Scaled scaled(__m512d x) {
  const __m512d fraction = _mm512_getmant_pd(x, _MM_MANT_NORM_1_2, _MM_MANT_SIGN_zero);
  const __mmask8 isLarge = _mm512_cmp_pd_mask(fraction, all(1.5), _CMP_GE_OQ);
  const __m512d exponent = _mm512_getexp_pd(x);
  return {_mm512_mask_add_pd(exponent, isLarge, exponent, all(1)),
          _mm512_mask_mul_pd(fraction, isLarge, fraction, all(0.5))};
}

/// log(1 + r) - r for |r| < 0.0456.
inline __m512d logarithmLessArgument(__m512d r) {
  const __m512d r2 = _mm512_mul_pd(r, r), r4 = _mm512_mul_pd(r2, r2);
  const __m512d p3 = _mm512_fmadd_pd(r, all(-1.0 / 4), all(1.0 / 3));
  const __m512d p5 = _mm512_fmadd_pd(r, all(-1.0 / 6), all(1.0 / 5));
  const __m512d p7 = _mm512_fmadd_pd(r, all(-1.0 / 8), all(1.0 / 7));
  const __m512d p9 = _mm512_fmadd_pd(r, all(-1.0 / 10), all(1.0 / 9));
  const __m512d p11 = _mm512_fmadd_pd(r, all(-1.0 / 12), all(1.0 / 11));
  const __m512d high = _mm512_fmadd_pd(r4, p11, _mm512_fmadd_pd(r2, p9, p7));
  const __m512d sum = _mm512_fmadd_pd(r4, high, _mm512_fmadd_pd(r2, p5, p3));
  return _mm512_fmadd_pd(_mm512_mul_pd(r, r2), sum, _mm512_mul_pd(all(-0.5), r2));
}

/// log(x) = e * log(2) - log(c / 16) + log(1 + r), where x = 2^e * m, and r is
/// m * c / 16 - 1 exactly. Near 1 the first two are 0.
inline __m512d logarithm(__m512d x) {
  const auto [e, m] = scaled(x);
  const __m512d c = _mm512_roundscale_pd(_mm512_rcp14_pd(m), 4 << 4);  // in sixteenths
  const __m512d r = _mm512_fmsub_pd(m, c, all(1));
  const __m512i index = _mm512_castpd_si512(_mm512_fmadd_pd(c, all(16), all(0x1p52)));
  const __m512d high = _mm512_fmadd_pd(e, all(0x1.62e42fefa38p-1), entry(kLogHigh, index));
  const __m512d low = _mm512_fmadd_pd(e, all(0x1.ef35793c7673p-45), entry(kLogLow, index));
  const __m512d sum = _mm512_add_pd(high, r);
  const __m512d lost = _mm512_sub_pd(r, _mm512_sub_pd(sum, high));
  const __m512d rest = _mm512_add_pd(_mm512_add_pd(low, lost), logarithmLessArgument(r));
  const __m512d result = _mm512_add_pd(sum, rest);
  const __mmask8 outside = _mm512_cmp_pd_mask(x, all(0x1p-1022), _CMP_NGE_UQ) |
                           _mm512_cmp_pd_mask(x, all(0x1.fffffffffffffp+1023), _CMP_GT_OQ);
  return outside == 0 ? result : _mm512_mask_mov_pd(result, outside, Sleef_finz_logd8_u10avx512f(x));
}

}  // namespace
}  // namespace kelo::platform
