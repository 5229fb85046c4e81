// The trigonometric family: one handler and a recipe per function.
//
// A recipe is one of twelve functions with steps before and after it: degrees to radians, the reciprocal of the
// argument, the function, the reciprocal of the result, radians to degrees. Degrees are plain products, so cosd(90) is
// not exactly 0. NOTE: intended. A real array stays real unless one element lies outside the function's real domain;
// then all of it is complex.
#include "builtins/elementwise/handlers.h"
#include "builtins/elementwise/kernels.h"
#include "interpreter/reader.h"
#include "platform/vector_math.h"

namespace kelo::builtins {
namespace {

using platform::VectorFunction;
using C = std::complex<double>;

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;

enum Step : unsigned { kPlain = 0, kFromDegrees = 1, kOfReciprocal = 2, kReciprocal = 4, kToDegrees = 8 };

/// Where a real argument gives a real result. NaN counts as inside, but not in unitInterval. NOTE: intended.
enum class Domain : uint8_t { everywhere, withinOne, fromOne, beyondOne, unitInterval };

struct Function {
  VectorFunction real;
  ComplexFunction complex;
};
constexpr Function kCos = {VectorFunction::cos, ofLibrary<[](C z) { return std::cos(z); }>};
constexpr Function kSin = {VectorFunction::sin, ofLibrary<[](C z) { return std::sin(z); }>};
constexpr Function kTan = {VectorFunction::tan, ofLibrary<[](C z) { return std::tan(z); }>};
constexpr Function kCosh = {VectorFunction::cosh, ofLibrary<[](C z) { return std::cosh(z); }>};
constexpr Function kSinh = {VectorFunction::sinh, ofLibrary<[](C z) { return std::sinh(z); }>};
constexpr Function kTanh = {VectorFunction::tanh, ofLibrary<[](C z) { return std::tanh(z); }>};
constexpr Function kAcos = {VectorFunction::acos, ofLibrary<[](C z) { return std::acos(z); }>};
constexpr Function kAsin = {VectorFunction::asin, ofLibrary<[](C z) { return std::asin(z); }>};
constexpr Function kAtan = {VectorFunction::atan, ofLibrary<[](C z) { return std::atan(z); }>};
constexpr Function kAcosh = {VectorFunction::acosh, ofLibrary<[](C z) { return std::acosh(z); }>};
constexpr Function kAsinh = {VectorFunction::asinh, ofLibrary<[](C z) { return std::asinh(z); }>};
constexpr Function kAtanh = {VectorFunction::atanh, ofLibrary<[](C z) { return std::atanh(z); }>};

struct Recipe {
  const Function* function;  // null: the steps alone
  unsigned steps = kPlain;
  Domain domain = Domain::everywhere;
  bool has(Step step) const { return (steps & step) != 0; }
};

// In the order of the selectors.
constexpr Recipe kRecipes[] = {
    /* 0 cos    */ {&kCos},
    /* 1 cosd   */ {&kCos, kFromDegrees},
    /* 2 cosh   */ {&kCosh},
    /* 3 sin    */ {&kSin},
    /* 4 sind   */ {&kSin, kFromDegrees},
    /* 5 sinh   */ {&kSinh},
    /* 6 tan    */ {&kTan},
    /* 7 tand   */ {&kTan, kFromDegrees},
    /* 8 tanh   */ {&kTanh},
    /* 9 acos   */ {&kAcos, kPlain, Domain::withinOne},
    /* 10 acosd */ {&kAcos, kToDegrees, Domain::withinOne},
    /* 11 acosh */ {&kAcosh, kPlain, Domain::fromOne},
    /* 12 asin  */ {&kAsin, kPlain, Domain::withinOne},
    /* 13 asind */ {&kAsin, kToDegrees, Domain::withinOne},
    /* 14 asinh */ {&kAsinh},
    /* 15 atan  */ {&kAtan},
    /* 16 atand */ {&kAtan, kToDegrees},
    /* 17 atanh */ {&kAtanh, kPlain, Domain::withinOne},
    /* 18 deg2rad */ {nullptr, kFromDegrees},
    /* 19 rad2deg */ {nullptr, kToDegrees},
    /* 20 */ {nullptr, kFromDegrees},  // no name leads to 20 and 21
    /* 21 */ {nullptr, kToDegrees},
    /* 22 csc   */ {&kSin, kReciprocal},
    /* 23 cscd  */ {&kSin, kFromDegrees | kReciprocal},
    /* 24 acsc  */ {&kAsin, kOfReciprocal, Domain::beyondOne},
    /* 25 acscd */ {&kAsin, kOfReciprocal | kToDegrees, Domain::beyondOne},
    /* 26 csch  */ {&kSinh, kReciprocal},
    /* 27 acsch */ {&kAsinh, kOfReciprocal},
    /* 28 sec   */ {&kCos, kReciprocal},
    /* 29 secd  */ {&kCos, kFromDegrees | kReciprocal},
    /* 30 sech  */ {&kCosh, kReciprocal},
    /* 31 asec  */ {&kAcos, kOfReciprocal, Domain::beyondOne},
    /* 32 asecd */ {&kAcos, kOfReciprocal | kToDegrees, Domain::beyondOne},
    /* 33 asech */ {&kAcosh, kOfReciprocal, Domain::unitInterval},
    /* 34 cot   */ {&kTan, kReciprocal},
    /* 35 cotd  */ {&kTan, kFromDegrees | kReciprocal},
    /* 36 acot  */ {&kAtan, kOfReciprocal},
    /* 37 acotd */ {&kAtan, kOfReciprocal | kToDegrees},
    /* 38 coth  */ {&kTanh, kReciprocal},
    /* 39 acoth */ {&kAtanh, kOfReciprocal, Domain::beyondOne},
};
static_assert(std::size(kRecipes) == 40);

void scale(double* y, const double* x, int64_t n, double factor) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) y[i] = x[i] * factor;
}

/// The real path; nothing when an element lies outside the domain, and then `a` is as it was.
std::optional<DoubleArray> realPath(DoubleArray& a, const Recipe& recipe) {
  const auto reciprocal = platform::vectorRoutine(VectorFunction::reciprocal);
  const auto function = recipe.function ? platform::vectorRoutine(recipe.function->real) : nullptr;
  const auto steps = [&](double* y, const double* x, int64_t n) {
    const auto step = [&](auto routine, auto... more) {
      routine(y, x, n, more...);
      x = y;
    };
    if (recipe.has(kFromDegrees)) step(scale, kRadiansPerDegree);
    if (recipe.has(kOfReciprocal)) step(reciprocal);
    if (function) step(function);
    if (recipe.has(kReciprocal)) step(reciprocal);
    if (recipe.has(kToDegrees)) step(scale, kDegreesPerRadian);
  };
  const auto inside = [&](auto outside) { return mapInside(a, outside, steps); };
  switch (recipe.domain) {
    case Domain::everywhere: return mapBlocks(std::move(a), steps);
    case Domain::withinOne: return inside([](double x) { return std::fabs(x) > 1; });
    case Domain::fromOne: return inside([](double x) { return x < 1; });
    case Domain::beyondOne: return inside([](double x) { return std::fabs(x) < 1; });
    case Domain::unitInterval: break;
  }
  return inside([](double x) { return !(x >= 0 && x <= 1); });
}

/// conj(z) / |z|^2: NaN for 0, not Inf. NOTE: intended.
ComplexDouble reciprocalOf(ComplexDouble z) {
  const double h = z.magnitude();
  return {z.real / (h * h), -z.imaginary / (h * h)};
}

ComplexDouble scaled(ComplexDouble z, double factor) { return {z.real * factor, z.imaginary * factor}; }

ComplexDouble evaluate(const Recipe& recipe, ComplexDouble z) {
  if (recipe.has(kFromDegrees)) z = scaled(z, kRadiansPerDegree);
  if (recipe.has(kOfReciprocal)) z = reciprocalOf(z);
  if (recipe.function) z = recipe.function->complex(z);
  if (recipe.has(kReciprocal)) z = reciprocalOf(z);
  if (recipe.has(kToDegrees)) z = scaled(z, kDegreesPerRadian);
  return z;
}

}  // namespace

NodeValue trigonometric(Call& call) {
  const Recipe& recipe = kRecipes[call.builtin.selector];
  NumericArray a = read::takeNumeric(call, 0, {"A", "A", predicate::kNumericArray});
  if (a.is(Kind::Complex)) {
    return unaryLoop(std::move(a).take<ComplexDouble>(), [&](ComplexDouble z) noexcept { return evaluate(recipe, z); });
  }
  DoubleArray x = std::move(a).toDoubleArray();
  if (auto result = realPath(x, recipe)) return std::move(*result);
  return unaryLoop(std::move(x), [&](double re) noexcept { return evaluate(recipe, {re, 0.0}); });
}

}  // namespace kelo::builtins
