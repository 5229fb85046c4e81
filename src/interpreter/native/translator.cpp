#include "interpreter/native/translator.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

namespace {

bool quickCallIsTranslated(QuickCall f) {
  return f < QuickCall::strcmp || f == QuickCall::lower || f == QuickCall::upper;
}

}  // namespace

Translator::Handler Translator::handlerOf(const Code& code, const Instruction& i) {
  if (i.op <= Op::or_) return &Translator::binary;
  switch (i.op) {
    case Op::unaryPlus: case Op::unaryMinus: case Op::not_: return &Translator::unary;
    case Op::begin: case Op::poll: return &Translator::nothing;
    case Op::move: case Op::loadName: case Op::assign: return &Translator::copy;
    case Op::firstOf: case Op::checkElement: case Op::checkRange: case Op::checkTarget: case Op::checkField:
      return &Translator::check;
    case Op::checkSwitch: return &Translator::checkSwitch;
    case Op::index: case Op::call: return &Translator::callUnit;
    case Op::assignList: return i.flag == 0 ? &Translator::refuse : nullptr;  // done by a call before it
    case Op::index1: case Op::index2: return &Translator::index;
    case Op::store1: case Op::store2: return &Translator::store;
    case Op::appendRow: return i.c == 1 ? &Translator::append : nullptr;
    case Op::endOf: case Op::checkExtent: return &Translator::endOf;
    case Op::checkArgument: return &Translator::checkArgument;
    case Op::quickCall:
      if (static_cast<QuickCall>(i.e) >= QuickCall::ones) return &Translator::filled;
      return quickCallIsTranslated(static_cast<QuickCall>(i.e)) ? &Translator::quickCall : nullptr;
    case Op::builtin: return isIntrinsic(code.sites[static_cast<size_t>(i.d)]) ? &Translator::builtin : nullptr;
    case Op::checkStructure: return &Translator::checkStructure;
    case Op::fieldOfName: case Op::fieldPath: return &Translator::readField;
    case Op::setField: case Op::setPath: return &Translator::writeField;
    case Op::setFieldElement: case Op::setFieldElement2: return &Translator::writeFieldElement;
    case Op::elementField: return &Translator::readElementField;
    case Op::setElementField: return &Translator::writeElementField;
    case Op::jump: return &Translator::jump;
    case Op::jumpOnTruth: return &Translator::jumpOnTruth;
    case Op::jumpOnEqual: case Op::jumpOnUnequal: case Op::jumpOnLe: case Op::jumpOnLt: case Op::jumpOnGe:
    case Op::jumpOnGt: case Op::caseJump:
      return &Translator::jumpOnComparison;
    case Op::forRange: return &Translator::forRange;
    case Op::rangeStep: return &Translator::rangeStep;
    case Op::arrayStep: return &Translator::arrayStep;
    case Op::returnFunction: case Op::returnValue: return &Translator::returnResults;
    default: return nullptr;
  }
}

bool Translator::mayBeNative(const Code& code, const Instruction& i) {
  const Handler handler = handlerOf(code, i);
  return handler != nullptr && handler != &Translator::filled;
}

bool Translator::step(const Instruction& i) {
  const Handler handler = handlerOf(code(), i);
  return handler && (this->*handler)(i);
}

bool Translator::emit(asmjit::CodeHolder& holder) {
  holder.attach(&cc_);
  emits_ = true;
  cells_ = cc_.newIntPtr("cells");
  virtuals_.resize(static_cast<size_t>(registerCount()));
  labels_.resize(nodes().size());
  exitLabels_.resize(nodes().size());
  for (Label& label : labels_) label = cc_.newLabel();
  orderNodes();
  isUnit() ? enterUnit() : enterLoop();
  for (size_t k = 0; k < order_.size(); ++k) emitNode(k);
  for (const auto& make : aside_) make();
  isUnit() ? emitFailure() : emitExits();
  cc_.endFunc();
  if (isUnit()) emitEntry();
  return cc_.finalize() == asmjit::kErrorOk;
}

// Each node before the one that follows it, where that has no place yet.
void Translator::orderNodes() {
  std::vector<bool> isPlaced(nodes().size());
  std::vector<int32_t> waiting{0};
  while (!waiting.empty()) {
    int32_t which = waiting.back();
    waiting.pop_back();
    while (which >= 0 && !isPlaced[static_cast<size_t>(which)]) {
      isPlaced[static_cast<size_t>(which)] = true;
      order_.push_back(which);
      const Node& node = nodes()[static_cast<size_t>(which)];
      if (node.isExit) break;
      if (node.next >= 0 && node.jump >= 0) waiting.push_back(node.jump);
      which = node.next >= 0 ? node.next : node.jump;
    }
  }
}

void Translator::emitNode(size_t position) {
  node_ = order_[position];
  following_ = position + 1 < order_.size() ? order_[position + 1] : -1;
  cc_.bind(labels_[static_cast<size_t>(node_)]);
  if (node().isExit) {
    cc_.jmp(exit());
    return;
  }
  state_ = node().state;
  call_ = node().call;
  step(code().instructions[static_cast<size_t>(node().pc)]);
  if (node().next >= 0 && node().next != following_) cc_.jmp(labels_[static_cast<size_t>(node().next)]);
}

// ---- Entry and exits of a loop

void Translator::enterLoop() {
  asmjit::FuncNode* function = cc_.addFunc(asmjit::FuncSignatureT<int64_t, void*>());
  function->frame().setAvxEnabled();
  function->setArg(0, cells_);
  budget_ = newWhole();
  result_ = newWhole();
  done_ = cc_.newLabel();
  cc_.mov(budget_, wordAt(Layout::kBudget));
  const State& state = nodes().front().state;
  for (int32_t r = 0; r < registerCount(); ++r) {
    if (isTouched(r)) load(r, state[static_cast<size_t>(r)]);
  }
}

asmjit::Label Translator::exit() { return exitOf(node_); }

asmjit::Label Translator::exitOf(int32_t node) {
  if (isUnit()) return failure_;
  Label& label = exitLabels_[static_cast<size_t>(node)];
  if (!label.isValid()) {
    label = cc_.newLabel();
    exits_.push_back(node);
  }
  return label;
}

// What has changed goes into its words.
void Translator::emitExits() {
  for (size_t k = 0; k < exits_.size(); ++k) {
    const auto which = static_cast<size_t>(exits_[k]);
    const State& state = nodes()[which].state;
    cc_.bind(exitLabels_[which]);
    for (int32_t r = 0; r < registerCount(); ++r) {
      if (state[static_cast<size_t>(r)].isChanged) save(r, state[static_cast<size_t>(r)]);
    }
    cc_.mov(result_, static_cast<int64_t>(k));
    cc_.jmp(done_);
  }
  cc_.bind(done_);
  cc_.mov(wordAt(Layout::kBudget), budget_);
  cc_.ret(result_);
}

void Translator::load(int32_t reg, const Type& type) {
  const int32_t at = Layout::of(reg);
  if (type.held == Held::real || type.held == Held::complex) cc_.vmovsd(real(reg), wordAt(at));
  else if (type.isScalar()) cc_.mov(whole(reg), wordAt(at));
  if (type.held == Held::complex) cc_.vmovsd(real(reg, true), wordAt(at + 8));
  if (type.held == Held::array || type.held == Held::elements) cc_.mov(data(reg), arrayWord(reg, Layout::kData));
}

void Translator::save(int32_t reg, const Type& type) {
  const int32_t at = Layout::of(reg);
  if (type.held == Held::real || type.held == Held::complex) cc_.vmovsd(wordAt(at), real(reg));
  else if (type.isScalar()) cc_.mov(wordAt(at), whole(reg));
  if (type.held == Held::complex) cc_.vmovsd(wordAt(at + 8), real(reg, true));
}

// ---- Ways

// The jump of an instruction; one backwards ends a round.
void Translator::jumpTo(const Instruction& i) {
  const Label to = labels_[static_cast<size_t>(node().jump)];
  if (jumpTarget(i) > node().pc) {
    if (node().jump != following_ || node().next >= 0) cc_.jmp(to);
  } else if (isUnit()) {
    checkForStop();
    cc_.jmp(to);
  } else {
    cc_.sub(budget_, 1);
    cc_.jnz(to);
    cc_.jmp(exitOf(node().jump));
  }
}

void Translator::jumpOn(const Instruction& i, Condition condition) {
  if (jumpTarget(i) > node().pc) {
    cc_.j(condition, labels_[static_cast<size_t>(node().jump)]);
    return;
  }
  const Label past = cc_.newLabel();
  cc_.j(x86::negateCond(condition), past);
  jumpTo(i);
  cc_.bind(past);
}

// ---- Values

x86::Mem Translator::arrayWord(int32_t reg, int32_t word) {
  return isUnit() ? x86::ptr_64(words(reg), word) : wordAt(Layout::of(reg) + word);
}

}  // namespace kelo::native
