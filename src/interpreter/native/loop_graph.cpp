#include "interpreter/native/loop_graph.h"

#include <algorithm>
#include <cmath>

#include "interpreter/native/typing.h"

namespace kelo::native {
namespace {

constexpr size_t kMostNodes = 3000, kMostVersions = 6;

bool isWholeNumber(double x) { return std::trunc(x) == x; }

// What is true on both ways. True when that is less than before.
bool meet(State& state, const State& other) {
  bool changes = false;
  for (size_t k = 0; k < state.size(); ++k) {
    Type& type = state[k];
    const Type before = type;
    type.isWhole = type.isWhole && other[k].isWhole;
    type.isPlain = type.isPlain && other[k].isPlain;
    type.isWritable = type.isWritable && other[k].isWritable;
    type.isChanged = type.isChanged || other[k].isChanged;
    changes = changes || !(type == before);
  }
  return changes;
}

bool areSameKinds(const State& a, const State& b) {
  for (size_t k = 0; k < a.size(); ++k) {
    if (!a[k].isSameKind(b[k])) return false;
  }
  return true;
}

}  // namespace

Type typeOf(const Storable& value) {
  const NumericArray* numeric = value.numeric();
  if (numeric == nullptr) return {};
  if (!numeric->isScalar()) {
    return {.held = Held::array,
            .element = numeric->kind(),
            .isMatrix = numeric->size().isMatrix(),
            .isWritable = numeric->isUnshared()};
  }
  switch (numeric->kind()) {
    case Kind::Double: return real(isWholeNumber(numeric->asDouble().scalar()));
    case Kind::Int: return scalar(Held::integer);
    case Kind::Logical: return scalar(Held::logical);
    case Kind::Complex: return scalar(Held::complex);
    case Kind::Char: return {.held = Held::character, .isPlain = numeric->asChar().scalar().word() < 0x80};
  }
  return {};
}

LoopGraph::LoopGraph(const Code& code, const Liveness& liveness, int32_t back, const Storable* registers,
                     const Context& context)
    : code_(code),
      liveness_(liveness),
      context_(context),
      values_(registers),
      begin_(jumpTarget(code.instructions[static_cast<size_t>(back)])),
      end_(back),
      laneOf_(static_cast<size_t>(code.registers), -1),
      nodesAt_(static_cast<size_t>(back - begin_) + 2) {
  findLanes();
  State state;
  for (const int32_t r : registers_) {
    state.push_back(liveness.isLive(begin_, r) ? native::typeOf(registers[r]) : Type{});
  }
  nodeFor(begin_, state);
  build();
}

LoopGraph::LoopGraph(const Code& code, const Liveness& liveness, const Kinds& inputs, const Context& context)
    : code_(code),
      liveness_(liveness),
      context_(context),
      values_(nullptr),
      begin_(0),
      end_(static_cast<int32_t>(code.instructions.size()) - 1),
      laneOf_(static_cast<size_t>(code.registers), -1),
      nodesAt_(code.instructions.size() + 1),
      inputs_(inputs) {
  findLanes();
  State state;
  for (const int32_t r : registers_) {
    const bool isInput = static_cast<size_t>(r) < inputs.size();
    state.push_back(isInput ? inputs[static_cast<size_t>(r)] : Type{});
  }
  nodeFor(begin_, state);
  build();
}

void LoopGraph::build() {
  while (true) {
    while (!waiting_.empty() && !isTooLarge_) {
      const int32_t node = waiting_.back();
      waiting_.pop_back();
      visit(node);
    }
    const bool isKnown = !results_.empty();
    for (const int32_t node : deferred_) {
      if (isKnown) waiting_.push_back(node);
      else nodes_[static_cast<size_t>(node)].isExit = nodes_[static_cast<size_t>(node)].isSurprise = true;
    }
    deferred_.clear();
    if (waiting_.empty() || isTooLarge_) return;
  }
}

void LoopGraph::findLanes() {
  Operands operands;
  const auto add = [&](const std::vector<int32_t>& list) {
    for (const int32_t r : list) {
      int32_t& lane = laneOf_[static_cast<size_t>(r)];
      if (lane >= 0) continue;
      lane = static_cast<int32_t>(registers_.size());
      registers_.push_back(r);
    }
  };
  for (int32_t pc = begin_; pc <= end_; ++pc) {
    findOperands(code_, code_.instructions[static_cast<size_t>(pc)], operands);
    add(operands.reads);
    add(operands.writes);
  }
}

// Temporaries that nobody reads any more hold nothing.
void LoopGraph::forgetUnneeded(int32_t pc, State& state) const {
  for (size_t k = 0; k < state.size(); ++k) {
    if (!liveness_.isLive(pc, registers_[k])) state[k] = {};
  }
}

int32_t LoopGraph::nodeFor(int32_t pc, const State& before) {
  State state = before;
  forgetUnneeded(pc, state);
  const bool isOutside = pc < begin_ || pc > end_;
  auto& versions = nodesAt_[isOutside ? nodesAt_.size() - 1 : static_cast<size_t>(pc - begin_)];
  for (const int32_t each : versions) {
    Node& node = nodes_[static_cast<size_t>(each)];
    if (node.pc != pc || !areSameKinds(node.state, state)) continue;
    if (meet(node.state, state) && !isOutside) waiting_.push_back(each);
    return each;
  }
  const auto made = static_cast<int32_t>(nodes_.size());
  isTooLarge_ = isTooLarge_ || nodes_.size() >= kMostNodes;
  nodes_.push_back({.pc = pc, .state = std::move(state)});
  Node& node = nodes_.back();
  node.isSurprise = !isOutside && versions.size() >= kMostVersions;
  node.isExit = isOutside || node.isSurprise;
  versions.push_back(made);
  if (!node.isExit) waiting_.push_back(made);
  return made;
}

void LoopGraph::visit(int32_t which) {
  const int32_t pc = nodes_[static_cast<size_t>(which)].pc;
  const Instruction& i = code_.instructions[static_cast<size_t>(pc)];
  State state = nodes_[static_cast<size_t>(which)].state;
  Typing typing(*this, state);
  int32_t next = -1, jump = -1;
  awaitsResult_ = false;
  bool canDo = typing.step(i);
  if (awaitsResult_) return deferred_.push_back(which);
  const bool endsInExit = i.op == Op::arrayStep;  // the register code lets go of the array
  if (canDo && fallsThrough(i) && !endsInExit) next = nodeFor(pc + typing.length(), state);
  if (canDo && jumpTarget(i) >= 0) {
    canDo = typing.takeJump(i);
    if (canDo) jump = nodeFor(jumpTarget(i), state);
    closes_ = closes_ || (canDo && pc == end_);
  }
  closes_ = closes_ || (canDo && (i.op == Op::returnFunction || i.op == Op::returnValue));
  Node& node = nodes_[static_cast<size_t>(which)];
  if (!canDo) {
    node.isExit = node.isSurprise = true;
    if (obstacle_ < 0) obstacle_ = pc;
    return;
  }
  node.next = next;
  node.jump = jump;
  node.call = typing.call();
}

bool LoopGraph::giveResults(const State& state, std::span<const int32_t> operands) {
  std::vector<Held> given;
  for (const int32_t operand : operands) given.push_back(typeOf(state, operand).held);
  if (!isFunction() || given.empty() || given.size() > kMostResults) return false;
  if (!std::ranges::all_of(given, isGiven)) return false;
  if (results_.empty()) results_ = given;
  return results_ == given;
}

bool LoopGraph::mustNotBeArray(int32_t slot) {
  if (isFunction()) return true;  // it holds nothing
  if (values_[slot].isArray()) return false;
  if (std::ranges::find(noArrays_, slot) == noArrays_.end()) noArrays_.push_back(slot);
  return true;
}

int32_t LoopGraph::callOf(const Instruction& i, Kinds kinds) {
  const Target target = targetOf(context_, code_, i, values_);
  if (target.code == nullptr) return -1;
  for (const Storable& value : target.captured) kinds.push_back(kindOf(native::typeOf(value)));
  const auto pc = static_cast<int32_t>(&i - code_.instructions.data());
  for (size_t k = 0; k < calls_.size(); ++k) {
    if (calls_[k].pc == pc && calls_[k].inputs == kinds) return static_cast<int32_t>(k);
  }
  KnownCall made{pc, target, argumentsOf(code_, i), targetsOf(code_, i), std::move(kinds), nullptr, capturedWords_};
  const bool isItself =
      isFunction() && target.code == &code_ && target.functions == context_.functions && made.inputs == inputs_;
  if (isItself) {
    awaitsResult_ = results_.empty();
    if (awaitsResult_) return -1;
  } else {
    Context inside = context_;
    inside.functions = target.functions;
    made.function = functionFor(inside, *target.code, made.inputs);
    if (!made.function) return -1;
  }
  capturedWords_ += LaneWords::kWords * static_cast<int32_t>(target.captured.size());
  calls_.push_back(std::move(made));
  return static_cast<int32_t>(calls_.size()) - 1;
}

Type LoopGraph::typeOf(const State& state, int32_t operand) const {
  if (operand < 0) {
    const Type type = native::typeOf(code_.constants[static_cast<size_t>(~operand)]);
    return type.isScalar() ? type : Type{};
  }
  const int32_t lane = laneOf(operand);
  return lane < 0 ? Type{} : state[static_cast<size_t>(lane)];
}

int32_t LoopGraph::arrayLane(const State& state, int32_t reg) const {
  const int32_t lane = laneOf(reg);
  const Type& type = state[static_cast<size_t>(lane)];
  return type.held == Held::alias ? type.source : lane;
}

}  // namespace kelo::native
