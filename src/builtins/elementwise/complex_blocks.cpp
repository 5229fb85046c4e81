// Block by block: magnitudes first, by the routine that there is for them, and then both parts in
// loops for wide vectors. Numbers with a part that is 0 or near the ends of the range are left to
// the C library one by one.
#include "builtins/elementwise/complex_blocks.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "builtins/elementwise/kernels.h"
#include "platform/vector_clones.h"
#include "platform/vector_math.h"
#include "values/numbers.h"

namespace kelo::builtins {
namespace {

bool isUsual(double x) { return std::fabs(x) > 0x1p-900 && std::fabs(x) < 0x1p900; }

/// For parts a and b of a number and its magnitude m: the greater part of the root is the root of
/// (m + |a|) / 2, and twice their product is b.
KELO_VECTOR_CLONES void rootsBy(double* magnitudes, ComplexDouble* out, const ComplexDouble* z, int64_t n) {
  for (int64_t i = 0; i < n; ++i) {
    const double a = z[i].real, b = z[i].imaginary;
    const double greater = std::sqrt(0.5 * (magnitudes[i] + std::fabs(a))), other = 0.5 * (std::fabs(b) / greater);
    out[i] = {a > 0 ? greater : other, std::copysign(a > 0 ? other : greater, b)};
  }
}

KELO_VECTOR_CLONES void rootsOfReals(ComplexDouble* out, const double* x, int64_t n) {
  for (int64_t i = 0; i < n; ++i) {
    const double root = std::sqrt(std::fabs(x[i]));
    out[i] = {x[i] < 0 ? 0.0 : root, x[i] < 0 || x[i] != x[i] ? root : 0.0};
  }
}

/// fill(out, x, n) for the blocks of an array.
template <class T, class Fill>
ComplexDoubleArray complexBlocks(const TypedArray<T>& x, const Fill& fill) {
  auto result = ComplexDoubleArray::uninitialized(x.size());
  platform::parallelFor(x.numElements(), [&, out = result.writable(), in = x.data()](int64_t begin, int64_t end) {
    for (int64_t i = begin; i < end; i += kBlock) fill(out + i, in + i, std::min(kBlock, end - i));
  });
  return result;
}

}  // namespace

ComplexDoubleArray complexRoots(const ComplexDoubleArray& z) {
  return complexBlocks(z, [](ComplexDouble* out, const ComplexDouble* in, int64_t n) {
    double magnitudes[kBlock];
    for (int64_t i = 0; i < n; ++i) magnitudes[i] = in[i].magnitude();
    rootsBy(magnitudes, out, in, n);
    for (int64_t i = 0; i < n; ++i) {
      if (isUsual(in[i].real) && isUsual(in[i].imaginary)) continue;
      out[i] = ofLibrary<[](std::complex<double> w) { return std::sqrt(w); }>(in[i]);
    }
  });
}

ComplexDoubleArray complexRoots(const DoubleArray& x) { return complexBlocks(x, rootsOfReals); }

ComplexDoubleArray complexLogarithms(const DoubleArray& x) {
  return complexBlocks(x, [](ComplexDouble* out, const double* in, int64_t n) {
    static const auto logarithm = platform::vectorRoutine(platform::VectorFunction::log);
    double logarithms[kBlock];
    for (int64_t i = 0; i < n; ++i) logarithms[i] = std::fabs(in[i]);
    logarithm(logarithms, logarithms, n);
    for (int64_t i = 0; i < n; ++i) {
      out[i] = {logarithms[i], std::isnan(in[i]) ? kNaN : std::signbit(in[i]) ? std::numbers::pi : 0.0};
    }
  });
}

}  // namespace kelo::builtins
