// The trigonometric family: one handler and a recipe per function, which its row names.
//
// A recipe is one of twelve functions with steps before and after it: degrees to radians, the
// reciprocal of the argument, the function, the reciprocal of the result, radians to degrees.
// Degrees are plain products, so cosd(90) is not exactly 0. NOTE: intended. A real array stays real
// unless one element lies outside the function's real domain; then all of it is complex.
#include "builtins/elementwise/kernels.h"
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "platform/vector_math.h"

namespace kelo::builtins {
namespace {

using platform::VectorFunction;
using C = std::complex<double>;

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;

enum Step : unsigned { kPlain = 0, kFromDegrees = 1, kOfReciprocal = 2, kReciprocal = 4, kToDegrees = 8 };

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
  unsigned steps;
  Domain domain;
  bool has(Step step) const { return (steps & step) != 0; }
};

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
  return mapInside(a, recipe.domain, steps);
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

NodeValue applied(const Recipe& recipe, Call& call) {
  NumericArray a = read::takeNumeric(call, 0, {"A", "A", predicate::kNumericArray});
  if (a.is(Kind::Complex)) {
    return unaryLoop(std::move(a).take<ComplexDouble>(), [&](ComplexDouble z) noexcept { return evaluate(recipe, z); });
  }
  DoubleArray x = std::move(a).toDoubleArray();
  if (auto result = realPath(x, recipe)) return std::move(*result);
  return unaryLoop(std::move(x), [&](double re) noexcept { return evaluate(recipe, {re, 0.0}); });
}

template <const Function* kFunction, unsigned kSteps = kPlain, Domain kDomain = Domain::everywhere>
NodeValue trigonometric(Call& call) {
  return applied({kFunction, kSteps, kDomain}, call);
}

// clang-format off
constexpr Builtin kTrigonometry[] = {
    {"cos",      trigonometric<&kCos>,                                                 {1, 1}, 1, "A",
     "Cosine of an angle in radians", "cos([0 pi/3 pi])"},
    {"cosd",     trigonometric<&kCos, kFromDegrees>,                                   {1, 1}, 1, "A",
     "Cosine of an angle in degrees", "cosd([0 60 180])"},
    {"cosh",     trigonometric<&kCosh>,                                                {1, 1}, 1, "A",
     "Hyperbolic cosine", "cosh([-1 0 1])"},
    {"sin",      trigonometric<&kSin>,                                                 {1, 1}, 1, "A",
     "Sine of an angle in radians", "sin([0 pi/6 pi/2])"},
    {"sind",     trigonometric<&kSin, kFromDegrees>,                                   {1, 1}, 1, "A",
     "Sine of an angle in degrees", "sind([0 30 90])"},
    {"sinh",     trigonometric<&kSinh>,                                                {1, 1}, 1, "A",
     "Hyperbolic sine", "sinh([-1 0 1])"},
    {"tan",      trigonometric<&kTan>,                                                 {1, 1}, 1, "A",
     "Tangent of an angle in radians", "tan([0 pi/4])"},
    {"tand",     trigonometric<&kTan, kFromDegrees>,                                   {1, 1}, 1, "A",
     "Tangent of an angle in degrees", "tand([0 45])"},
    {"tanh",     trigonometric<&kTanh>,                                                {1, 1}, 1, "A",
     "Hyperbolic tangent", "tanh([-1 0 1])"},
    {"acos",     trigonometric<&kAcos, kPlain, Domain::withinOne>,                     {1, 1}, 1, "A",
     "Angle in radians with the given cosine", "acos([1 0.5 -1])"},
    {"acosd",    trigonometric<&kAcos, kToDegrees, Domain::withinOne>,                 {1, 1}, 1, "A",
     "Angle in degrees with the given cosine", "acosd([1 0.5 -1])"},
    {"acosh",    trigonometric<&kAcosh, kPlain, Domain::fromOne>,                      {1, 1}, 1, "A",
     "Inverse hyperbolic cosine", "acosh([1 2 3])"},
    {"asin",     trigonometric<&kAsin, kPlain, Domain::withinOne>,                     {1, 1}, 1, "A",
     "Angle in radians with the given sine", "asin([0 0.5 1])"},
    {"asind",    trigonometric<&kAsin, kToDegrees, Domain::withinOne>,                 {1, 1}, 1, "A",
     "Angle in degrees with the given sine", "asind([0 0.5 1])"},
    {"asinh",    trigonometric<&kAsinh>,                                               {1, 1}, 1, "A",
     "Inverse hyperbolic sine", "asinh([-1 0 1])"},
    {"atan",     trigonometric<&kAtan>,                                                {1, 1}, 1, "A",
     "Angle in radians with the given tangent", "atan([0 1 Inf])"},
    {"atand",    trigonometric<&kAtan, kToDegrees>,                                    {1, 1}, 1, "A",
     "Angle in degrees with the given tangent", "atand([0 1 Inf])"},
    {"atanh",    trigonometric<&kAtanh, kPlain, Domain::withinOne>,                    {1, 1}, 1, "A",
     "Inverse hyperbolic tangent", "atanh([-0.5 0 0.5])"},
    {"deg2rad",  trigonometric<nullptr, kFromDegrees>,                                 {1, 1}, 1, "A",
     "Converts degrees to radians", "deg2rad(180)"},
    {"degtorad", trigonometric<nullptr, kFromDegrees>,                                 {1, 1}, 1, "A",
     "Converts degrees to radians", "degtorad(180)"},
    {"rad2deg",  trigonometric<nullptr, kToDegrees>,                                   {1, 1}, 1, "A",
     "Converts radians to degrees", "rad2deg(pi)"},
    {"radtodeg", trigonometric<nullptr, kToDegrees>,                                   {1, 1}, 1, "A",
     "Converts radians to degrees", "radtodeg(pi)"},
    {"csc",      trigonometric<&kSin, kReciprocal>,                                    {1, 1}, 1, "A",
     "Cosecant of an angle in radians", "csc([pi/6 pi/2])"},
    {"cscd",     trigonometric<&kSin, kFromDegrees | kReciprocal>,                     {1, 1}, 1, "A",
     "Cosecant of an angle in degrees", "cscd([30 90])"},
    {"acsc",     trigonometric<&kAsin, kOfReciprocal, Domain::beyondOne>,              {1, 1}, 1, "A",
     "Angle in radians with the given cosecant", "acsc([1 2])"},
    {"acscd",    trigonometric<&kAsin, kOfReciprocal | kToDegrees, Domain::beyondOne>, {1, 1}, 1, "A",
     "Angle in degrees with the given cosecant", "acscd([1 2])"},
    {"csch",     trigonometric<&kSinh, kReciprocal>,                                   {1, 1}, 1, "A",
     "Hyperbolic cosecant", "csch([1 2])"},
    {"acsch",    trigonometric<&kAsinh, kOfReciprocal>,                                {1, 1}, 1, "A",
     "Inverse hyperbolic cosecant", "acsch([1 2])"},
    {"sec",      trigonometric<&kCos, kReciprocal>,                                    {1, 1}, 1, "A",
     "Secant of an angle in radians", "sec([0 pi/3])"},
    {"secd",     trigonometric<&kCos, kFromDegrees | kReciprocal>,                     {1, 1}, 1, "A",
     "Secant of an angle in degrees", "secd([0 60])"},
    {"sech",     trigonometric<&kCosh, kReciprocal>,                                   {1, 1}, 1, "A",
     "Hyperbolic secant", "sech([0 1])"},
    {"asec",     trigonometric<&kAcos, kOfReciprocal, Domain::beyondOne>,              {1, 1}, 1, "A",
     "Angle in radians with the given secant", "asec([1 2])"},
    {"asecd",    trigonometric<&kAcos, kOfReciprocal | kToDegrees, Domain::beyondOne>, {1, 1}, 1, "A",
     "Angle in degrees with the given secant", "asecd([1 2])"},
    {"asech",    trigonometric<&kAcosh, kOfReciprocal, Domain::unitInterval>,          {1, 1}, 1, "A",
     "Inverse hyperbolic secant", "asech([0.5 1])"},
    {"cot",      trigonometric<&kTan, kReciprocal>,                                    {1, 1}, 1, "A",
     "Cotangent of an angle in radians", "cot([pi/4 pi/3])"},
    {"cotd",     trigonometric<&kTan, kFromDegrees | kReciprocal>,                     {1, 1}, 1, "A",
     "Cotangent of an angle in degrees", "cotd([45 60])"},
    {"acot",     trigonometric<&kAtan, kOfReciprocal>,                                 {1, 1}, 1, "A",
     "Angle in radians with the given cotangent", "acot([1 2])"},
    {"acotd",    trigonometric<&kAtan, kOfReciprocal | kToDegrees>,                    {1, 1}, 1, "A",
     "Angle in degrees with the given cotangent", "acotd([1 2])"},
    {"coth",     trigonometric<&kTanh, kReciprocal>,                                   {1, 1}, 1, "A",
     "Hyperbolic cotangent", "coth([1 2])"},
    {"acoth",    trigonometric<&kAtanh, kOfReciprocal, Domain::beyondOne>,             {1, 1}, 1, "A",
     "Inverse hyperbolic cotangent", "acoth([2 3])"},
};
// clang-format on

}  // namespace

std::span<const Builtin> trigonometryTable() { return kTrigonometry; }

}  // namespace kelo::builtins
