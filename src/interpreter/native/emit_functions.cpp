// Whole units, and calls of them from loops and from each other.
//
// A unit gets its inputs and gives its result in machine registers, as the system's own functions
// do: numbers as doubles, logicals as 32-bit words, integers as 64-bit ones. Behind each call is
// asked whether it has failed.
#include "interpreter/native/emitter.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

using asmjit::BaseReg;
using asmjit::TypeId;

namespace {

TypeId typeIdOf(Held held) {
  switch (held) {
    case Held::logical: return TypeId::kUInt32;
    case Held::integer: return TypeId::kInt64;
    default: return TypeId::kFloat64;
  }
}

}  // namespace

asmjit::FuncSignatureBuilder Emitter::signatureOf(const Kinds& inputs, Held result) const {
  asmjit::FuncSignatureBuilder signature;
  signature.setRet(typeIdOf(result));
  signature.addArg(TypeId::kUIntPtr);
  for (const Held held : inputs) signature.addArg(typeIdOf(held));
  return signature;
}

BaseReg Emitter::newPassed(Held held) {
  switch (held) {
    case Held::logical: return cc_.newUInt32("passed");
    case Held::integer: return cc_.newInt64("passed");
    default: return newReal("passed");
  }
}

BaseReg Emitter::passed(int32_t operand) {
  switch (typeOf(operand).held) {
    case Held::logical: return asWord(operand);
    case Held::integer: return asWhole(operand);
    default: return asReal(operand);
  }
}

void Emitter::load(const BaseReg& to, Held held, int32_t word) {
  switch (held) {
    case Held::logical: cc_.mov(to.as<Gp>(), x86::ptr_32(cells_, 8 * word)); break;
    case Held::integer: cc_.mov(to.as<Gp>(), wordAt(8 * word)); break;
    default: cc_.vmovsd(to.as<Xmm>(), wordAt(8 * word));
  }
}

// ---- A unit

void Emitter::enterUnit() {
  asmjit::FuncNode* function = cc_.addFunc(signatureOf(graph_.inputs(), graph_.result()));
  function->frame().setAvxEnabled();
  body_ = function->label();
  failure_ = cc_.newLabel();
  function->setArg(0, cells_);
  for (size_t k = 0; k < graph_.inputs().size(); ++k) {
    const int32_t lane = graph_.laneOf(static_cast<int32_t>(k));
    if (lane < 0) continue;  // never read
    switch (graph_.inputs()[k]) {
      case Held::logical: function->setArg(k + 1, wordLane(lane)); break;
      case Held::integer: function->setArg(k + 1, wholeLane(lane)); break;
      default: function->setArg(k + 1, realLane(lane));
    }
  }
  cc_.cmp(x86::rsp, wordAt(LaneWords::kStack));
  cc_.jb(failure_);
  checkForStop();
}

void Emitter::checkForStop() {
  const Gp request = cc_.newIntPtr("request");
  cc_.mov(request, wordAt(LaneWords::kStop));
  cc_.cmp(x86::ptr_8(request), 0);
  cc_.jne(failure_);
}

void Emitter::giveResult(int32_t operand) { cc_.ret(passed(operand)); }

// What is given then means nothing.
void Emitter::emitFailure() {
  cc_.bind(failure_);
  cc_.mov(wordAt(LaneWords::kFailed), 1);
  const BaseReg nothing = newPassed(graph_.result());
  if (graph_.result() == Held::real) cc_.vxorpd(nothing.as<Xmm>(), nothing.as<Xmm>(), nothing.as<Xmm>());
  else cc_.xor_(nothing.as<Gp>(), nothing.as<Gp>());
  cc_.ret(nothing);
}

// A function of the words, which calls the unit.
void Emitter::emitEntry() {
  asmjit::FuncNode* function = cc_.addFunc(asmjit::FuncSignatureT<void, void*>());
  function->frame().setAvxEnabled();
  entry_ = function->label();
  cells_ = cc_.newIntPtr("cells");
  function->setArg(0, cells_);
  std::vector<BaseReg> arguments;
  for (size_t k = 0; k < graph_.inputs().size(); ++k) {
    const Held held = graph_.inputs()[k];
    arguments.push_back(newPassed(held));
    load(arguments.back(), held, LaneWords::first(static_cast<int32_t>(k)) / 8);
  }
  const BaseReg result = newPassed(graph_.result());
  asmjit::InvokeNode* call;
  cc_.invoke(&call, body_, signatureOf(graph_.inputs(), graph_.result()));
  passAll(*call, arguments, result);
  const Mem to = wordAt(LaneWords::first(0));
  switch (graph_.result()) {
    case Held::logical: cc_.mov(x86::ptr_32(cells_, LaneWords::first(0)), result.as<Gp>()); break;
    case Held::integer: cc_.mov(to, result.as<Gp>()); break;
    default: cc_.vmovsd(to, result.as<Xmm>());
  }
  cc_.ret();
  cc_.endFunc();
}

// ---- Calls

void Emitter::passAll(asmjit::InvokeNode& call, const std::vector<BaseReg>& arguments, const BaseReg& result) {
  call.setArg(0, cells_);
  for (size_t k = 0; k < arguments.size(); ++k) call.setArg(k + 1, arguments[k]);
  call.setRet(0, result);
}

// Where the call fails the register code does it again.
void Emitter::call(const Instruction& i) {
  const KnownCall& known = graph_.calls()[static_cast<size_t>(node().call)];
  const Held held = graph_.resultOf(known);
  std::vector<BaseReg> arguments;
  for (const int32_t operand : known.operands) arguments.push_back(passed(operand));
  const int32_t afterLanes = LaneWords::first(static_cast<int32_t>(graph_.registers().size())) / 8;
  for (size_t k = arguments.size(); k < known.inputs.size(); ++k) {
    const auto captured = static_cast<int32_t>(k - known.operands.size());
    arguments.push_back(newPassed(known.inputs[k]));
    load(arguments.back(), known.inputs[k], afterLanes + known.firstCaptured + captured);
  }
  const BaseReg result = newPassed(held);
  const auto signature = signatureOf(known.inputs, held);
  asmjit::InvokeNode* invoked;
  if (known.function) {
    const FunctionCode& function = *known.function;
    const Gp address = cc_.newIntPtr("unit");
    cc_.mov(address, reinterpret_cast<uint64_t>(function.block->begin() + function.bodyOffset));
    cc_.invoke(&invoked, address, signature);
  } else {
    cc_.invoke(&invoked, body_, signature);
  }
  passAll(*invoked, arguments, result);
  cc_.cmp(wordAt(LaneWords::kFailed), 0);
  cc_.jne(exit());
  const int32_t lane = graph_.laneOf(i.a);
  switch (held) {
    case Held::logical: cc_.mov(wordLane(lane), result.as<Gp>()); break;
    case Held::integer: cc_.mov(wholeLane(lane), result.as<Gp>()); break;
    default: cc_.vmovapd(realLane(lane), result.as<Xmm>());
  }
}

}  // namespace kelo::native
