// Built-in functions of scalars, as quick_calls.cpp and the rows of the built-ins compute them.
#include "interpreter/native/emitter.h"
#include "interpreter/native/intrinsics.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

namespace {

enum Rounding { kFloor = 9, kCeil = 10, kFix = 11 };  // immediate operands of the instruction

constexpr double kBelowHalf = 0.49999999999999994;  // added before truncation, rounds halves away from zero

}  // namespace

x86::Xmm Emitter::round(const Xmm& x, int mode) {
  const Xmm result = newReal("rounded");
  cc_.vroundsd(result, x, x, asmjit::Imm(mode));
  return result;
}

x86::Xmm Emitter::magnitude(const Xmm& x) {
  const uint64_t bits[] = {~(uint64_t{1} << 63), 0};
  const Xmm result = newReal("magnitude");
  cc_.vandpd(result, x, cc_.newConst(asmjit::ConstPoolScope::kLocal, bits, sizeof bits));
  return result;
}

void Emitter::quickCall(const Instruction& i) {
  using platform::VectorFunction;
  const auto function = static_cast<QuickCall>(i.e);
  if (typeOf(i.b).held == Held::complex) {  // abs
    const Xmm re = newReal("re"), im = newReal("im");
    Xmm x, y;
    asComplex(i.b, &x, &y);
    cc_.vmulsd(re, x, x);
    cc_.vmulsd(im, y, y);
    cc_.vaddsd(re, re, im);
    cc_.vsqrtsd(realOf(i.a), re, re);
    return;
  }
  switch (function) {
    case QuickCall::abs: return setReal(i.a, magnitude(asReal(i.b)));
    case QuickCall::ceil: return setReal(i.a, round(asReal(i.b), kCeil));
    case QuickCall::fix: return setReal(i.a, round(asReal(i.b), kFix));
    case QuickCall::floor: return setReal(i.a, round(asReal(i.b), kFloor));
    case QuickCall::round: {
      const Xmm x = asReal(i.b), most = newReal("most");
      cc_.vxorpd(most, x, magnitude(x));  // its sign
      cc_.vorpd(most, most, constant(kBelowHalf));
      cc_.vaddsd(most, most, x);
      return setReal(i.a, round(most, kFix));
    }
    case QuickCall::max: return choice(i, true);
    case QuickCall::min: return choice(i, false);
    case QuickCall::mod: return remainder(i, true);
    case QuickCall::rem: return remainder(i, false);
    case QuickCall::sqrt: {
      const Xmm x = asReal(i.b), zero = newReal("zero");
      cc_.vxorpd(zero, zero, zero);
      cc_.vucomisd(x, zero);
      cc_.jb(exit());  // or unordered
      cc_.vsqrtsd(realOf(i.a), x, x);
      return;
    }
    case QuickCall::acos: return vectorRoutine(i, VectorFunction::acos);
    case QuickCall::asin: return vectorRoutine(i, VectorFunction::asin);
    case QuickCall::atan: return vectorRoutine(i, VectorFunction::atan);
    case QuickCall::cos: return vectorRoutine(i, VectorFunction::cos);
    case QuickCall::cosh: return vectorRoutine(i, VectorFunction::cosh);
    case QuickCall::exp: return vectorRoutine(i, VectorFunction::exp);
    case QuickCall::log: return vectorRoutine(i, VectorFunction::log);
    case QuickCall::log10: return vectorRoutine(i, VectorFunction::log10);
    case QuickCall::log2: return vectorRoutine(i, VectorFunction::log2);
    case QuickCall::sin: return vectorRoutine(i, VectorFunction::sin);
    case QuickCall::sinh: return vectorRoutine(i, VectorFunction::sinh);
    case QuickCall::tan: return vectorRoutine(i, VectorFunction::tan);
    case QuickCall::tanh: return vectorRoutine(i, VectorFunction::tanh);
    case QuickCall::isempty: case QuickCall::length: case QuickCall::numel: case QuickCall::size: return sizeQuery(i);
    case QuickCall::toDouble: return setReal(i.a, asReal(i.b));
    case QuickCall::toChar: {
      const Gp code = cc_.newInt64("code");
      cc_.vcvttsd2si(code, asReal(i.b));
      cc_.cmp(code, 0x80);
      cc_.jae(exit());
      cc_.mov(wordOf(i.a), code.r32());
      return;
    }
    case QuickCall::exclusiveOr: {
      const Gp a = asTruth(i.b), b = asTruth(i.c), differ = cc_.newUInt32("differ");
      cc_.mov(differ, a);
      cc_.xor_(differ, b);
      cc_.mov(wordOf(i.a), differ);
      return;
    }
    default: return;  // never
  }
}

// The instruction gives its second operand unless the first is greater (or less).
void Emitter::choice(const Instruction& i, bool isMax) {
  const Xmm x = asReal(i.b), y = asReal(i.c);
  cc_.vucomisd(x, y);
  cc_.jp(exit());
  if (isMax) cc_.vmaxsd(realOf(i.a), y, x);
  else cc_.vminsd(realOf(i.a), y, x);
}

// x - y * floor(x / y), or with fix. mod(x, 0) is x; rem(x, 0) is left to the register code.
void Emitter::remainder(const Instruction& i, bool isMod) {
  const Xmm x = asReal(i.b), result = newReal("remainder"), q = newReal("q");
  const Label done = cc_.newLabel();
  const bool isConstant = i.c < 0 && typeOf(i.c).held == Held::real;
  const double divisor = isConstant ? constantAt(i.c).doubleScalar() : 0;
  const Xmm y = asReal(i.c);
  if (divisor == 0) {
    const Xmm zero = newReal("zero");
    const Label isOther = cc_.newLabel();
    cc_.vmovapd(result, x);
    cc_.vxorpd(zero, zero, zero);
    cc_.vucomisd(y, zero);
    cc_.jp(isOther);
    cc_.je(isMod ? done : exit());
    cc_.bind(isOther);
  }
  if (divisor != 0 && hasExactReciprocal(divisor)) cc_.vmulsd(q, x, constantMemory(1 / divisor));
  else cc_.vdivsd(q, x, y);
  cc_.vroundsd(q, q, q, asmjit::Imm(isMod ? kFloor : kFix));
  cc_.vmulsd(q, y, q);
  cc_.vsubsd(result, x, q);
  cc_.bind(done);
  setReal(i.a, result);
}

// By a routine for arrays, as the built-in has it computed.
void Emitter::vectorRoutine(const Instruction& i, platform::VectorFunction which) {
  const Xmm x = asReal(i.b);
  checkDomain(static_cast<QuickCall>(i.e), x);
  const Mem slot = cc_.newStack(8, 8);
  const Gp address = cc_.newIntPtr("slot"), function = cc_.newIntPtr("function"), count = cc_.newInt64("count");
  cc_.vmovsd(slot, x);
  cc_.lea(address, slot);
  cc_.mov(function, reinterpret_cast<uint64_t>(platform::vectorRoutine(which)));
  cc_.mov(count, 1);
  asmjit::InvokeNode* call;
  cc_.invoke(&call, function, asmjit::FuncSignatureT<void, void*, void*, int64_t>());
  call->setArg(0, address);
  call->setArg(1, address);
  call->setArg(2, count);
  cc_.vmovsd(realOf(i.a), slot);
}

// Outside of it the result is complex.
void Emitter::checkDomain(QuickCall function, const Xmm& x) {
  if (function == QuickCall::log) {
    cc_.vucomisd(constant(0), x);
    cc_.ja(exit());
  } else if (function == QuickCall::acos || function == QuickCall::asin) {
    cc_.vucomisd(magnitude(x), constantMemory(1));
    cc_.ja(exit());
  }
}

void Emitter::sizeQuery(const Instruction& i) {
  const auto function = static_cast<QuickCall>(i.e);
  if (typeOf(i.b).isScalar()) {
    if (function == QuickCall::isempty) cc_.mov(wordOf(i.a), 0);
    else cc_.mov(wholeLane(graph_.laneOf(i.a)), 1);
    return;
  }
  const int32_t lane = graph_.arrayLane(node().state, i.b);
  if (function == QuickCall::isempty) {
    cc_.cmp(arrayWord(lane, LaneWords::kCount), 0);
    return setTruth(i.a, {x86::CondCode::kEqual});
  }
  const Gp length = cc_.newInt64("length");
  if (function == QuickCall::numel) {
    cc_.mov(length, arrayWord(lane, LaneWords::kCount));
  } else if (function == QuickCall::size) {
    const bool isRows = constantAt(i.c).doubleScalar() == 1;
    cc_.mov(length, arrayWord(lane, isRows ? LaneWords::kRows : LaneWords::kColumns));
  } else {
    const Gp none = cc_.newInt64("none");
    cc_.mov(length, arrayWord(lane, LaneWords::kRows));
    cc_.cmp(length, arrayWord(lane, LaneWords::kColumns));
    cc_.cmovl(length, arrayWord(lane, LaneWords::kColumns));
    cc_.xor_(none, none);
    cc_.cmp(arrayWord(lane, LaneWords::kCount), 0);
    cc_.cmove(length, none);
  }
  cc_.mov(wholeLane(graph_.laneOf(i.a)), length);
}

void Emitter::builtin(const Instruction& i) {
  const Site& site = graph_.code().sites[static_cast<size_t>(i.d)];
  const Intrinsic& intrinsic = *intrinsicOf(site);
  const int32_t argument = site.first;
  switch (intrinsic.form) {
    case Intrinsic::Form::real: cc_.vmovsd(realOf(i.a), constantMemory(intrinsic.value)); return;
    case Intrinsic::Form::logical: cc_.mov(wordOf(i.a), intrinsic.value != 0 ? 1 : 0); return;
    case Intrinsic::Form::complex: {
      const Xmm re = asReal(argument), im = asReal(argument + 1);
      cc_.vmovapd(realLane(graph_.laneOf(i.a), true), im);
      return setReal(i.a, re);
    }
    case Intrinsic::Form::realPart: return setReal(i.a, realOf(argument));
    case Intrinsic::Form::imaginaryPart: return setReal(i.a, realLane(graph_.laneOf(argument), true));
    case Intrinsic::Form::conjugate: {
      const uint64_t sign[] = {uint64_t{1} << 63, 0};
      const Mem mask = cc_.newConst(asmjit::ConstPoolScope::kLocal, sign, sizeof sign);
      cc_.vxorpd(realLane(graph_.laneOf(i.a), true), realLane(graph_.laneOf(argument), true), mask);
      return setReal(i.a, realOf(argument));
    }
    case Intrinsic::Form::isNaN: {
      const Xmm x = asReal(argument);
      cc_.vucomisd(x, x);
      return setTruth(i.a, {x86::CondCode::kParityEven});
    }
  }
}

}  // namespace kelo::native
