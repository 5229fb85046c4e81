#include "interpreter/native/graph.h"

#include <algorithm>

namespace kelo::native {
namespace {

constexpr size_t kMostNodes = 3000, kMostVersions = 6;

// What is true on both ways. True when that is less than before.
bool meet(State& state, const State& other) {
  bool changes = false;
  for (size_t k = 0; k < state.size(); ++k) {
    Type& type = state[k];
    const Type before = type;
    type.isWhole = type.isWhole && other[k].isWhole;
    type.isChanged = type.isChanged || other[k].isChanged;
    changes = changes || !(type == before);
  }
  return changes;
}

}  // namespace

Graph::Graph(const Context& context, const Code& code, const Liveness& liveness, int32_t back,
             Storable* registers)
    : context_(context),
      code_(code),
      liveness_(liveness),
      values_(registers),
      begin_(jumpTarget(code.instructions[static_cast<size_t>(back)])),
      end_(back),
      fields_(fieldsOf(code, begin_, back)),
      nodesAt_(code.instructions.size()),
      isTouched_(static_cast<size_t>(registerCount())) {
  for (int32_t r = 0; r < code.registers; ++r) state_.push_back(typeOf(registers[r]));
  for (const Field& field : fields_) state_.push_back(typeOf(field, placeOf(field, registers)));
}

Graph::Graph(const Context& context, const Code& code, const Liveness& liveness, const Kinds& inputs)
    : context_(context),
      code_(code),
      liveness_(liveness),
      values_(nullptr),
      begin_(0),
      end_(static_cast<int32_t>(code.instructions.size()) - 1),
      inputs_(inputs),
      nodesAt_(code.instructions.size()),
      isTouched_(static_cast<size_t>(code.registers)) {
  state_ = inputs;
  state_.resize(static_cast<size_t>(code.registers));
}

// ---- Nodes

bool Graph::explore() {
  nodeFor(begin_, state_);
  while (!waiting_.empty()) {
    if (nodes_.size() > kMostNodes) return false;
    const int32_t node = waiting_.back();
    waiting_.pop_back();
    visit(node);
    if (waiting_.empty()) resumeDeferred();
  }
  return closes_ && (!isUnit() || !results_.empty());
}

void Graph::resumeDeferred() {
  for (const int32_t each : deferred_) {
    Node& node = nodes_[static_cast<size_t>(each)];
    if (results_.empty()) node.isExit = node.isSurprise = true;
    else waiting_.push_back(each);
  }
  deferred_.clear();
}

// Temporaries that nobody reads any more hold nothing.
int32_t Graph::nodeFor(int32_t pc, State state) {
  for (int32_t r = code_.slotCount(); r < code_.registers; ++r) {
    if (!liveness_.isLive(pc, r)) state[static_cast<size_t>(r)] = {};
  }
  const bool isOutside = pc < begin_ || pc > end_;
  auto& versions = nodesAt_[static_cast<size_t>(pc)];
  for (const int32_t each : versions) {
    Node& node = nodes_[static_cast<size_t>(each)];
    if (!std::ranges::equal(node.state, state, &Type::isSameKind)) continue;
    if (meet(node.state, state) && !isOutside) waiting_.push_back(each);
    return each;
  }
  const auto made = static_cast<int32_t>(nodes_.size());
  const bool isSurprise = !isOutside && versions.size() >= kMostVersions;
  nodes_.push_back({.pc = pc, .state = std::move(state), .isExit = isOutside || isSurprise, .isSurprise = isSurprise});
  versions.push_back(made);
  if (!nodes_.back().isExit) waiting_.push_back(made);
  return made;
}

void Graph::visit(int32_t which) {
  const int32_t pc = nodes_[static_cast<size_t>(which)].pc;
  const Instruction& i = code_.instructions[static_cast<size_t>(pc)];
  state_ = nodes_[static_cast<size_t>(which)].state;
  int32_t next = -1, jump = -1;
  awaitsResult_ = false;
  call_ = -1;
  length_ = 1;
  bool canDo = step(i);
  if (awaitsResult_) return deferred_.push_back(which);
  const bool endsInExit = i.op == Op::arrayStep && !isUnit();  // the register code lets go of the array
  if (canDo && fallsThrough(i) && !endsInExit) next = nodeFor(pc + length_, state_);
  if (canDo && jumpTarget(i) >= 0 && i.op != Op::fieldPath) {  // which always goes there
    canDo = takeJump(i);
    if (canDo) jump = nodeFor(jumpTarget(i), state_);
  }
  Node& node = nodes_[static_cast<size_t>(which)];
  if (!canDo) {
    node.isExit = node.isSurprise = true;
    if (obstacle_ < 0) obstacle_ = pc;
    return;
  }
  closes_ = closes_ || (jump >= 0 && pc == end_) || i.op == Op::returnFunction || i.op == Op::returnValue;
  node.next = next;
  node.jump = jump;
  node.call = call_;
}

// ---- What registers hold

std::optional<double> Graph::numberAt(int32_t operand) const {
  const bool isNumber = operand < 0 && constantAt(operand).isDoubleScalar();
  return isNumber ? std::optional(constantAt(operand).doubleScalar()) : std::nullopt;
}

Type Graph::of(int32_t operand) {
  if (operand < 0) {
    const Type type = typeOf(constantAt(operand));
    return type.isScalar() ? type : Type{};
  }
  isTouched_[static_cast<size_t>(operand)] = true;
  return state_[static_cast<size_t>(operand)];
}

int32_t Graph::arrayAt(int32_t reg) const {
  const Type& type = state_[static_cast<size_t>(reg)];
  return type.held == Held::alias ? type.source : reg;
}

int64_t Graph::aliasesOf(int32_t reg) const {
  return std::ranges::count_if(state_, [&](const Type& t) { return t.held == Held::alias && t.source == reg; });
}

// A structure may not change while its fields are registers.
bool Graph::define(int32_t reg, Type type) {
  if (emits_) return true;
  if (aliasesOf(reg) > 0 || std::ranges::find(fields_, reg, &Field::slot) != fields_.end()) return false;
  isTouched_[static_cast<size_t>(reg)] = true;  // it may come out as it went in
  type.isChanged = true;
  learn(reg, type);
  return true;
}

void Graph::learn(int32_t reg, const Type& type) {
  if (!emits_) state_[static_cast<size_t>(reg)] = type;
}

bool Graph::hasFields(int32_t slot) const {
  return std::ranges::any_of(fields_, [&](const Field& each) { return each.slot == slot; }) && values_[slot].isStructure();
}

int32_t Graph::fieldRegister(const Instruction& i) const {
  if (fields_.empty()) return -1;
  const std::optional<Field> named = fieldOf(code_, i);
  const auto found = std::ranges::find_if(fields_, [&](const Field& each) { return named && each.isSame(*named); });
  return found == fields_.end() ? -1 : code_.registers + static_cast<int32_t>(found - fields_.begin());
}

bool Graph::mustNotBeArray(int32_t slot) {
  if (isUnit()) return true;  // it holds nothing
  if (values_[slot].isArray()) return false;
  if (std::ranges::find(noArrays_, slot) == noArrays_.end()) noArrays_.push_back(slot);
  return true;
}

// ---- Calls

std::vector<int32_t> argumentsOf(const Code& code, const Instruction& i) {
  if (i.op == Op::index1) return {i.c};
  if (i.op == Op::index2) return {i.c, i.e};
  const Site& site = code.sites[static_cast<size_t>(i.d)];
  std::vector<int32_t> list;
  for (int32_t k = 0; k < site.count; ++k) list.push_back(site.first + k);
  return list;
}

bool Graph::giveResults(std::span<const int32_t> operands) {
  Kinds given;
  for (const int32_t operand : operands) given.push_back(kindOf(of(operand), true));
  if (!isUnit() || given.empty() || given.size() > kMostResults || !std::ranges::all_of(given, isGiven)) return false;
  if (results_.empty()) results_ = given;
  return results_ == given;
}

bool Graph::findCall(const Instruction& i, Kinds kinds) {
  const Target target = targetOf(context_, code_, i, values_);
  if (target.code == nullptr) return false;
  for (const Storable& value : target.captured) kinds.push_back(kindOf(typeOf(value)));
  const auto pc = static_cast<int32_t>(&i - code_.instructions.data());
  call_ = 0;
  for (const KnownCall& each : calls_) {
    if (each.pc == pc && each.inputs == kinds) return true;
    ++call_;
  }
  KnownCall made{pc, target, argumentsOf(code_, i), std::move(kinds), nullptr, firstCaptured() + capturedWords_};
  callsItself_ = callsItself_ || target.code == &code_;
  if (isUnit() && target.code == &code_ && target.functions == context_.functions && made.inputs == inputs_) {
    awaitsResult_ = results_.empty();
    if (awaitsResult_) return false;
  } else {
    Context inside = context_;
    inside.functions = target.functions;
    made.function = versionFor(inside, *target.code, made.inputs);
    if (!made.function) return false;
  }
  capturedWords_ += 8 * Layout::kWords * static_cast<int32_t>(target.captured.size());
  calls_.push_back(std::move(made));
  return true;
}

}  // namespace kelo::native
