#include "interpreter/native/emitter.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

Emitter::Emitter(const LoopGraph& graph, asmjit::CodeHolder& holder)
    : graph_(graph), cc_(&holder), holder_(holder), lanes_(graph.registers().size()) {}

bool Emitter::emit() {
  cells_ = cc_.newIntPtr("cells");
  labels_.resize(graph_.nodes().size());
  exitLabels_.resize(graph_.nodes().size());
  for (Label& label : labels_) label = cc_.newLabel();
  orderNodes();
  if (graph_.isFunction()) enterUnit();
  else enterLanes();
  for (size_t k = 0; k < order_.size(); ++k) {
    following_ = k + 1 < order_.size() ? order_[k + 1] : -1;
    emitNode(order_[k]);
  }
  for (const auto& make : aside_) make();
  if (graph_.isFunction()) emitFailure();
  else emitExits();
  cc_.endFunc();
  if (graph_.isFunction()) emitEntry();
  return cc_.finalize() == asmjit::kErrorOk;
}

// Each node before the one that follows it, where that has no place yet.
void Emitter::orderNodes() {
  std::vector<bool> isPlaced(graph_.nodes().size());
  std::vector<int32_t> waiting{0};
  while (!waiting.empty()) {
    int32_t which = waiting.back();
    waiting.pop_back();
    while (which >= 0 && !isPlaced[static_cast<size_t>(which)]) {
      isPlaced[static_cast<size_t>(which)] = true;
      order_.push_back(which);
      const Node& node = graph_.nodes()[static_cast<size_t>(which)];
      if (node.isExit) break;
      if (node.next >= 0 && node.jump >= 0) waiting.push_back(node.jump);
      which = node.next >= 0 ? node.next : node.jump;
    }
  }
}

void Emitter::enterLanes() {
  asmjit::FuncNode* function = cc_.addFunc(asmjit::FuncSignatureT<int64_t, void*>());
  function->frame().setAvxEnabled();
  function->setArg(0, cells_);
  budget_ = cc_.newInt64("budget");
  result_ = cc_.newInt64("result");
  done_ = cc_.newLabel();
  cc_.mov(budget_, wordAt(LaneWords::kBudget));
  const State& state = graph_.nodes().front().state;
  for (int32_t lane = 0; lane < static_cast<int32_t>(state.size()); ++lane) {
    switch (state[static_cast<size_t>(lane)].held) {
      case Held::real: cc_.vmovsd(realLane(lane), wordAt(LaneWords::first(lane))); break;
      case Held::complex:
        cc_.vmovsd(realLane(lane), wordAt(LaneWords::first(lane)));
        cc_.vmovsd(realLane(lane, true), wordAt(LaneWords::second(lane)));
        break;
      case Held::logical: case Held::character:
        cc_.mov(wordLane(lane), x86::ptr_32(cells_, LaneWords::first(lane)));
        break;
      case Held::integer: cc_.mov(wholeLane(lane), wordAt(LaneWords::first(lane))); break;
      case Held::array: cc_.mov(dataLane(lane), arrayWord(lane, LaneWords::kData)); break;
      case Held::other: case Held::alias: break;
    }
  }
}

void Emitter::emitNode(int32_t which) {
  node_ = which;
  const Node& node = graph_.nodes()[static_cast<size_t>(which)];
  cc_.bind(labels_[static_cast<size_t>(which)]);
  if (node.isExit) {
    cc_.jmp(exit());
    return;
  }
  emitInstruction(graph_.code().instructions[static_cast<size_t>(node.pc)]);
  if (node.next >= 0 && node.next != following_) cc_.jmp(labels_[static_cast<size_t>(node.next)]);
}

asmjit::Label Emitter::exitOf(int32_t node) {
  if (graph_.isFunction()) return failure_;
  Label& label = exitLabels_[static_cast<size_t>(node)];
  if (!label.isValid()) {
    label = cc_.newLabel();
    exits_.push_back(node);
  }
  return label;
}

// What has changed goes into its words.
void Emitter::emitExits() {
  for (size_t k = 0; k < exits_.size(); ++k) {
    const auto which = static_cast<size_t>(exits_[k]);
    const State& state = graph_.nodes()[which].state;
    cc_.bind(exitLabels_[which]);
    for (int32_t lane = 0; lane < static_cast<int32_t>(state.size()); ++lane) {
      const Type& type = state[static_cast<size_t>(lane)];
      if (!type.isChanged) continue;
      const Mem to = wordAt(LaneWords::first(lane));
      switch (type.held) {
        case Held::real: cc_.vmovsd(to, realLane(lane)); break;
        case Held::complex:
          cc_.vmovsd(to, realLane(lane));
          cc_.vmovsd(wordAt(LaneWords::second(lane)), realLane(lane, true));
          break;
        case Held::logical: case Held::character:
          cc_.mov(x86::ptr_32(cells_, LaneWords::first(lane)), wordLane(lane));
          break;
        case Held::integer: cc_.mov(to, wholeLane(lane)); break;
        case Held::other: case Held::array: case Held::alias: break;
      }
    }
    cc_.mov(result_, static_cast<int64_t>(k));
    cc_.jmp(done_);
  }
  cc_.bind(done_);
  cc_.mov(wordAt(LaneWords::kBudget), budget_);
  cc_.ret(result_);
}

// ---- Ways

// To the node of the jump; one backwards ends a round.
void Emitter::jumpTo(const Instruction& i, const Node& node) {
  const Label to = labels_[static_cast<size_t>(node.jump)];
  if (jumpTarget(i) > node.pc) {
    if (node.jump != following_ || node.next >= 0) cc_.jmp(to);
    return;
  }
  if (graph_.isFunction()) {
    checkForStop();
    cc_.jmp(to);
    return;
  }
  cc_.sub(budget_, 1);
  cc_.jnz(to);
  cc_.jmp(exitOf(node.jump));
}

// `sense` false: where the comparison does not hold.
void Emitter::jumpWhen(Comparison comparison, bool sense, Label to) {
  const bool holds = sense != comparison.isNegated;
  if (!comparison.isOrdered) {
    cc_.j(holds ? comparison.holds : x86::negateCond(comparison.holds), to);
    return;
  }
  if (!holds) {
    cc_.jp(to);
    cc_.j(x86::negateCond(comparison.holds), to);
    return;
  }
  const Label past = cc_.newLabel();
  cc_.jp(past);
  cc_.j(comparison.holds, to);
  cc_.bind(past);
}

// The jump of an instruction, taken where the comparison gives `sense`.
void Emitter::jumpOn(const Instruction& i, Comparison comparison, bool sense) {
  if (jumpTarget(i) > node().pc) return jumpWhen(comparison, sense, labels_[static_cast<size_t>(node().jump)]);
  const Label past = cc_.newLabel();
  jumpWhen(comparison, !sense, past);
  jumpTo(i, node());
  cc_.bind(past);
}

// ---- Lanes

asmjit::x86::Xmm Emitter::realLane(int32_t lane, bool isImaginary) {
  LaneRegisters& registers = lanes_[static_cast<size_t>(lane)];
  Xmm& x = isImaginary ? registers.imaginary : registers.real;
  if (!x.isValid()) x = cc_.newXmmSd("%s%d", isImaginary ? "im" : "re", lane);
  return x;
}

asmjit::x86::Gp Emitter::wordLane(int32_t lane) {
  Gp& word = lanes_[static_cast<size_t>(lane)].word;
  if (!word.isValid()) word = cc_.newUInt32("word%d", lane);
  return word;
}

asmjit::x86::Gp Emitter::wholeLane(int32_t lane) {
  Gp& whole = lanes_[static_cast<size_t>(lane)].whole;
  if (!whole.isValid()) whole = cc_.newInt64("whole%d", lane);
  return whole;
}

asmjit::BaseReg Emitter::scalarLane(int32_t lane, Held held) {
  switch (held) {
    case Held::logical: case Held::character: return wordLane(lane);
    case Held::integer: return wholeLane(lane);
    default: return realLane(lane);
  }
}

// Of an array that was passed its caller has the words.
asmjit::x86::Mem Emitter::arrayWord(int32_t lane, int32_t word) const {
  const Gp& words = lanes_[static_cast<size_t>(lane)].words;
  return words.isValid() ? x86::ptr_64(words, word) : wordAt(LaneWords::first(lane) + word);
}

asmjit::x86::Gp Emitter::dataLane(int32_t lane) {
  Gp& data = lanes_[static_cast<size_t>(lane)].data;
  if (!data.isValid()) data = cc_.newIntPtr("data%d", lane);
  return data;
}

// ---- Instructions

void Emitter::emitInstruction(const Instruction& i) {
  if (i.op <= Op::or_) return binary(i);
  switch (i.op) {
    case Op::unaryMinus: case Op::not_: return unary(i);
    case Op::unaryPlus: case Op::move: case Op::loadName: case Op::assign: return move(i.a, i.b);
    case Op::index1: case Op::index2: case Op::index: case Op::call:
      if (node().call >= 0) return call(i);
      return read(i, i.op == Op::index2 ? i.e : 0);
    case Op::returnFunction: return giveResults(graph_.code().outputs);
    case Op::returnValue: return giveResults({&i.b, 1});
    case Op::store1: return write(i, 0, i.c);
    case Op::store2: return write(i, i.c, i.e);
    case Op::appendRow: return appendRow(i);
    case Op::endOf: case Op::checkExtent: return endOf(i);
    case Op::quickCall: return quickCall(i);
    case Op::builtin: return builtin(i);
    case Op::jump: return jumpTo(i, node());
    case Op::jumpOnTruth: {
      const Gp truth = asTruth(i.b);
      cc_.test(truth, truth);
      return jumpOn(i, {x86::CondCode::kNotZero}, i.flag != 0);
    }
    case Op::jumpOnEqual: case Op::jumpOnUnequal: case Op::jumpOnLe: case Op::jumpOnLt: case Op::jumpOnGe:
    case Op::jumpOnGt: {
      const int which = static_cast<int>(i.op) - static_cast<int>(Op::jumpOnEqual);
      const auto op = static_cast<BinaryOp>(static_cast<int>(BinaryOp::eqeq) + which);
      return jumpOn(i, compare(op, i.b, i.c), i.flag != 0);
    }
    case Op::caseJump: return jumpOn(i, compare(BinaryOp::eqeq, i.b, i.c), false);
    case Op::forRange: return forRange(i);
    case Op::rangeStep: return rangeStep(i);
    case Op::arrayStep: return arrayStep(i);
    default: return;  // checks that have been made
  }
}

}  // namespace kelo::native
