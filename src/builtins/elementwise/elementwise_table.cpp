// The table of element-wise mathematics. Selectors are positions in the tables of the handlers.
#include "builtins/elementwise/handlers.h"
#include "builtins/library.h"
#include "messages/catalogue/elementwise.h"

namespace kelo::builtins {
namespace {

constexpr CountTexts kExactlyOne = {text::kOneInputExactly, nullptr};
constexpr CountTexts kNoInput = {text::kNoInput, nullptr};

constexpr Builtin trig(const char* name, int selector, const char* help, const char* example) {
  return {name, trigonometric, selector, {1, 1}, 1, "A", help, example};
}
constexpr Builtin unary(const char* name, Handler handler, int selector, const char* help, const char* example) {
  return {name, handler, selector, {1, 1}, 1, "A", help, example};
}
constexpr Builtin part(const char* name, ComplexPart selector, const char* help, const char* example) {
  return {name, complexParts, static_cast<int>(selector), {1, 1}, 1, "A", help, example, &kExactlyOne};
}
constexpr Builtin oneOrTwo(const char* name, Handler handler, const char* help, const char* example) {
  return {name, handler, 0, {1, 2}, 1, "A, B", help, example};
}
template <class Selector>
constexpr Builtin binary(const char* name, Handler handler, Selector selector, const char* arguments, const char* help,
                         const char* example) {
  return {name, handler, static_cast<int>(selector), {2, 2}, 1, arguments, help, example};
}

constexpr Builtin kElementwise[] = {
    trig("cos", 0, "Cosine of an angle in radians", "cos([0 pi/3 pi])"),
    trig("cosd", 1, "Cosine of an angle in degrees", "cosd([0 60 180])"),
    trig("cosh", 2, "Hyperbolic cosine", "cosh([-1 0 1])"),
    trig("sin", 3, "Sine of an angle in radians", "sin([0 pi/6 pi/2])"),
    trig("sind", 4, "Sine of an angle in degrees", "sind([0 30 90])"),
    trig("sinh", 5, "Hyperbolic sine", "sinh([-1 0 1])"),
    trig("tan", 6, "Tangent of an angle in radians", "tan([0 pi/4])"),
    trig("tand", 7, "Tangent of an angle in degrees", "tand([0 45])"),
    trig("tanh", 8, "Hyperbolic tangent", "tanh([-1 0 1])"),
    trig("acos", 9, "Angle in radians with the given cosine", "acos([1 0.5 -1])"),
    trig("acosd", 10, "Angle in degrees with the given cosine", "acosd([1 0.5 -1])"),
    trig("acosh", 11, "Inverse hyperbolic cosine", "acosh([1 2 3])"),
    trig("asin", 12, "Angle in radians with the given sine", "asin([0 0.5 1])"),
    trig("asind", 13, "Angle in degrees with the given sine", "asind([0 0.5 1])"),
    trig("asinh", 14, "Inverse hyperbolic sine", "asinh([-1 0 1])"),
    trig("atan", 15, "Angle in radians with the given tangent", "atan([0 1 Inf])"),
    trig("atand", 16, "Angle in degrees with the given tangent", "atand([0 1 Inf])"),
    trig("atanh", 17, "Inverse hyperbolic tangent", "atanh([-0.5 0 0.5])"),
    trig("deg2rad", 18, "Converts degrees to radians", "deg2rad(180)"),
    trig("degtorad", 18, "Converts degrees to radians", "degtorad(180)"),
    trig("rad2deg", 19, "Converts radians to degrees", "rad2deg(pi)"),
    trig("radtodeg", 19, "Converts radians to degrees", "radtodeg(pi)"),
    trig("csc", 22, "Cosecant of an angle in radians", "csc([pi/6 pi/2])"),
    trig("cscd", 23, "Cosecant of an angle in degrees", "cscd([30 90])"),
    trig("acsc", 24, "Angle in radians with the given cosecant", "acsc([1 2])"),
    trig("acscd", 25, "Angle in degrees with the given cosecant", "acscd([1 2])"),
    trig("csch", 26, "Hyperbolic cosecant", "csch([1 2])"),
    trig("acsch", 27, "Inverse hyperbolic cosecant", "acsch([1 2])"),
    trig("sec", 28, "Secant of an angle in radians", "sec([0 pi/3])"),
    trig("secd", 29, "Secant of an angle in degrees", "secd([0 60])"),
    trig("sech", 30, "Hyperbolic secant", "sech([0 1])"),
    trig("asec", 31, "Angle in radians with the given secant", "asec([1 2])"),
    trig("asecd", 32, "Angle in degrees with the given secant", "asecd([1 2])"),
    trig("asech", 33, "Inverse hyperbolic secant", "asech([0.5 1])"),
    trig("cot", 34, "Cotangent of an angle in radians", "cot([pi/4 pi/3])"),
    trig("cotd", 35, "Cotangent of an angle in degrees", "cotd([45 60])"),
    trig("acot", 36, "Angle in radians with the given cotangent", "acot([1 2])"),
    trig("acotd", 37, "Angle in degrees with the given cotangent", "acotd([1 2])"),
    trig("coth", 38, "Hyperbolic cotangent", "coth([1 2])"),
    trig("acoth", 39, "Inverse hyperbolic cotangent", "acoth([2 3])"),

    oneOrTwo("complex", makeComplex, "Makes a complex array from real and imaginary parts", "complex([1 2], [3 4])"),
    part("abs", ComplexPart::abs, "Absolute value, or magnitude of a complex number", "abs([-2 3+4i])"),
    part("sign", ComplexPart::sign, "Sign: 1, 0 or -1, or the direction of a complex number", "sign([-2 0 5])"),
    part("angle", ComplexPart::angle, "Angle in radians of a complex number", "angle([1 -1 1i])"),
    part("conj", ComplexPart::conj, "Complex conjugate", "conj(1+2i)"),
    part("real", ComplexPart::real, "Real part", "real(1+2i)"),
    part("imag", ComplexPart::imag, "Imaginary part", "imag(1+2i)"),

    unary("exp", exponential, 0, "Exponential, e to the power A", "exp([0 1 2])"),
    unary("log2", exponential, 1, "Logarithm to the base 2", "log2([1 2 8])"),
    unary("log10", exponential, 2, "Logarithm to the base 10", "log10([1 10 1000])"),
    unary("log", exponential, 3, "Natural logarithm, complex for negative numbers", "log([1 exp(1)])"),
    unary("reallog", exponential, 4, "Natural logarithm of non-negative numbers", "reallog([1 exp(1)])"),
    unary("sqrt", exponential, 5, "Square root, complex for negative numbers", "sqrt([4 9])"),
    unary("realsqrt", exponential, 6, "Square root of non-negative numbers", "realsqrt([4 9])"),

    unary("ceil", rounding, 0, "Rounds towards plus infinity", "ceil([-1.5 1.5])"),
    unary("fix", rounding, 1, "Rounds towards zero", "fix([-1.5 1.5])"),
    unary("floor", rounding, 2, "Rounds towards minus infinity", "floor([-1.5 1.5])"),
    unary("round", rounding, 3, "Rounds to the nearest whole number, halves away from zero", "round([-1.5 1.4])"),

    binary("rem", remainders, Remainder::rem, "A, B", "Remainder of a division, with the sign of A", "rem([-5 5], 3)"),
    binary("mod", remainders, Remainder::mod, "A, B", "Remainder of a division, with the sign of B", "mod([-5 5], 3)"),
    unary("factorial", factorial, 0, "Product of the whole numbers from 1 to A", "factorial([0 5 10])"),
    unary("fibonacci", fibonacci, 0, "Number A of the sequence 0, 1, 1, 2, 3, 5 and so on", "fibonacci([0 1 10])"),

    {"pi", pi, 0, {0, 0}, 1, "", "Ratio of a circle's circumference to its diameter", "pi", &kNoInput},
    {"eps", eps, 0, {0, 1}, 1, "A", "Gap between a number, 1 unless given, and the next larger one", "eps(1000)"},

    binary("times", product, Product::times, "A, B", "Element-wise product, as A .* B", "times([1 2], [3 4])"),
    binary("mtimes", product, Product::mtimes, "A, B", "Product of matrices, as A * B", "mtimes([1 2], [3; 4])"),
    binary("rdivide", division, Division::rdivide, "A, B", "Element-wise quotient, as A ./ B", "rdivide([1 4], 2)"),
    binary("ldivide", division, Division::ldivide, "A, B", "Element-wise quotient, as A .\\ B", "ldivide(2, [1 4])"),
    binary("mrdivide", division, Division::mrdivide, "b, A", "Solves x * A = b, as b / A",
           "mrdivide([4 6], [2 0; 0 3])"),
    binary("mldivide", division, Division::mldivide, "A, b", "Solves A * x = b, as A \\ b",
           "mldivide([2 0; 0 3], [4; 6])"),
    binary("power", power, Power::power, "A, B", "Element-wise power, as A .^ B", "power([1 2 3], 2)"),
    binary("mpower", power, Power::mpower, "A, b", "Power of a square matrix, as A ^ b", "mpower([1 1; 1 0], 10)"),
    binary("realpow", power, Power::realpow, "A, B", "Element-wise power with real results only",
           "realpow([1 2 3], 2)"),

    binary("and", logic, Logic::and_, "A, B", "Element-wise logical and, as A & B", "and([1 0], [1 1])"),
    binary("or", logic, Logic::or_, "A, B", "Element-wise logical or, as A | B", "or([1 0], [0 0])"),
    binary("xor", logic, Logic::xor_, "A, B", "Whether exactly one of two elements is true", "xor([1 0], [1 1])"),
    unary("not", logic, static_cast<int>(Logic::not_), "Element-wise logical not, as ~A", "not([1 0])"),
    binary("eq", logic, Logic::eq, "A, B", "Whether elements are equal, as A == B", "eq([1 2], [1 3])"),
    binary("ne", logic, Logic::ne, "A, B", "Whether elements are unequal, as A ~= B", "ne([1 2], [1 3])"),
    binary("lt", logic, Logic::lt, "A, B", "Whether elements are less, as A < B", "lt([1 2], 2)"),
    binary("le", logic, Logic::le, "A, B", "Whether elements are less or equal, as A <= B", "le([1 2], 1)"),
    binary("gt", logic, Logic::gt, "A, B", "Whether elements are greater, as A > B", "gt([1 2], 1)"),
    binary("ge", logic, Logic::ge, "A, B", "Whether elements are greater or equal, as A >= B", "ge([1 2], 2)"),
};

}  // namespace

std::span<const Builtin> elementwiseTable() { return kElementwise; }

}  // namespace kelo::builtins
