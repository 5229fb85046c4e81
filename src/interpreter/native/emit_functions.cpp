// Whole units, and calls of them from loops and from each other.
//
// A unit gets its inputs and gives its first result in machine registers, as the system's own
// functions do: numbers as doubles, logicals and characters as 32-bit words, integers as 64-bit ones,
// arrays as the places of their words. Behind each call is
// asked whether it has failed.
#include "interpreter/native/emitter.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

using asmjit::BaseReg;
using asmjit::TypeId;

namespace {

TypeId typeIdOf(Held held) {
  switch (held) {
    case Held::logical: case Held::character: return TypeId::kUInt32;
    case Held::integer: return TypeId::kInt64;
    case Held::array: return TypeId::kUIntPtr;
    default: return TypeId::kFloat64;
  }
}

}  // namespace

asmjit::FuncSignatureBuilder Emitter::signatureOf(const Kinds& inputs, const std::vector<Held>& results) const {
  asmjit::FuncSignatureBuilder signature;
  signature.setRet(typeIdOf(results.front()));
  signature.addArg(TypeId::kUIntPtr);
  for (const Type& kind : inputs) signature.addArg(typeIdOf(kind.held));
  return signature;
}

BaseReg Emitter::newPassed(Held held) {
  switch (held) {
    case Held::logical: case Held::character: return cc_.newUInt32("passed");
    case Held::integer: return cc_.newInt64("passed");
    case Held::array: return cc_.newIntPtr("passed");
    default: return newReal("passed");
  }
}

BaseReg Emitter::passed(int32_t operand) {
  const Type type = typeOf(operand);
  if (type.isArray()) {
    const Gp words = cc_.newIntPtr("passed");
    cc_.lea(words, arrayWord(graph_.arrayLane(node().state, operand), 0));
    return words;
  }
  switch (type.held) {
    case Held::logical: case Held::character: return asWord(operand);
    case Held::integer: return asWhole(operand);
    default: return asReal(operand);
  }
}

void Emitter::load(const BaseReg& to, Held held, int32_t offset) {
  switch (held) {
    case Held::logical: case Held::character: cc_.mov(to.as<Gp>(), x86::ptr_32(cells_, offset)); break;
    case Held::integer: cc_.mov(to.as<Gp>(), wordAt(offset)); break;
    case Held::array: cc_.lea(to.as<Gp>(), wordAt(offset)); break;
    default: cc_.vmovsd(to.as<Xmm>(), wordAt(offset));
  }
}

void Emitter::store(Held held, int32_t offset, const BaseReg& from) {
  switch (held) {
    case Held::logical: case Held::character: cc_.mov(x86::ptr_32(cells_, offset), from.as<Gp>()); break;
    case Held::integer: cc_.mov(wordAt(offset), from.as<Gp>()); break;
    default: cc_.vmovsd(wordAt(offset), from.as<Xmm>());
  }
}

// ---- A unit

void Emitter::enterUnit() {
  asmjit::FuncNode* function = cc_.addFunc(signatureOf(graph_.inputs(), graph_.results()));
  function->frame().setAvxEnabled();
  body_ = function->label();
  failure_ = cc_.newLabel();
  function->setArg(0, cells_);
  for (size_t k = 0; k < graph_.inputs().size(); ++k) {
    const int32_t lane = graph_.laneOf(static_cast<int32_t>(k));
    if (lane < 0) continue;  // never read
    const Held held = graph_.inputs()[k].held;
    if (held != Held::array) {
      function->setArg(k + 1, scalarLane(lane, held));
      continue;
    }
    Gp& words = lanes_[static_cast<size_t>(lane)].words;
    words = cc_.newIntPtr("words%d", lane);
    function->setArg(k + 1, words);
  }
  for (size_t lane = 0; lane < lanes_.size(); ++lane) {
    if (lanes_[lane].words.isValid()) cc_.mov(dataLane(static_cast<int32_t>(lane)), x86::ptr_64(lanes_[lane].words));
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

void Emitter::giveResults(std::span<const int32_t> operands) {
  for (size_t k = 1; k < operands.size(); ++k) {
    store(graph_.results()[k], LaneWords::result(static_cast<int32_t>(k)), passed(operands[k]));
  }
  cc_.ret(passed(operands.front()));
}

// What is given then means nothing.
void Emitter::emitFailure() {
  cc_.bind(failure_);
  cc_.mov(wordAt(LaneWords::kFailed), 1);
  const BaseReg nothing = newPassed(graph_.results().front());
  if (graph_.results().front() == Held::real) cc_.vxorpd(nothing.as<Xmm>(), nothing.as<Xmm>(), nothing.as<Xmm>());
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
    const Held held = graph_.inputs()[k].held;
    arguments.push_back(newPassed(held));
    load(arguments.back(), held, LaneWords::first(static_cast<int32_t>(k)));
  }
  const Held held = graph_.results().front();
  const BaseReg result = newPassed(held);
  asmjit::InvokeNode* call;
  cc_.invoke(&call, body_, signatureOf(graph_.inputs(), graph_.results()));
  passAll(*call, arguments, result);
  store(held, LaneWords::first(0), result);
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
void Emitter::call(const Instruction&) {
  const KnownCall& known = graph_.calls()[static_cast<size_t>(node().call)];
  const std::vector<Held>& results = graph_.resultsOf(known);
  std::vector<BaseReg> arguments;
  for (const int32_t operand : known.operands) arguments.push_back(passed(operand));
  const int32_t afterLanes = LaneWords::first(static_cast<int32_t>(graph_.registers().size()));
  for (size_t k = arguments.size(); k < known.inputs.size(); ++k) {
    const auto captured = static_cast<int32_t>(k - known.operands.size());
    arguments.push_back(newPassed(known.inputs[k].held));
    load(arguments.back(), known.inputs[k].held,
         afterLanes + 8 * (known.firstCaptured + LaneWords::kWords * captured));
  }
  const BaseReg result = newPassed(results.front());
  const auto signature = signatureOf(known.inputs, results);
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
  for (size_t k = 0; k < known.targets.size(); ++k) {
    const BaseReg to = scalarLane(graph_.laneOf(known.targets[k]), results[k]);
    if (k > 0) load(to, results[k], LaneWords::result(static_cast<int32_t>(k)));
    else if (results[k] == Held::real) cc_.vmovapd(to.as<Xmm>(), result.as<Xmm>());
    else cc_.mov(to.as<Gp>(), result.as<Gp>());
  }
}

}  // namespace kelo::native
