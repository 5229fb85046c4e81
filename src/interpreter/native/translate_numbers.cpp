// Operands, operators, comparisons and jumps, exactly as scalars are treated in machine_fast.cpp.
#include "interpreter/native/translator.h"

namespace kelo::native {

namespace x86 = asmjit::x86;
namespace Inst = asmjit::x86::Inst;

namespace {

constexpr uint64_t kSign = uint64_t{1} << 63;

bool isComparison(BinaryOp op) { return op >= BinaryOp::eqeq && op <= BinaryOp::gt; }
bool isLogic(BinaryOp op) { return op == BinaryOp::and_ || op == BinaryOp::or_; }
bool isSum(BinaryOp op) { return op == BinaryOp::plus || op == BinaryOp::minus; }
bool isProduct(BinaryOp op) { return op == BinaryOp::mult || op == BinaryOp::dmult; }
bool isQuotient(BinaryOp op) { return op == BinaryOp::mrdivide || op == BinaryOp::rdivide; }

// Whether two operands meet as real numbers, as integers or as complex numbers, in this order;
// `other`: not at all.
Held meeting(const Type& a, const Type& b) {
  if (a.isReal() && b.isReal()) return Held::real;
  if (a.held == Held::integer && b.held == Held::integer) return Held::integer;
  if ((a.held == Held::integer && b.held == Held::real) || (a.held == Held::real && b.held == Held::integer)) {
    return Held::real;
  }
  const bool isComplexA = a.held == Held::complex, isComplexB = b.held == Held::complex;
  const bool areComplex = (isComplexA || a.isReal()) && (isComplexB || b.isReal());
  return areComplex ? Held::complex : Held::other;
}

// Whether a quotient by x is exactly the product with 1 / x.
bool hasExactReciprocal(double x) {
  int exponent;
  return std::fabs(std::frexp(x, &exponent)) == 0.5 && std::abs(exponent) < 1000;
}

double realPowerOf(double a, double b) noexcept { return realPower(a, b); }

}  // namespace

// ---- Operands

x86::Mem Translator::mask(uint64_t bits) {
  const uint64_t both[] = {bits, 0};
  return cc_.newConst(asmjit::ConstPoolScope::kLocal, both, sizeof both);
}

x86::Xmm Translator::constant(double x) {
  const Xmm result = newReal();
  cc_.vmovsd(result, memory(x));
  return result;
}

// A character beyond ASCII is no number here.
x86::Gp Translator::asWhole(int32_t operand) {
  if (operand >= 0) {
    if (of(operand).held == Held::character) {
      cc_.cmp(whole(operand), 0x80);
      cc_.jae(exit());
    }
    return whole(operand);
  }
  Word word[Layout::kWords];
  pass(constantAt(operand), of(operand), word);
  const Gp constant = newWhole();
  cc_.mov(constant, word->whole);
  return constant;
}

x86::Xmm Translator::asReal(int32_t operand) {
  if (of(operand).held == Held::real) return operand < 0 ? constant(*numberAt(operand)) : real(operand);
  const Xmm x = newReal();
  cc_.vxorpd(x, x, x);
  cc_.vcvtsi2sd(x, x, asWhole(operand));
  return x;
}

asmjit::Operand Translator::asRealOrMemory(int32_t operand) {
  const auto number = numberAt(operand);
  if (number) return memory(*number);
  return asReal(operand);
}

void Translator::asComplex(int32_t operand, Xmm* re, Xmm* im) {
  if (of(operand).held != Held::complex) {
    *re = asReal(operand);
    *im = constant(0);
  } else if (operand >= 0) {
    *re = real(operand);
    *im = real(operand, true);
  } else {
    const ComplexDouble z = constantAt(operand).numeric()->asComplex().scalar();
    *re = constant(z.real);
    *im = constant(z.imaginary);
  }
}

// 1 or 0; NaN is neither.
x86::Gp Translator::asTruth(int32_t operand) {
  const Held held = of(operand).held;
  if (held == Held::logical) return asWhole(operand);
  const Gp truth = newWhole();
  if (held == Held::real) {
    cc_.xor_(truth, truth);
    cc_.vucomisd(asReal(operand), memory(0));
    cc_.jp(exit());
  } else {
    const Gp number = asWhole(operand);
    cc_.xor_(truth, truth);
    cc_.test(number, number);
  }
  cc_.setne(truth.r8());
  return truth;
}

// ---- Moves

bool Translator::copy(int32_t to, int32_t from) {
  Type type = of(from);
  if (type.isScalar()) return define(to, type) && make([&] { move(to, from); });
  if (from < 0) return copyConstant(to, constantAt(from));
  if (!type.isArray()) return false;
  const int32_t array = arrayAt(from);
  type = of(array);
  const bool isUsedUp = isUnit() && isTemporary(array);
  if (isTemporary(to) && !isUsedUp) {  // it may stand for an array without holding it
    return define(to, {.held = Held::alias, .element = type.element, .isMatrix = type.isMatrix,
                       .source = static_cast<int16_t>(array)});
  }
  if (!isUnit()) return false;
  if (!isUsedUp) {
    type.isWritable = false;
    learn(array, type);
  }
  return define(to, type) && make([&] { moveArray(to, words(array)); });
}

// A unit looks at an array that is written in its text where it lies.
bool Translator::copyConstant(int32_t to, const Storable& array) {
  Type type = typeOf(array);
  type.isWritable = false;
  return isUnit() && type.isArray() && define(to, type) && make([&] {
           Word* const words = constants_.emplace_back(std::make_unique<Word[]>(Layout::kWords)).get();
           describe(*array.numeric(), words);
           const Gp place = cc_.newIntPtr();
           cc_.mov(place, reinterpret_cast<uint64_t>(words));
           moveArray(to, place);
         });
}

void Translator::move(int32_t to, int32_t from) {
  switch (of(from).held) {
    case Held::real:
      if (const auto number = numberAt(from)) cc_.vmovsd(real(to), memory(*number));
      else setReal(to, real(from));
      return;
    case Held::complex: {
      Xmm re, im;
      asComplex(from, &re, &im);
      setReal(to, re);
      cc_.vmovapd(real(to, true), im);
      return;
    }
    default: cc_.mov(whole(to), from < 0 ? asWhole(from) : whole(from));
  }
}

void Translator::moveArray(int32_t to, const Gp& from) {
  cc_.mov(words(to), from);
  cc_.mov(data(to), arrayWord(to, Layout::kData));
}

// ---- Operators

bool Translator::binary(const Instruction& i) {
  const auto op = static_cast<BinaryOp>(i.op);
  const Type a = of(i.b), b = of(i.c);
  const Held kind = meeting(a, b);
  if (kind == Held::other) return false;
  if (isComparison(op)) {
    if (kind == Held::complex && op != BinaryOp::eqeq && op != BinaryOp::neq) return false;
    return define(i.a, scalar(Held::logical)) && make([&] { setTruth(i.a, compare(op, i.b, i.c)); });
  }
  if (kind == Held::complex) {
    return (isSum(op) || isProduct(op) || isQuotient(op)) && define(i.a, scalar(Held::complex)) &&
           make([&] { complexArithmetic(op, i); });
  }
  if (kind == Held::integer) {
    return isSum(op) && define(i.a, scalar(Held::integer)) && make([&] {
             onWholes(op == BinaryOp::plus ? Inst::kIdAdd : Inst::kIdSub, i.a, asWhole(i.b), asWhole(i.c));
           });
  }
  if (isLogic(op)) {
    return define(i.a, scalar(Held::logical)) && make([&] {
             onWholes(op == BinaryOp::and_ ? Inst::kIdAnd : Inst::kIdOr, i.a, asTruth(i.b), asTruth(i.c));
           });
  }
  const bool isWhole = (isSum(op) || isProduct(op)) && a.isSurelyWhole() && b.isSurelyWhole();
  return define(i.a, native::real(isWhole)) && make([&] { arithmetic(op, i); });
}

// An overflow, which logic has not, is left to the register code.
void Translator::onWholes(Inst::Id instruction, int32_t reg, const Gp& a, const asmjit::Operand& b) {
  const Gp result = newWhole();
  cc_.mov(result, a);
  cc_.emit(instruction, result, b);
  if (instruction == Inst::kIdAdd || instruction == Inst::kIdSub) cc_.jo(exit());
  cc_.mov(whole(reg), result);
}

void Translator::arithmetic(BinaryOp op, const Instruction& i) {
  const Xmm result = real(i.a);
  switch (op) {
    case BinaryOp::plus: cc_.emit(Inst::kIdVaddsd, result, asReal(i.b), asRealOrMemory(i.c)); return;
    case BinaryOp::minus: cc_.emit(Inst::kIdVsubsd, result, asReal(i.b), asRealOrMemory(i.c)); return;
    case BinaryOp::mult: case BinaryOp::dmult:
      cc_.emit(Inst::kIdVmulsd, result, asReal(i.b), asRealOrMemory(i.c));
      return;
    case BinaryOp::power: case BinaryOp::dpower: return power(i);
    case BinaryOp::ldivide: case BinaryOp::mldivide: return quotient(result, asReal(i.c), i.b);
    default: return quotient(result, asReal(i.b), i.c);
  }
}

void Translator::quotient(const Xmm& result, const Xmm& x, int32_t divisor) {
  const auto number = numberAt(divisor);
  if (number && hasExactReciprocal(*number)) cc_.vmulsd(result, x, memory(1 / *number));
  else cc_.emit(Inst::kIdVdivsd, result, x, asRealOrMemory(divisor));
}

// A negative base with a broken exponent has a complex power.
void Translator::power(const Instruction& i) {
  const Xmm a = asReal(i.b);
  if (numberAt(i.c) == 2) {
    cc_.vmulsd(real(i.a), a, a);
    return;
  }
  const Xmm b = asReal(i.c);
  if (!of(i.c).isSurelyWhole()) {
    const Label isReal = cc_.newLabel();
    const Xmm floor = newReal();
    cc_.vucomisd(constant(0), a);
    cc_.jbe(isReal);  // or unordered
    cc_.vroundsd(floor, b, b, asmjit::Imm(9));
    cc_.vucomisd(floor, b);
    cc_.jp(isReal);
    cc_.jne(exit());
    cc_.bind(isReal);
  }
  const Xmm result = newReal();
  callCpp(&realPowerOf, result, a, b);
  setReal(i.a, result);
}

void Translator::complexArithmetic(BinaryOp op, const Instruction& i) {
  Xmm ar, ai, br, bi;
  asComplex(i.b, &ar, &ai);
  asComplex(i.c, &br, &bi);
  const Xmm re = newReal(), im = newReal(), t = newReal();
  const auto onProducts = [&](Inst::Id sum, const Xmm& to, const Xmm& a, const Xmm& b, const Xmm& c, const Xmm& d) {
    cc_.vmulsd(to, a, b);
    cc_.vmulsd(t, c, d);
    cc_.emit(sum, to, to, t);
  };
  if (isSum(op)) {
    const Inst::Id sum = op == BinaryOp::plus ? Inst::kIdVaddsd : Inst::kIdVsubsd;
    cc_.emit(sum, re, ar, br);
    cc_.emit(sum, im, ai, bi);
  } else if (isProduct(op)) {
    onProducts(Inst::kIdVsubsd, re, ar, br, ai, bi);
    onProducts(Inst::kIdVaddsd, im, ar, bi, ai, br);
  } else {
    const Xmm h = newReal();
    onProducts(Inst::kIdVaddsd, h, br, br, bi, bi);
    onProducts(Inst::kIdVaddsd, re, ar, br, ai, bi);
    onProducts(Inst::kIdVsubsd, im, ai, br, ar, bi);
    cc_.vdivsd(re, re, h);
    cc_.vdivsd(im, im, h);
  }
  setReal(i.a, re);
  cc_.vmovapd(real(i.a, true), im);
}

bool Translator::unary(const Instruction& i) {
  const Type x = of(i.b);
  if (i.op == Op::unaryPlus) return x.isScalar() && copy(i.a, i.b);
  if (i.op == Op::not_) {
    return (x.held == Held::real || x.held == Held::logical) && define(i.a, scalar(Held::logical)) &&
           make([&] { onWholes(Inst::kIdXor, i.a, asTruth(i.b), asmjit::Imm(1)); });
  }
  if (x.held != Held::real && x.held != Held::complex) return false;
  return define(i.a, x) && make([&] {
           Xmm re, im;
           asComplex(i.b, &re, &im);
           cc_.vxorpd(real(i.a), re, mask(kSign));
           if (x.held == Held::complex) cc_.vxorpd(real(i.a, true), im, mask(kSign));
         });
}

// ---- Comparisons

// All bits, or none.
x86::Gp Translator::isEqual(const Xmm& x, const asmjit::Operand& y) {
  const Xmm equal = newReal();
  const Gp bits = newWhole();
  cc_.emit(Inst::kIdVcmpsd, equal, x, y, asmjit::Imm(0));
  cc_.vmovq(bits, equal);
  return bits;
}

// Sets the flags. A comparison with NaN holds only for ~=.
x86::CondCode Translator::compare(BinaryOp op, int32_t left, int32_t right) {
  const Type a = of(left), b = of(right);
  const Held kind = meeting(a, b);
  if (kind == Held::integer || (kind == Held::real && a.held != Held::real && b.held != Held::real)) {
    constexpr Condition kConditions[] = {Condition::kEqual,    Condition::kNotEqual, Condition::kSignedLE,
                                         Condition::kSignedLT, Condition::kSignedGE, Condition::kSignedGT};
    cc_.cmp(asWhole(left), asWhole(right));
    return kConditions[static_cast<int>(op) - static_cast<int>(BinaryOp::eqeq)];
  }
  if (op == BinaryOp::eqeq || op == BinaryOp::neq) {
    Gp equal;
    if (kind == Held::complex) {
      Xmm ar, ai, br, bi;
      asComplex(left, &ar, &ai);
      asComplex(right, &br, &bi);
      equal = isEqual(ar, br);
      cc_.and_(equal, isEqual(ai, bi));
    } else {
      equal = isEqual(asReal(left), asRealOrMemory(right));
    }
    cc_.test(equal, equal);
    return op == BinaryOp::eqeq ? Condition::kNotZero : Condition::kZero;
  }
  const bool isExchanged = op == BinaryOp::lt || op == BinaryOp::le;
  const Xmm x = asReal(isExchanged ? right : left);
  cc_.emit(Inst::kIdVucomisd, x, asRealOrMemory(isExchanged ? left : right));
  return op == BinaryOp::lt || op == BinaryOp::gt ? Condition::kUnsignedGT : Condition::kUnsignedGE;
}

// A move leaves the flags alone.
void Translator::setTruth(int32_t reg, Condition condition) {
  cc_.mov(whole(reg), 0);
  cc_.set(condition, whole(reg).r8());
}

// ---- Jumps

bool Translator::jump(const Instruction& i) {
  return make([&] { jumpTo(i); });
}

bool Translator::jumpOnTruth(const Instruction& i) {
  return of(i.b).isNumber() && make([&] {
           const Gp truth = asTruth(i.b);
           cc_.test(truth, truth);
           jumpOn(i, i.flag ? Condition::kNotZero : Condition::kZero);
         });
}

bool Translator::jumpOnComparison(const Instruction& i) {
  const Held kind = meeting(of(i.b), of(i.c));
  return (kind == Held::real || kind == Held::integer) && make([&] {
           const bool isCase = i.op == Op::caseJump;
           const int which = isCase ? 0 : static_cast<int>(i.op) - static_cast<int>(Op::jumpOnEqual);
           const Condition holds = compare(static_cast<BinaryOp>(static_cast<int>(BinaryOp::eqeq) + which), i.b, i.c);
           jumpOn(i, !isCase && i.flag ? holds : x86::negateCond(holds));
         });
}

}  // namespace kelo::native
