// Built-in functions of scalars, as quick_calls.cpp and the rows of the built-ins compute them, and
// questions about sizes.
#include <limits>
#include <numbers>
#include <string_view>

#include "interpreter/native/translator.h"
#include "platform/vector_math.h"

namespace kelo::native {

namespace x86 = asmjit::x86;
using platform::VectorFunction;

namespace {

constexpr uint64_t kMagnitude = ~(uint64_t{1} << 63);
constexpr double kBelowHalf = 0.49999999999999994;  // added before truncation, rounds halves away from zero

enum Rounding { kFloor = 9, kCeil = 10, kFix = 11 };  // immediate operands of the instruction

// In the order of QuickCall, from acos on.
constexpr VectorFunction kRoutines[] = {
    VectorFunction::acos,  VectorFunction::asin, VectorFunction::atan, VectorFunction::cos, VectorFunction::cosh,
    VectorFunction::exp,   VectorFunction::log,  VectorFunction::log10, VectorFunction::log2, VectorFunction::sin,
    VectorFunction::sinh,  VectorFunction::tan,  VectorFunction::tanh,
};
static_assert(static_cast<int>(QuickCall::tanh) - static_cast<int>(QuickCall::acos) + 1 == std::size(kRoutines));

// As the built-in has it computed: by a routine for arrays.
double byRoutine(platform::VectorRoutine routine, double x) noexcept {
  routine(&x, &x, 1);
  return x;
}

// Those that native code computes without a call of their row, for scalars, beside those of
// quick_calls.h.
enum class Form : uint8_t { constant, complex, realPart, imaginaryPart, isNaN };
struct Intrinsic {
  const char* name;
  int32_t arguments;
  Form form;
  Held result;
  double value = 0;
};
using Limits = std::numeric_limits<double>;

constexpr Intrinsic kIntrinsics[] = {
    {"true", 0, Form::constant, Held::logical, 1},
    {"false", 0, Form::constant, Held::logical, 0},
    {"pi", 0, Form::constant, Held::real, std::numbers::pi},
    {"eps", 0, Form::constant, Held::real, Limits::epsilon()},
    {"inf", 0, Form::constant, Held::real, Limits::infinity()},
    {"Inf", 0, Form::constant, Held::real, Limits::infinity()},
    {"nan", 0, Form::constant, Held::real, Limits::quiet_NaN()},
    {"NaN", 0, Form::constant, Held::real, Limits::quiet_NaN()},
    {"complex", 2, Form::complex, Held::complex},
    {"real", 1, Form::realPart, Held::real},
    {"imag", 1, Form::imaginaryPart, Held::real},
    {"isnan", 1, Form::isNaN, Held::logical},
};

// Null: it is none.
const Intrinsic* intrinsicOf(const Site& site) {
  if (site.row == nullptr || site.outputs > 1) return nullptr;
  for (const Intrinsic& each : kIntrinsics) {
    if (each.arguments == site.count && std::string_view(each.name) == site.row->name) return &each;
  }
  return nullptr;
}

bool isRounding(QuickCall f) {
  return f == QuickCall::ceil || f == QuickCall::fix || f == QuickCall::floor || f == QuickCall::round;
}

// Whether it gives whole numbers for such.
bool keepsWhole(QuickCall f) {
  return f == QuickCall::abs || (f >= QuickCall::max && f <= QuickCall::rem);
}

}  // namespace

bool Translator::quickCall(const Instruction& i) {
  const auto function = static_cast<QuickCall>(i.e);
  const Type x = of(i.b), y = of(i.c);
  switch (function) {
    case QuickCall::isempty: case QuickCall::numel: case QuickCall::length: case QuickCall::size:
      return sizeQuery(i, function);
    case QuickCall::toDouble:
      return (x.isReal() || x.held == Held::integer) && define(i.a, native::real(x.isSurelyWhole())) &&
             make([&] { setReal(i.a, asReal(i.b)); });
    case QuickCall::toChar:
      return x.held == Held::real && define(i.a, scalar(Held::character)) && make([&] {
               const Gp code = newWhole();
               cc_.vcvttsd2si(code, asReal(i.b));
               cc_.cmp(code, 0x80);
               cc_.jae(exit());
               cc_.mov(whole(i.a), code);
             });
    case QuickCall::lower: case QuickCall::upper:
      return x.held == Held::character && define(i.a, scalar(Held::character)) &&
             make([&] { changeCase(i, function == QuickCall::upper); });
    case QuickCall::exclusiveOr:
      return x.isNumber() && y.isNumber() && define(i.a, scalar(Held::logical)) &&
             make([&] { onWholes(x86::Inst::kIdXor, i.a, asTruth(i.b), asTruth(i.c)); });
    case QuickCall::ndims: return false;
    default: break;
  }
  const bool isComplexAbs = function == QuickCall::abs && x.held == Held::complex;
  if (!isComplexAbs && !(x.isNumber() && y.isNumber())) return false;
  const bool areWhole = !isComplexAbs && x.isSurelyWhole() && y.isSurelyWhole();
  return define(i.a, native::real(isRounding(function) || (keepsWhole(function) && areWhole))) &&
         make([&] { realFunction(i, function); });
}

// Of an ASCII character.
void Translator::changeCase(const Instruction& i, bool toUpper) {
  const Gp character = newWhole(), letter = newWhole();
  const Label isOther = cc_.newLabel();
  cc_.mov(character, asWhole(i.b));
  cc_.lea(letter, x86::ptr(character, toUpper ? -'a' : -'A'));
  cc_.cmp(letter, 26);
  cc_.jae(isOther);
  cc_.xor_(character, 0x20);
  cc_.bind(isOther);
  cc_.mov(whole(i.a), character);
}

x86::Xmm Translator::magnitude(const Xmm& x) {
  const Xmm result = newReal();
  cc_.vandpd(result, x, mask(kMagnitude));
  return result;
}

void Translator::realFunction(const Instruction& i, QuickCall function) {
  const Xmm result = real(i.a);
  if (of(i.b).held == Held::complex) {  // abs
    const Xmm square = newReal(), other = newReal();
    Xmm re, im;
    asComplex(i.b, &re, &im);
    cc_.vmulsd(square, re, re);
    cc_.vmulsd(other, im, im);
    cc_.vaddsd(square, square, other);
    cc_.vsqrtsd(result, square, square);
    return;
  }
  if (function == QuickCall::mod || function == QuickCall::rem) return remainder(i, function == QuickCall::mod);
  const Xmm x = asReal(i.b);
  const auto round = [&](const Xmm& number, Rounding mode) {
    cc_.vroundsd(result, number, number, asmjit::Imm(mode));
  };
  switch (function) {
    case QuickCall::abs: return setReal(i.a, magnitude(x));
    case QuickCall::ceil: return round(x, kCeil);
    case QuickCall::fix: return round(x, kFix);
    case QuickCall::floor: return round(x, kFloor);
    case QuickCall::round: {
      const Xmm most = newReal();
      cc_.vxorpd(most, x, magnitude(x));  // its sign
      cc_.vorpd(most, most, constant(kBelowHalf));
      cc_.vaddsd(most, most, x);
      return round(most, kFix);
    }
    case QuickCall::max: case QuickCall::min: {  // the second operand, unless the first is greater (or less)
      const Xmm y = asReal(i.c);
      cc_.vucomisd(x, y);
      cc_.jp(exit());
      cc_.emit(function == QuickCall::max ? x86::Inst::kIdVmaxsd : x86::Inst::kIdVminsd, result, y, x);
      return;
    }
    case QuickCall::sqrt:
      cc_.vucomisd(x, memory(0));
      cc_.jb(exit());  // or unordered
      cc_.vsqrtsd(result, x, x);
      return;
    default: return routine(i, function);
  }
}

// x - y * floor(x / y), or with fix. mod(x, 0) is x; rem(x, 0) is left to the register code.
void Translator::remainder(const Instruction& i, bool isMod) {
  const Xmm x = asReal(i.b), y = asReal(i.c), result = newReal(), q = newReal();
  const Label done = cc_.newLabel();
  if (numberAt(i.c).value_or(0) == 0) {
    const Gp isZero = isEqual(y, memory(0));
    cc_.vmovapd(result, x);
    cc_.test(isZero, isZero);
    cc_.jnz(isMod ? done : exit());
  }
  quotient(q, x, i.c);
  cc_.vroundsd(q, q, q, asmjit::Imm(isMod ? kFloor : kFix));
  cc_.vmulsd(q, y, q);
  cc_.vsubsd(result, x, q);
  cc_.bind(done);
  setReal(i.a, result);
}

// Outside of the domain the result is complex.
void Translator::routine(const Instruction& i, QuickCall function) {
  const Xmm x = asReal(i.b), result = newReal();
  if (function == QuickCall::log) {
    cc_.vucomisd(constant(0), x);
    cc_.ja(exit());
  } else if (function == QuickCall::acos || function == QuickCall::asin) {
    cc_.vucomisd(magnitude(x), memory(1));
    cc_.ja(exit());
  }
  const Gp address = cc_.newIntPtr();
  const auto which = kRoutines[static_cast<int>(function) - static_cast<int>(QuickCall::acos)];
  cc_.mov(address, reinterpret_cast<uint64_t>(platform::vectorRoutine(which)));
  callCpp(&byRoutine, result, address, x);
  setReal(i.a, result);
}

// ---- Sizes

// Of a size only its two lengths are asked here.
bool Translator::sizeQuery(const Instruction& i, QuickCall function) {
  const Type x = of(i.b);
  const bool asksLengths = function == QuickCall::length || function == QuickCall::size;
  if (!x.isScalar() && !(x.isArray() && (x.isMatrix || !asksLengths))) return false;
  const double dimension = function == QuickCall::size ? numberAt(i.c).value_or(0) : 1;
  if (dimension != 1 && dimension != 2) return false;
  if (!define(i.a, scalar(function == QuickCall::isempty ? Held::logical : Held::integer))) return false;
  return make([&] {
    const Gp length = newWhole();
    if (x.isScalar()) cc_.mov(length, function == QuickCall::isempty ? 0 : 1);
    else lengthOf(arrayAt(i.b), function, dimension == 1, length);
    cc_.mov(whole(i.a), length);
  });
}

void Translator::lengthOf(int32_t array, QuickCall function, bool isRows, const Gp& length) {
  if (function == QuickCall::size) {
    cc_.mov(length, arrayWord(array, isRows ? Layout::kRows : Layout::kColumns));
    return;
  }
  const Gp other = newWhole();
  if (function == QuickCall::numel) {
    cc_.mov(length, arrayWord(array, Layout::kCount));
  } else if (function == QuickCall::isempty) {
    cc_.xor_(length, length);
    cc_.cmp(arrayWord(array, Layout::kCount), 0);
    cc_.sete(length.r8());
  } else {
    cc_.mov(length, arrayWord(array, Layout::kRows));
    cc_.mov(other, arrayWord(array, Layout::kColumns));
    cc_.cmp(length, other);
    cc_.cmovl(length, other);
    cc_.xor_(other, other);
    cc_.cmp(arrayWord(array, Layout::kCount), 0);
    cc_.cmove(length, other);
  }
}

// zeros(m, n) or ones(m, n) in a unit.
bool Translator::filled(const Instruction& i) {
  if (!isUnit() || !of(i.b).isNumber() || !of(i.c).isNumber()) return false;
  makesArrays_ = true;
  return define(i.a, {.held = Held::array, .isMatrix = true, .isWritable = true}) && make([&] {
           const Gp made = cc_.newIntPtr();
           const bool areOnes = static_cast<QuickCall>(i.e) == QuickCall::ones;
           callCpp(&makeArray, made, cells_, asReal(i.b), asReal(i.c), constant(areOnes ? 1 : 0));
           cc_.test(made, made);
           cc_.jz(exit());
           moveArray(i.a, made);
         });
}

// ---- Others

bool Translator::isIntrinsic(const Site& site) { return intrinsicOf(site) != nullptr; }

bool Translator::builtin(const Instruction& i) {
  const Site& site = siteOf(i);
  const Intrinsic& intrinsic = *intrinsicOf(site);
  const int32_t x = site.first;
  const Held held = site.count > 0 ? of(x).held : Held::other;
  switch (intrinsic.form) {
    case Form::constant: break;
    case Form::complex:
      if (!of(x).isNumber() || !of(x + 1).isNumber()) return false;
      break;
    case Form::realPart: case Form::imaginaryPart:
      if (held != Held::complex) return false;
      break;
    case Form::isNaN:
      if (held != Held::real) return false;
  }
  return define(i.a, scalar(intrinsic.result)) && make([&] {
           switch (intrinsic.form) {
             case Form::constant:
               if (intrinsic.result == Held::real) cc_.vmovsd(real(i.a), memory(intrinsic.value));
               else cc_.mov(whole(i.a), intrinsic.value != 0 ? 1 : 0);
               return;
             case Form::complex: {
               const Xmm re = asReal(x), im = asReal(x + 1);
               cc_.vmovapd(real(i.a, true), im);
               return setReal(i.a, re);
             }
             case Form::realPart: return setReal(i.a, real(x));
             case Form::imaginaryPart: return setReal(i.a, real(x, true));
             case Form::isNaN: {
               const Gp isNumber = isEqual(real(x), real(x));
               cc_.test(isNumber, isNumber);
               return setTruth(i.a, Condition::kZero);
             }
           }
         });
}

}  // namespace kelo::native
