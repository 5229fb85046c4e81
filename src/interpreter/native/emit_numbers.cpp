// Operands, arithmetic and comparisons, exactly as scalars are treated in machine_fast.cpp.
#include <cmath>

#include "interpreter/native/emitter.h"
#include "interpreter/native/typing.h"

namespace kelo::native {

namespace x86 = asmjit::x86;
using x86::CondCode;

namespace {

bool isComparison(BinaryOp op) { return op >= BinaryOp::eqeq && op <= BinaryOp::gt; }

double realPowerOf(double a, double b) noexcept { return realPower(a, b); }

}  // namespace

bool hasExactReciprocal(double x) {
  int exponent;
  return std::fabs(std::frexp(x, &exponent)) == 0.5 && std::abs(exponent) < 1000;
}

// ---- Operands

x86::Xmm Emitter::constant(double x) {
  const Xmm result = newReal("constant");
  cc_.vmovsd(result, constantMemory(x));
  return result;
}

// A character beyond ASCII is no number here.
void Emitter::checkPlain(int32_t operand, const Gp& word) {
  const Type type = typeOf(operand);
  if (type.held != Held::character || type.isPlain) return;
  cc_.cmp(word, 0x80);
  cc_.jae(exit());
}

x86::Gp Emitter::asWord(int32_t operand) {
  if (operand >= 0) {
    const Gp word = wordOf(operand);
    checkPlain(operand, word);
    return word;
  }
  const NumericArray& scalar = *constantAt(operand).numeric();
  const Gp word = cc_.newUInt32();
  cc_.mov(word, scalar.is(Kind::Char) ? scalar.asChar().scalar().word() : uint32_t{scalar.asLogical().scalar()});
  return word;
}

x86::Gp Emitter::asWhole(int32_t operand) {
  if (operand >= 0) return wholeLane(graph_.laneOf(operand));
  const Gp whole = cc_.newInt64();
  cc_.mov(whole, constantAt(operand).numeric()->asInt().scalar());
  return whole;
}

x86::Xmm Emitter::asReal(int32_t operand) {
  const Type type = typeOf(operand);
  if (type.held == Held::real) return operand < 0 ? constant(constantAt(operand).doubleScalar()) : realOf(operand);
  const Xmm x = newReal("converted");
  cc_.vxorpd(x, x, x);
  if (type.held == Held::integer) cc_.vcvtsi2sd(x, x, asWhole(operand));
  else cc_.vcvtsi2sd(x, x, asWord(operand));
  return x;
}

asmjit::Operand Emitter::asRealOrMemory(int32_t operand) {
  const bool isConstant = operand < 0 && typeOf(operand).held == Held::real;
  if (isConstant) return constantMemory(constantAt(operand).doubleScalar());
  return asReal(operand);
}

void Emitter::asComplex(int32_t operand, Xmm* re, Xmm* im) {
  if (typeOf(operand).held != Held::complex) {
    *re = asReal(operand);
    *im = newReal("zero");
    cc_.vxorpd(*im, *im, *im);
  } else if (operand >= 0) {
    *re = realOf(operand);
    *im = realLane(graph_.laneOf(operand), true);
  } else {
    const ComplexDouble z = constantAt(operand).numeric()->asComplex().scalar();
    *re = constant(z.real);
    *im = constant(z.imaginary);
  }
}

// 1 or 0; NaN is neither.
x86::Gp Emitter::asTruth(int32_t operand) {
  const Type type = typeOf(operand);
  if (type.held == Held::logical) return asWord(operand);
  const Gp truth = cc_.newUInt32("truth");
  if (type.held == Held::real) {
    const Xmm x = asReal(operand), zero = newReal("zero");
    cc_.vxorpd(zero, zero, zero);
    cc_.xor_(truth, truth);
    cc_.vucomisd(x, zero);
    cc_.jp(exit());
    cc_.setne(truth.r8());
    return truth;
  }
  const Gp number = type.held == Held::integer ? asWhole(operand) : asWord(operand);
  cc_.xor_(truth, truth);
  cc_.test(number, number);
  cc_.setne(truth.r8());
  return truth;
}

void Emitter::move(int32_t to, int32_t from) {
  const Type type = typeOf(from);
  const int32_t lane = graph_.laneOf(to);
  switch (type.held) {
    case Held::real:
      if (from < 0) cc_.vmovsd(realLane(lane), constantMemory(constantAt(from).doubleScalar()));
      else cc_.vmovapd(realLane(lane), realOf(from));
      break;
    case Held::complex: {
      Xmm re, im;
      asComplex(from, &re, &im);
      cc_.vmovapd(realLane(lane), re);
      cc_.vmovapd(realLane(lane, true), im);
      break;
    }
    case Held::integer: cc_.mov(wholeLane(lane), asWhole(from)); break;
    case Held::logical: cc_.mov(wordLane(lane), asWord(from)); break;
    case Held::character:
      if (from < 0) cc_.mov(wordLane(lane), constantAt(from).numeric()->asChar().scalar().word());
      else cc_.mov(wordLane(lane), wordOf(from));
      break;
    case Held::other: case Held::array: case Held::alias: break;
  }
}

// ---- Operators

void Emitter::binary(const Instruction& i) {
  const auto op = static_cast<BinaryOp>(i.op);
  if (isComparison(op)) return setTruth(i.a, compare(op, i.b, i.c));
  if (op == BinaryOp::and_ || op == BinaryOp::or_) return logic(op, i);
  switch (meeting(typeOf(i.b), typeOf(i.c))) {
    case Held::complex: return complexArithmetic(op, i);
    case Held::integer: return integerSum(op, i);
    default: return arithmetic(op, i);
  }
}

void Emitter::arithmetic(BinaryOp op, const Instruction& i) {
  if (op == BinaryOp::power || op == BinaryOp::dpower) return power(i);
  const bool isLeftDivision = op == BinaryOp::ldivide || op == BinaryOp::mldivide;
  const int32_t left = isLeftDivision ? i.c : i.b, right = isLeftDivision ? i.b : i.c;
  const Xmm x = asReal(left);
  asmjit::Operand y = asRealOrMemory(right);
  const Xmm result = realOf(i.a);
  switch (op) {
    case BinaryOp::plus: cc_.emit(x86::Inst::kIdVaddsd, result, x, y); break;
    case BinaryOp::minus: cc_.emit(x86::Inst::kIdVsubsd, result, x, y); break;
    case BinaryOp::mult: case BinaryOp::dmult: cc_.emit(x86::Inst::kIdVmulsd, result, x, y); break;
    default:
      if (right < 0 && typeOf(right).held == Held::real && hasExactReciprocal(constantAt(right).doubleScalar())) {
        cc_.vmulsd(result, x, constantMemory(1 / constantAt(right).doubleScalar()));
      } else {
        cc_.emit(x86::Inst::kIdVdivsd, result, x, y);
      }
  }
}

void Emitter::integerSum(BinaryOp op, const Instruction& i) {
  const Gp sum = cc_.newInt64("sum");
  cc_.mov(sum, asWhole(i.b));
  if (op == BinaryOp::plus) cc_.add(sum, asWhole(i.c));
  else cc_.sub(sum, asWhole(i.c));
  cc_.jo(exit());
  cc_.mov(wholeLane(graph_.laneOf(i.a)), sum);
}

// A negative base with a broken exponent has a complex power.
void Emitter::power(const Instruction& i) {
  const Type exponent = typeOf(i.c);
  const Xmm a = asReal(i.b);
  if (i.c < 0 && exponent.held == Held::real && constantAt(i.c).doubleScalar() == 2) {
    cc_.vmulsd(realOf(i.a), a, a);
    return;
  }
  const Xmm b = asReal(i.c), result = newReal("power");
  if (!exponent.isSurelyWhole()) {
    const Label isReal = cc_.newLabel();
    const Xmm floor = newReal("floor"), zero = newReal("zero");
    cc_.vxorpd(zero, zero, zero);
    cc_.vucomisd(zero, a);
    cc_.jbe(isReal);  // or unordered
    cc_.vroundsd(floor, b, b, asmjit::Imm(9));
    cc_.vucomisd(floor, b);
    cc_.jp(isReal);
    cc_.jne(exit());
    cc_.bind(isReal);
  }
  const Gp function = cc_.newIntPtr();
  cc_.mov(function, reinterpret_cast<uint64_t>(&realPowerOf));
  asmjit::InvokeNode* call;
  cc_.invoke(&call, function, asmjit::FuncSignatureT<double, double, double>());
  call->setArg(0, a);
  call->setArg(1, b);
  call->setRet(0, result);
  setReal(i.a, result);
}

void Emitter::complexArithmetic(BinaryOp op, const Instruction& i) {
  Xmm ar, ai, br, bi;
  asComplex(i.b, &ar, &ai);
  asComplex(i.c, &br, &bi);
  const Xmm re = newReal("re"), im = newReal("im"), t = newReal("t");
  const auto sumOfProducts = [&](const Xmm& to, const Xmm& a, const Xmm& b, const Xmm& c, const Xmm& d, bool minus) {
    cc_.vmulsd(to, a, b);
    cc_.vmulsd(t, c, d);
    if (minus) cc_.vsubsd(to, to, t);
    else cc_.vaddsd(to, to, t);
  };
  switch (op) {
    case BinaryOp::plus:
      cc_.vaddsd(re, ar, br);
      cc_.vaddsd(im, ai, bi);
      break;
    case BinaryOp::minus:
      cc_.vsubsd(re, ar, br);
      cc_.vsubsd(im, ai, bi);
      break;
    case BinaryOp::mult: case BinaryOp::dmult:
      sumOfProducts(re, ar, br, ai, bi, true);
      sumOfProducts(im, ar, bi, ai, br, false);
      break;
    default: {
      const Xmm h = newReal("h");
      sumOfProducts(h, br, br, bi, bi, false);
      sumOfProducts(re, ar, br, ai, bi, false);
      sumOfProducts(im, ai, br, ar, bi, true);
      cc_.vdivsd(re, re, h);
      cc_.vdivsd(im, im, h);
    }
  }
  setReal(i.a, re);
  cc_.vmovapd(realLane(graph_.laneOf(i.a), true), im);
}

void Emitter::logic(BinaryOp op, const Instruction& i) {
  const Gp a = asTruth(i.b), b = asTruth(i.c), both = cc_.newUInt32("both");
  cc_.mov(both, a);
  if (op == BinaryOp::and_) cc_.and_(both, b);
  else cc_.or_(both, b);
  cc_.mov(wordOf(i.a), both);
}

void Emitter::unary(const Instruction& i) {
  if (i.op == Op::not_) {
    const Gp truth = asTruth(i.b), negation = cc_.newUInt32("not");
    cc_.mov(negation, truth);
    cc_.xor_(negation, 1);
    cc_.mov(wordOf(i.a), negation);
    return;
  }
  const uint64_t sign[] = {uint64_t{1} << 63, 0};
  const Mem mask = cc_.newConst(asmjit::ConstPoolScope::kLocal, sign, sizeof sign);
  if (typeOf(i.b).held == Held::real) {
    cc_.vxorpd(realOf(i.a), asReal(i.b), mask);
    return;
  }
  Xmm re, im;
  asComplex(i.b, &re, &im);
  cc_.vxorpd(realOf(i.a), re, mask);
  cc_.vxorpd(realLane(graph_.laneOf(i.a), true), im, mask);
}

// ---- Comparisons

// Sets the flags. A comparison with NaN holds only for ~=.
Emitter::Comparison Emitter::compare(BinaryOp op, int32_t left, int32_t right) {
  const Type a = typeOf(left), b = typeOf(right);
  const Held kind = meeting(a, b);
  const bool isEquality = op == BinaryOp::eqeq || op == BinaryOp::neq;
  if (kind == Held::complex) {
    Xmm ar, ai, br, bi;
    asComplex(left, &ar, &ai);
    asComplex(right, &br, &bi);
    const Xmm re = newReal("re"), im = newReal("im");
    cc_.vcmpsd(re, ar, br, asmjit::Imm(0));
    cc_.vcmpsd(im, ai, bi, asmjit::Imm(0));
    cc_.vandpd(re, re, im);
    const Gp equal = cc_.newInt64("equal");
    cc_.vmovq(equal, re);
    cc_.test(equal, equal);
    return {CondCode::kNotZero, false, op == BinaryOp::neq};
  }
  if (kind == Held::integer || (a.held != Held::real && b.held != Held::real)) {
    if (kind == Held::integer) cc_.cmp(asWhole(left), asWhole(right));
    else cc_.cmp(asWord(left), asWord(right));
    switch (op) {
      case BinaryOp::eqeq: return {CondCode::kEqual};
      case BinaryOp::neq: return {CondCode::kNotEqual};
      case BinaryOp::le: return {CondCode::kSignedLE};
      case BinaryOp::lt: return {CondCode::kSignedLT};
      case BinaryOp::ge: return {CondCode::kSignedGE};
      default: return {CondCode::kSignedGT};
    }
  }
  const bool isExchanged = op == BinaryOp::lt || op == BinaryOp::le;
  const Xmm x = asReal(isExchanged ? right : left);
  cc_.emit(x86::Inst::kIdVucomisd, x, asRealOrMemory(isExchanged ? left : right));
  if (isEquality) return {CondCode::kEqual, true, op == BinaryOp::neq};
  const bool isStrict = op == BinaryOp::lt || op == BinaryOp::gt;
  return {isStrict ? CondCode::kUnsignedGT : CondCode::kUnsignedGE};
}

// A move leaves the flags alone.
void Emitter::setTruth(int32_t reg, Comparison comparison) {
  const Gp truth = wordOf(reg);
  const bool isNegated = comparison.isNegated;
  cc_.mov(truth, 0);
  cc_.set(isNegated ? x86::negateCond(comparison.holds) : comparison.holds, truth.r8());
  if (!comparison.isOrdered) return;
  const Gp order = cc_.newUInt32("order");
  cc_.mov(order, 0);
  cc_.set(isNegated ? CondCode::kParityEven : CondCode::kParityOdd, order.r8());
  if (isNegated) cc_.or_(truth, order);
  else cc_.and_(truth, order);
}

}  // namespace kelo::native
