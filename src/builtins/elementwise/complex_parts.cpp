// Parts of complex numbers: magnitude, sign, angle, conjugate, real and imaginary part, and the
// making of complex arrays.
#include <algorithm>
#include <limits>
#include <numbers>

#include "builtins/elementwise/kernels.h"
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"
#include "platform/parallel.h"
#include "platform/vector_angle.h"
#include "platform/vector_clones.h"
#include "platform/vector_math.h"

namespace kelo::builtins {
namespace {

enum class ComplexPart { abs, sign, angle, conj, real, imag };

/// Without scaling, so it overflows to Inf for parts near 1e155. NOTE: intended.
double plainMagnitude(ComplexDouble z) { return std::sqrt(z.real * z.real + z.imaginary * z.imaginary); }

KELO_VECTOR_CLONES void signsOf(double* y, const double* x, int64_t n) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) {
    const double v = x[i], signOrZero = (v > 0 ? 1.0 : 0.0) - (v < 0 ? 1.0 : 0.0);
    y[i] = v != v ? v : signOrZero;
  }
}
double angleOf(double x) { return std::isnan(x) ? x : x < 0 ? std::numbers::pi : 0.0; }

/// Block by block, whose parts are taken apart.
DoubleArray angles(const ComplexDoubleArray& z) {
  constexpr int64_t kBlock = 512;
  static const platform::AngleRoutine routine = platform::angleRoutine();
  auto result = DoubleArray::uninitialized(z.size());
  platform::parallelFor(z.numElements(), [&, out = result.writable(), in = z.data()](int64_t begin, int64_t end) {
    double real[kBlock], imaginary[kBlock];
    for (int64_t first = begin; first < end; first += kBlock) {
      const int64_t n = std::min(kBlock, end - first);
      for (int64_t i = 0; i < n; ++i) {
        real[i] = in[first + i].real;
        imaginary[i] = in[first + i].imaginary;
      }
      routine(out + first, imaginary, real, n);
    }
  });
  return result;
}

NumericArray complexPart(ComplexPart part, ComplexDoubleArray z) {
  const auto each = [&](auto f) { return NumericArray(unaryLoop(std::move(z), f)); };
  switch (part) {
    case ComplexPart::abs: return each([](ComplexDouble w) noexcept { return plainMagnitude(w); });
    case ComplexPart::sign:
      return each([](ComplexDouble w) noexcept { return w / ComplexDouble{plainMagnitude(w), 0}; });
    case ComplexPart::angle: return angles(z);
    case ComplexPart::conj: return each([](ComplexDouble w) noexcept { return conj(w); });
    case ComplexPart::real: return each([](ComplexDouble w) noexcept { return w.real; });
    default: return each([](ComplexDouble w) noexcept { return w.imaginary; });
  }
}

DoubleArray realPart(ComplexPart part, DoubleArray x) {
  switch (part) {
    case ComplexPart::abs: return mapBlocks(std::move(x), platform::vectorRoutine(platform::VectorFunction::absolute));
    case ComplexPart::sign: return mapBlocks(std::move(x), signsOf);
    case ComplexPart::angle: return unaryLoop(std::move(x), [](double v) noexcept { return angleOf(v); });
    case ComplexPart::imag: return DoubleArray(x.size(), 0.0);
    default: return x;
  }
}

NodeValue complexParts(Call& call) {
  NumericArray a = read::takeNumeric(call, 0, {"A", "A", predicate::kNumericArray});
  const auto part = call.selector<ComplexPart>();
  if (a.is(Kind::Complex)) return complexPart(part, std::move(a).take<ComplexDouble>());
  return realPart(part, std::move(a).toDoubleArray());
}

NodeValue makeComplex(Call& call) {
  if (call.count() == 1) return read::takeNumeric(call, 0, {"A", "A", predicate::kNumericArray}).toComplexArray();
  DoubleArray real = read::real(call, 0, {"A, B", "A", text::kNumericArrayOfReals});
  DoubleArray imaginary = read::real(call, 1, {"A, B", "B", text::kNumericArrayOfReals});
  return binaryLoop(std::move(real), std::move(imaginary), [](double x, double y) noexcept {
    return ComplexDouble{x, y};
  });
}

// clang-format off
constexpr Builtin kComplexParts[] = {
    {"complex", makeComplex,                        {1, 2}, 1, "A, B",
     "Makes a complex array from real and imaginary parts", "complex([1 2], [3 4])"},
    {"abs",     {complexParts, ComplexPart::abs},   {1, 1}, 1, "A",
     "Absolute value, or magnitude of a complex number", "abs([-2 3+4i])", {.inputs = text::kOneInputExactly}},
    {"sign",    {complexParts, ComplexPart::sign},  {1, 1}, 1, "A",
     "Sign: 1, 0 or -1, or the direction of a complex number", "sign([-2 0 5])", {.inputs = text::kOneInputExactly}},
    {"angle",   {complexParts, ComplexPart::angle}, {1, 1}, 1, "A",
     "Angle in radians of a complex number", "angle([1 -1 1i])", {.inputs = text::kOneInputExactly}},
    {"conj",    {complexParts, ComplexPart::conj},  {1, 1}, 1, "A",
     "Complex conjugate", "conj(1+2i)", {.inputs = text::kOneInputExactly}},
    {"real",    {complexParts, ComplexPart::real},  {1, 1}, 1, "A",
     "Real part", "real(1+2i)", {.inputs = text::kOneInputExactly}},
    {"imag",    {complexParts, ComplexPart::imag},  {1, 1}, 1, "A",
     "Imaginary part", "imag(1+2i)", {.inputs = text::kOneInputExactly}},
};
// clang-format on

}  // namespace

std::span<const Builtin> complexPartsTable() { return kComplexParts; }

}  // namespace kelo::builtins
