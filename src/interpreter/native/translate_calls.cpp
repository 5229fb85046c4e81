// Whole units, and calls of them from loops and from each other.
//
// A unit gets its inputs and gives its first result in machine registers, as the system's own
// functions do: real numbers as doubles, other scalars as 64-bit words, arrays as the places of their
// words. Behind each call is asked whether it has failed.
#include <algorithm>

#include "interpreter/native/translator.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

using asmjit::BaseReg;
using asmjit::TypeId;

namespace {

asmjit::FuncSignatureBuilder signatureOf(const Kinds& inputs, const Kinds& results) {
  const auto typeIdOf = [](const Type& kind) { return kind.held == Held::real ? TypeId::kFloat64 : TypeId::kInt64; };
  asmjit::FuncSignatureBuilder signature;
  signature.setRet(typeIdOf(results.front()));
  signature.addArg(TypeId::kUIntPtr);
  for (const Type& kind : inputs) signature.addArg(typeIdOf(kind));
  return signature;
}

int64_t bytesOf(Kind element) {
  constexpr int64_t kBytes[] = {8, 8, 1, 16, 4};
  return kBytes[static_cast<size_t>(element)];
}

}  // namespace

// ---- Values that are passed

BaseReg Translator::newPassed(Held held) {
  if (held == Held::real) return newReal();
  return newWhole();
}

BaseReg Translator::passed(int32_t operand) {
  const Type type = of(operand);
  if (type.held == Held::real) return asReal(operand);
  if (type.isScalar()) return asWhole(operand);
  const int32_t array = arrayAt(operand);
  if (isUnit()) return words(array);
  const Gp place = cc_.newIntPtr();
  cc_.lea(place, arrayWord(array, 0));
  return place;
}

// An array lies in the words itself.
BaseReg Translator::loaded(Held held, int32_t offset) {
  const BaseReg value = newPassed(held);
  if (held == Held::real) cc_.vmovsd(value.as<Xmm>(), wordAt(offset));
  else if (held == Held::array) cc_.lea(value.as<Gp>(), wordAt(offset));
  else cc_.mov(value.as<Gp>(), wordAt(offset));
  return value;
}

void Translator::saveAt(int32_t offset, const BaseReg& value) {
  if (value.isVec()) cc_.vmovsd(wordAt(offset), value.as<Xmm>());
  else cc_.mov(wordAt(offset), value.as<Gp>());
}

// Calls another unit, or the one that is being made.
BaseReg Translator::invoke(const Version* unit, const Kinds& inputs, const Kinds& results,
                           std::span<const BaseReg> arguments) {
  const BaseReg result = newPassed(results.front().held);
  asmjit::InvokeNode* call;
  if (unit) {
    const Gp address = cc_.newIntPtr();
    cc_.mov(address, reinterpret_cast<uint64_t>(unit->block.get() + unit->bodyOffset));
    cc_.invoke(&call, address, signatureOf(inputs, results));
  } else {
    cc_.invoke(&call, body_, signatureOf(inputs, results));
  }
  call->setArg(0, cells_);
  for (size_t k = 0; k < arguments.size(); ++k) call->setArg(k + 1, arguments[k]);
  call->setRet(0, result);
  return result;
}

// ---- A unit

void Translator::enterUnit() {
  asmjit::FuncNode* function = cc_.addFunc(signatureOf(inputs(), results()));
  function->frame().setAvxEnabled();
  body_ = function->label();
  failure_ = cc_.newLabel();
  function->setArg(0, cells_);
  for (size_t k = 0; k < inputs().size(); ++k) {
    const auto reg = static_cast<int32_t>(k);
    const Held held = inputs()[k].held;
    if (held == Held::real) function->setArg(k + 1, real(reg));
    else function->setArg(k + 1, held == Held::array ? words(reg) : whole(reg));
  }
  for (size_t k = 0; k < inputs().size(); ++k) {
    const auto reg = static_cast<int32_t>(k);
    if (inputs()[k].isArray()) cc_.mov(data(reg), arrayWord(reg, Layout::kData));
  }
  memoryBefore_ = cc_.newIntPtr();
  if (freesArrays()) cc_.mov(memoryBefore_, wordAt(Layout::kMemory));
  cc_.cmp(x86::rsp, wordAt(Layout::kStack));
  cc_.jb(failure_);
  checkForStop();
}

void Translator::checkForStop() {
  const Gp request = cc_.newIntPtr();
  cc_.mov(request, wordAt(Layout::kStop));
  cc_.cmp(x86::ptr_8(request), 0);
  cc_.jne(failure_);
}

// A unit that gives no array needs none of those that it has made.
bool Translator::freesArrays() const {
  return makesArrays_ && std::ranges::none_of(results(), &Type::isArray);
}

// From here on the unit may write to it.
void Translator::makeOwn(int32_t array) {
  callCpp(&copyArray, words(array), cells_, words(array), asmjit::Imm(bytesOf(of(array).element)));
  cc_.test(words(array), words(array));
  cc_.jz(exit());
  moveArray(array, words(array));
}

bool Translator::returnResults(const Instruction& i) {
  const bool isValue = i.op == Op::returnValue;
  const std::span<const int32_t> operands = isValue ? std::span(&i.b, 1) : std::span(code().outputs);
  if (!giveResults(operands)) return false;
  for (const int32_t operand : operands) {
    if (!of(operand).isArray() || of(operand).isWritable) continue;
    makesArrays_ = true;
    make([&] { makeOwn(arrayAt(operand)); });
  }
  return make([&] {
    for (size_t k = 1; k < operands.size(); ++k) saveAt(Layout::result(static_cast<int32_t>(k)), passed(operands[k]));
    if (freesArrays()) cc_.mov(wordAt(Layout::kMemory), memoryBefore_);
    cc_.ret(passed(operands.front()));
  });
}

// What is given then means nothing.
void Translator::emitFailure() {
  cc_.bind(failure_);
  cc_.mov(wordAt(Layout::kFailed), 1);
  const BaseReg nothing = newPassed(results().front().held);
  if (nothing.isVec()) cc_.vmovsd(nothing.as<Xmm>(), memory(0));
  else cc_.mov(nothing.as<Gp>(), 0);
  cc_.ret(nothing);
}

// A function of the words, which calls the unit.
void Translator::emitEntry() {
  asmjit::FuncNode* function = cc_.addFunc(asmjit::FuncSignatureT<void, void*>());
  function->frame().setAvxEnabled();
  entry_ = function->label();
  cells_ = cc_.newIntPtr("cells");
  function->setArg(0, cells_);
  std::vector<BaseReg> arguments;
  for (const Type& kind : inputs()) {
    arguments.push_back(loaded(kind.held, Layout::of(static_cast<int32_t>(arguments.size()))));
  }
  saveAt(Layout::result(0), invoke(nullptr, inputs(), results(), arguments));
  cc_.ret();
  cc_.endFunc();
}

// ---- Calls

// x = f(x) in a unit: it lets go of an array of its own, so that the other one writes in place.
bool Translator::isHandedOver(const Instruction& i, int32_t operand) {
  if (i.op != Op::call || !isUnit()) return false;
  const int32_t slot = arrayAt(operand);
  const auto& slots = siteOf(i).handedOver;
  return std::ranges::find(slots, slot) != slots.end() && of(slot).isWritable && aliasesOf(slot) == 1;
}

// What the name means does not change: nobody but the unit itself could give it a value.
bool Translator::findUnit(const Instruction& i) {
  const Type base = of(i.b);
  if (base.held != Held::other || base.isChanged) return false;
  Kinds kinds;
  std::vector<int32_t> usedUp;
  for (const int32_t operand : argumentsOf(code(), i)) {
    const Type type = of(operand);
    if (!isPassed(type)) return false;
    kinds.push_back(kindOf(type, type.isArray() && isHandedOver(i, operand)));
    if (kinds.back().isWritable) usedUp.push_back(arrayAt(operand));
    if (isTemporary(operand)) usedUp.push_back(operand);
  }
  if (!findCall(i, std::move(kinds))) return false;
  for (const int32_t reg : usedUp) learn(reg, {.isChanged = true});
  return true;
}

bool Translator::callUnit(const Instruction& i) {
  if (!emits_ && !findUnit(i)) return false;
  const KnownCall& known = calls()[static_cast<size_t>(call_)];
  const Kinds& results = resultsOf(known);
  const std::vector<int32_t>* behind = slotsBehind(code(), i, i.a);
  const std::span<const int32_t> targets = behind ? std::span(*behind) : std::span(&i.a, 1);
  if (behind ? targets.size() > results.size() : results.size() != 1) return false;
  for (const Type& type : results) {
    if (type.isArray() && !isUnit()) return false;
    makesArrays_ = makesArrays_ || type.isArray();
  }
  for (size_t k = 0; k < targets.size(); ++k) {
    if (!define(targets[k], results[k])) return false;
  }
  if (behind) length_ = 2;
  return make([&] { emitCall(known, targets); });
}

// Where the call fails the register code does it again.
void Translator::emitCall(const KnownCall& known, std::span<const int32_t> targets) {
  const Kinds& results = resultsOf(known);
  std::vector<BaseReg> arguments;
  for (const int32_t operand : known.operands) arguments.push_back(passed(operand));
  for (int32_t at = known.firstCaptured; arguments.size() < known.inputs.size(); at += 8 * Layout::kWords) {
    arguments.push_back(loaded(known.inputs[arguments.size()].held, at));
  }
  BaseReg result = invoke(known.function.get(), known.inputs, results, arguments);
  cc_.cmp(wordAt(Layout::kFailed), 0);
  cc_.jne(exit());
  for (size_t k = 0; k < targets.size(); ++k) {
    const bool isReal = results[k].held == Held::real;
    if (k > 0) result = loaded(isReal ? Held::real : Held::integer, Layout::result(static_cast<int32_t>(k)));
    if (isReal) setReal(targets[k], result.as<Xmm>());
    else if (results[k].isArray()) moveArray(targets[k], result.as<Gp>());
    else cc_.mov(whole(targets[k]), result.as<Gp>());
  }
}

}  // namespace kelo::native
