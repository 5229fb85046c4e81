// Rounding to whole numbers, of a complex number each part by itself, and the remainders of
// division.
//
// `rem` and `mod` divide without correction for the rounding of the quotient: mod(0.3, 0.1) is what
// that arithmetic gives, and Inf as divisor gives NaN. NOTE: intended.

#include "builtins/elementwise/kernels.h"
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"
#include "platform/vector_math.h"
#include "values/numbers.h"

namespace kelo::builtins {
namespace {

using platform::VectorFunction;

template <VectorFunction kFunction>
NodeValue rounding(Call& call) {
  const auto routine = platform::vectorRoutine(kFunction);
  NumericArray a = read::takeNumeric(call, 0, Wording::sentence(text::kNumericForRounding));
  if (!a.is(Kind::Complex)) return mapBlocks(std::move(a).toDoubleArray(), routine);
  return unaryLoop(std::move(a).take<ComplexDouble>(), [&](ComplexDouble z) noexcept {
    double parts[] = {z.real, z.imaginary};
    routine(parts, parts, 2);
    return ComplexDouble{parts[0], parts[1]};
  });
}

double remOf(double a, double b) {
  return b == 0 ? kNaN : a - b * std::trunc(a / b);
}
double modOf(double a, double b) { return b == 0 ? a : a - b * std::floor(a / b); }

template <double (*kRemainder)(double, double)>
NodeValue remainders(Call& call) {
  const Wording words = {"A, B", "A and B", text::kRealNumericArrays};
  DoubleArray a = read::takeReal(call, 0, words), b = read::takeReal(call, 1, words);
  if (!expandedSizeIfAny(a.size(), b.size())) throw Wording{"A, B", "A and B", text::kCompatibleSizes}.complaint(call);
  return binaryLoop(std::move(a), std::move(b), [](double x, double y) noexcept { return kRemainder(x, y); });
}

// clang-format off
constexpr Builtin kRounding[] = {
    {"ceil",  rounding<VectorFunction::ceil>,  {1, 1}, 1, "A",
     "Rounds towards plus infinity", "ceil([-1.5 1.5])"},
    {"fix",   rounding<VectorFunction::fix>,   {1, 1}, 1, "A",
     "Rounds towards zero", "fix([-1.5 1.5])"},
    {"floor", rounding<VectorFunction::floor>, {1, 1}, 1, "A",
     "Rounds towards minus infinity", "floor([-1.5 1.5])"},
    {"round", rounding<VectorFunction::round>, {1, 1}, 1, "A",
     "Rounds to the nearest whole number, halves away from zero", "round([-1.5 1.4])"},

    {"rem",   remainders<remOf>,               {2, 2}, 1, "A, B",
     "Remainder of a division, with the sign of A", "rem([-5 5], 3)"},
    {"mod",   remainders<modOf>,               {2, 2}, 1, "A, B",
     "Remainder of a division, with the sign of B", "mod([-5 5], 3)"},
};
// clang-format on

}  // namespace

std::span<const Builtin> roundingTable() { return kRounding; }

}  // namespace kelo::builtins
