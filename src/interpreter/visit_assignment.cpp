// Assignments: to a variable, to a list of them, to elements, and along a chain of fields. The
// right side is evaluated first, then the subscripts; a variable is changed last, so a failure
// leaves it as it was.
#include <algorithm>

#include "grammar/kelo_node.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"

namespace kelo {
namespace {

// A literal pair of brackets on the right side deletes.
bool isDeletion(KeloNode& right) { return right.cache.kind == NodeKind::emptyMat; }

}  // namespace

// The value of the right side as one value; what it says where there is none.
int32_t Visitor::rightSide(KeloNode& assignment, const char* withoutValue) {
  KeloNode& right = *assignment.cache.second;
  const int32_t value = visit(right, 1);
  if (mayBeMany(right) && isTemporary(value)) emit(Op::firstOf, &assignment, value, value, textIndex(withoutValue));
  return value;
}

// x = f(x), [x, y] = f(x, y): the function may have the only reference to such an argument.
void Visitor::handOver(std::span<const int32_t> targets) {
  const Instruction& last = code_->instructions.back();
  if (last.op != Op::call) return;
  Site& made = site(last.d);
  for (KeloNode* argument : made.arguments) {
    if (argument->cache.kind != NodeKind::id) continue;
    const int32_t slot = slotOf(argument->cache.name);
    if (isKnown(slot) && std::ranges::find(targets, slot) != targets.end()) made.handedOver.push_back(slot);
  }
}

// What the instruction before reads where it is simple goes to the slot at once.
void Visitor::emitAssign(KeloNode& assignment, int32_t slot, int32_t value) {
  Instruction& last = code_->instructions.back();
  const bool isElement = last.op == Op::index1 || last.op == Op::index2 || last.op == Op::call;
  if (last.a == value && isElement && slot < UINT16_MAX) last.flag = static_cast<uint16_t>(slot + 1);
  if (last.a == value && last.op == Op::fieldOfName) last.d = slot + 1;
  emit(Op::assign, &assignment, slot, value);
}

void Visitor::visitVar_assignment(KeloNode& assignment, bool shows) {
  KeloNode& right = *assignment.cache.second;
  resolved(right);
  const int32_t slot = slotOf(assignment.cache.name);
  if (lowerAppendText(right, slot)) {
    // The whole statement.
  } else if (mayBeMany(right)) {
    const int32_t value = visit(right, 1);
    handOver({&slot, 1});
    emitAssign(assignment, slot, value);
  } else if (!lowerAppend(right, slot)) {
    into(right, slot, 1);
  }
  if (shows) emit(Op::showName, &assignment, slot);
  setKnown(slot);
}

void Visitor::visitVar_list_assignment(KeloNode& assignment, bool shows) {
  const auto& names = static_cast<ListDetails&>(*assignment.cache.details).names;
  const int32_t value = visit(*assignment.cache.second, static_cast<int>(names.size()));
  const int32_t made = newSite(assignment, Name(), 0, {}, static_cast<int>(names.size()));
  for (const Name name : names) site(made).slots.push_back(slotOf(name));
  handOver(site(made).slots);
  emit(Op::assignList, &assignment, 0, value, 0, made, 0, shows);
  for (const int32_t slot : std::vector<int32_t>(site(made).slots)) setKnown(slot);
}

void Visitor::visitSubarray_assignment(KeloNode& assignment, bool shows) {
  KeloNode& right = *assignment.cache.second;
  resolved(right);
  const bool deletes = isDeletion(right);
  int32_t value = 0;
  if (!deletes) {
    const int32_t begin = here();
    value = visit(right, 1);
    addRegion(Region::Kind::message, begin, assignment, text::kAssignedEvaluationFailed);
    if (mayBeMany(right) && isTemporary(value)) {
      emit(Op::firstOf, &assignment, value, value, textIndex(text::kAssignedInvalidType));
    }
  }
  const auto& arguments = static_cast<CallDetails&>(*assignment.cache.details).args;
  const int32_t slot = slotOf(assignment.cache.name);
  const int32_t made = newSite(assignment, assignment.cache.name, slot, arguments, kNoOutputs);
  site(made).isTarget = true;
  bool areSimple = true;
  for (KeloNode* each : arguments) areSimple = areSimple && isSimple(*each);
  if (!areSimple) emit(Op::checkTarget, &assignment, slot);
  if (arguments.size() <= 2 && !deletes) {
    const int32_t i = argument(made, 0, kNowhere);
    const int32_t j = arguments.size() == 2 ? argument(made, 1, kNowhere) : 0;
    if (arguments.size() == 1) emit(Op::store1, &assignment, slot, i, value, made);
    else emit(Op::store2, &assignment, slot, i, j, made, value);
  } else {
    argumentsInRow(made);
    emit(deletes ? Op::erase : Op::store, &assignment, slot, site(made).first, value, made);
  }
  if (shows) emit(Op::showName, &assignment, slot);
  setKnown(slot);
}

void Visitor::visitStructure_assignment2(KeloNode& assignment, bool shows) {
  const auto& chain = static_cast<ChainDetails&>(*assignment.cache.details);
  KeloNode& right = *assignment.cache.second;
  resolved(right);
  const bool deletes = isDeletion(right) && chain.fields.back().hasArgs;
  const int32_t slot = slotOf(assignment.cache.name);
  if (deletes) {
    lowerChain(assignment, chain, kNowhere);
  } else {
    const int32_t value = rightSide(assignment, text::kNoValueToAssign);
    const FieldDetails& first = chain.fields.front();
    const bool isShort = chain.fields.size() == 1 && !first.expression;
    const int32_t name = isShort ? fieldIndex(first.name) : 0;
    if (isShort && !chain.hasArgs && !first.hasArgs) {
      emit(Op::setField, &assignment, slot, name, value);
    } else if (chain.fields.size() == 1 && first.expression && !chain.hasArgs && !first.hasArgs) {
      emit(Op::setNamedField, &assignment, slot, fieldNameOperand(first, assignment), value);
    } else if (chain.isPath()) {
      const int32_t made = newSite(assignment, assignment.cache.name, slot, {}, kNoOutputs);
      for (const FieldDetails& field : chain.fields) site(made).fields.push_back(field.name);
      emit(Op::setPath, &assignment, slot, 0, value, made);
    } else if (isShort && chain.hasArgs && chain.args.size() == 1 && !first.hasArgs) {
      const int32_t made = newSite(assignment, assignment.cache.name, slot, chain.args, kNoOutputs);
      site(made).isTarget = true;
      const int32_t i = argument(made, 0, kNowhere);
      emit(Op::setElementField, &assignment, slot, name, i, made, value);
    } else if (isShort && !chain.hasArgs && first.args.size() == 1 && arePlain(first.args)) {
      emit(Op::setFieldElement, &assignment, slot, name, visit(*first.args[0]), 0, value);
    } else if (isShort && !chain.hasArgs && first.args.size() == 2 && arePlain(first.args)) {
      const int32_t row = visit(*first.args[0]);
      emit(Op::setFieldElement2, &assignment, slot, name, row, visit(*first.args[1]), value);
    } else {
      lowerChain(assignment, chain, value);
    }
  }
  if (shows) emit(Op::showName, &assignment, slot);
  setKnown(slot);
}

// The general way: the chain is built from the left, and asked for the extents of what it has
// reached.
void Visitor::lowerChain(KeloNode& assignment, const ChainDetails& chain, int32_t value) {
  const int32_t slot = slotOf(assignment.cache.name);
  emit(Op::chainBegin, &assignment, slot);
  if (chain.hasArgs) lowerChainIndices(assignment, chain.args);
  for (const FieldDetails& field : chain.fields) {
    const int32_t mark = top_;
    if (field.expression) {
      emit(Op::chainNamedField, &assignment, 0, fieldNameOperand(field, assignment));
    } else {
      emit(Op::chainField, &assignment, 0, fieldIndex(field.name));
    }
    top_ = mark;
    if (field.hasArgs) lowerChainIndices(assignment, field.args);
  }
  if (value == kNowhere) emit(Op::chainErase, &assignment, slot);
  else emit(Op::chainAssign, &assignment, slot, value);
}

// Whether evaluating the subscripts can neither fail nor do anything, and none is a colon.
bool Visitor::arePlain(const Nodes& arguments) {
  return std::ranges::all_of(arguments, [&](KeloNode* each) {
    return isSimple(*each) && each->cache.kind != NodeKind::colonExpr;
  });
}

void Visitor::lowerChainIndices(KeloNode& assignment, const Nodes& arguments) {
  const int32_t mark = top_;
  const int32_t made = newSite(assignment, assignment.cache.name, slotOf(assignment.cache.name), arguments, kNoOutputs);
  site(made).isTarget = site(made).isChain = true;
  if (!arePlain(arguments)) {
    emit(Op::checkChain, &assignment, slotOf(assignment.cache.name));
  }
  argumentsInRow(made);
  emit(Op::chainIndices, &assignment, 0, site(made).first, 0, made);
  top_ = mark;
}

}  // namespace kelo
