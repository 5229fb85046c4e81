// Routines on vectors of eight doubles: SLEEF's of 1 ULP in the same form as for vectors of four,
// and with the same exceptions; exp, log and powers are our own. What waits for memory is left to those.
//
// NOTE: this source is compiled with other options than the rest. It uses no inline functions of
// the standard library, since the linker might take their copies from here.
#include "platform/vector_math_avx512.h"

#if KELO_AVX2
#include <immintrin.h>
#include <sleef.h>

#include "platform/vector_exp_log_avx512.h"
#include "platform/vector_power_avx512.h"
#include "platform/vector_whole_power.h"

namespace kelo::platform {
namespace {

using Lanes = __m512d;
constexpr int kLanes = 8;
constexpr double kInf = __builtin_inf();

template <auto kFunction>
void loop(double* y, const double* x, int64_t n) {
  int64_t i = 0;
  for (; i + kLanes <= n; i += kLanes) _mm512_storeu_pd(y + i, kFunction(_mm512_loadu_pd(x + i)));
  if (i == n) return;
  const auto rest = static_cast<__mmask8>((1u << (n - i)) - 1);
  _mm512_mask_storeu_pd(y + i, rest, kFunction(_mm512_maskz_loadu_pd(rest, x + i)));
}

/// kFunction, but `plain` for lanes whose magnitude is below `least` or above `most`.
template <auto kFunction, class Plain>
Lanes within(double least, double most, Lanes x, Plain plain) {
  const Lanes magnitude = _mm512_abs_pd(x);
  const int mask = _mm512_cmp_pd_mask(magnitude, _mm512_set1_pd(least), _CMP_LT_OQ) |
                   _mm512_cmp_pd_mask(magnitude, _mm512_set1_pd(most), _CMP_GT_OQ);
  if (mask == 0) return kFunction(x);
  double in[kLanes], out[kLanes];
  _mm512_storeu_pd(in, x);
  _mm512_storeu_pd(out, kFunction(x));
  for (int k = 0; k < kLanes; ++k) {
    if (mask >> k & 1) out[k] = plain(in[k]);
  }
  return _mm512_loadu_pd(out);
}

template <auto kFunction>
void loopOfPairs(double* z, const double* x, const double* y, int64_t n) {
  int64_t i = 0;
  for (; i + kLanes <= n; i += kLanes) {
    _mm512_storeu_pd(z + i, kFunction(_mm512_loadu_pd(x + i), _mm512_loadu_pd(y + i)));
  }
  if (i == n) return;
  const auto rest = static_cast<__mmask8>((1u << (n - i)) - 1);
  const Lanes first = _mm512_maskz_loadu_pd(rest, x + i), second = _mm512_maskz_loadu_pd(rest, y + i);
  _mm512_mask_storeu_pd(z + i, rest, kFunction(first, second));
}

}  // namespace

PowerRoutine avx512Power() { return loopOfPairs<power>; }
WholePowerRoutine avx512WholePower() {
  constexpr auto kIsAny = [](auto mask) { return _mm512_test_epi64_mask((__m512i)mask, (__m512i)mask) != 0; };
  return wholePowers<[](Lanes a, Lanes b, Lanes c) { return _mm512_fmadd_pd(a, b, c); }, power, kIsAny, Lanes>;
}
AngleRoutine avx512Angle() { return loopOfPairs<Sleef_finz_atan2d8_u10avx512f>; }

VectorRoutine avx512Routine(VectorFunction function) {
  switch (function) {
    case VectorFunction::cos: return loop<Sleef_finz_cosd8_u10avx512f>;
    case VectorFunction::sin: return loop<Sleef_finz_sind8_u10avx512f>;
    case VectorFunction::tan:
      return loop<[](Lanes x) {
        return within<Sleef_finz_tand8_u10avx512f>(1e-290, kInf, x, [](double v) { return __builtin_tan(v); });
      }>;
    case VectorFunction::cosh:
      return loop<[](Lanes x) {
        return within<Sleef_finz_coshd8_u10avx512f>(0.0, 709.0, x, [](double v) { return __builtin_cosh(v); });
      }>;
    case VectorFunction::sinh:
      return loop<[](Lanes x) {
        return within<Sleef_finz_sinhd8_u10avx512f>(0.0, 709.0, x, [](double v) { return __builtin_sinh(v); });
      }>;
    case VectorFunction::tanh:
      return loop<[](Lanes x) {
        return within<Sleef_finz_tanhd8_u10avx512f>(1e-8, kInf, x, [](double v) { return __builtin_tanh(v); });
      }>;
    case VectorFunction::acos: return loop<Sleef_finz_acosd8_u10avx512f>;
    case VectorFunction::asin: return loop<Sleef_finz_asind8_u10avx512f>;
    case VectorFunction::atan: return loop<Sleef_finz_atand8_u10avx512f>;
    case VectorFunction::atanh: return loop<Sleef_finz_atanhd8_u10avx512f>;
    case VectorFunction::exp: return loop<exponential>;
    case VectorFunction::log: return loop<logarithm>;
    case VectorFunction::log2: return loop<Sleef_finz_log2d8_u10avx512f>;
    case VectorFunction::log10: return loop<Sleef_finz_log10d8_u10avx512f>;
    default: return nullptr;
  }
}

}  // namespace kelo::platform
#endif
