// The plain routines, loops over the C library, and the choice between them and those of the
// processor at hand.
#include "platform/vector_math.h"

#include <cmath>
#include <iterator>

#include "platform/vector_math_avx2.h"
#include "platform/vector_math_avx512.h"

namespace kelo::platform {
namespace {

template <auto kFunction>
void loop(double* y, const double* x, int64_t n) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) y[i] = kFunction(x[i]);
}

constexpr VectorRoutine kPlain[] = {
    loop<[](double x) { return std::cos(x); }>,   loop<[](double x) { return std::sin(x); }>,
    loop<[](double x) { return std::tan(x); }>,   loop<[](double x) { return std::cosh(x); }>,
    loop<[](double x) { return std::sinh(x); }>,  loop<[](double x) { return std::tanh(x); }>,
    loop<[](double x) { return std::acos(x); }>,  loop<[](double x) { return std::asin(x); }>,
    loop<[](double x) { return std::atan(x); }>,  loop<[](double x) { return std::acosh(x); }>,
    loop<[](double x) { return std::asinh(x); }>, loop<[](double x) { return std::atanh(x); }>,
    loop<[](double x) { return std::exp(x); }>,   loop<[](double x) { return std::log(x); }>,
    loop<[](double x) { return std::log2(x); }>,  loop<[](double x) { return std::log10(x); }>,
    loop<[](double x) { return std::sqrt(x); }>,  loop<[](double x) { return 1.0 / x; }>,
    loop<[](double x) { return std::fabs(x); }>,  loop<[](double x) { return std::ceil(x); }>,
    loop<[](double x) { return std::trunc(x); }>, loop<[](double x) { return std::floor(x); }>,
    loop<[](double x) { return std::round(x); }>,
};
static_assert(std::size(kPlain) == kVectorFunctionCount);

void powersOfLibrary(double* z, const double* x, const double* y, int64_t n) {
  for (int64_t i = 0; i < n; ++i) z[i] = std::pow(x[i], y[i]);
}

void anglesOfLibrary(double* z, const double* y, const double* x, int64_t n) {
  for (int64_t i = 0; i < n; ++i) z[i] = std::atan2(y[i], x[i]);
}

#if KELO_AVX2
bool hasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  return has;
}
bool hasAvx512() {
  static const bool has = hasAvx2() && __builtin_cpu_supports("avx512f");
  return has;
}
#endif

}  // namespace

PowerRoutine plainPowerRoutine() { return powersOfLibrary; }

PowerRoutine powerRoutine() {
#if KELO_AVX2
  if (hasAvx512()) return avx512Power();
  if (hasAvx2()) return avx2Power();
#endif
  return powersOfLibrary;
}

WholePowerRoutine wholePowerRoutine() {
#if KELO_AVX2
  if (hasAvx512()) return avx512WholePower();
  if (hasAvx2()) return avx2WholePower();
#endif
  return nullptr;
}

AngleRoutine plainAngleRoutine() { return anglesOfLibrary; }

AngleRoutine angleRoutine() {
#if KELO_AVX2
  if (hasAvx512()) return avx512Angle();
  if (hasAvx2()) return avx2Angle();
#endif
  return anglesOfLibrary;
}

VectorRoutine plainRoutine(VectorFunction function) { return kPlain[static_cast<int>(function)]; }

VectorRoutine vectorRoutine(VectorFunction function) {
#if KELO_AVX2
  if (hasAvx512()) {
    if (const VectorRoutine routine = avx512Routine(function)) return routine;
  }
  if (hasAvx2()) {
    if (const VectorRoutine routine = avx2Routine(function)) return routine;
  }
#endif
  return plainRoutine(function);
}

}  // namespace kelo::platform
