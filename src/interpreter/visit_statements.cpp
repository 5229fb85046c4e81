// Statement lists, statements, and what becomes of a statement's result: it is shown, and a plain
// expression sets `ans`.
#include "grammar/kelo_node.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

std::unique_ptr<Code> Visitor::lowerStatements(KeloNode* list, std::span<const Name> inputs,
                                               std::span<const Name> outputs, bool areGiven,
                                               const BuiltinTable& builtins) {
  Visitor visitor(builtins);
  visitor.emit(Op::begin, nullptr);
  for (const Name name : inputs) visitor.assigned_[name.id()] = true;
  if (list) visitor.findAssigned(*list);
  for (const Name name : inputs) {
    const int32_t slot = visitor.slotOf(name);
    if (areGiven) visitor.setKnown(slot);
  }
  for (const Name name : outputs) visitor.slotOf(name);
  if (list) visitor.visitStat_list(*list);
  for (const int32_t jump : visitor.returns_) visitor.jumpHere(jump);
  visitor.emit(Op::returnFunction, list);
  return visitor.finished();
}

std::unique_ptr<Code> Visitor::lowerExpression(KeloNode& expression, std::span<const Name> names, bool areGiven,
                                               int outputs, const BuiltinTable& builtins) {
  Visitor visitor(builtins);
  visitor.emit(Op::begin, nullptr);
  for (const Name name : names) visitor.assigned_[name.id()] = true;
  visitor.findAssigned(expression);
  for (const Name name : names) {
    const int32_t slot = visitor.slotOf(name);
    if (areGiven) visitor.setKnown(slot);
  }
  try {
    const int32_t value = visitor.visit(expression, outputs);
    visitor.emit(Op::returnValue, &expression, 0, value);
  } catch (const NestedTooDeeply& problem) {
    visitor.emit(Op::fail, problem.node, visitor.textIndex(text::kRecursionTooDeep), 0, 0, 0, 0, 1);
  }
  return visitor.finished();
}

// The place of an error in a list itself is its start, and a request to stop wins over what the
// statement gave.
void Visitor::visitStat_list(KeloNode& list) {
  resolved(list);
  const int32_t begin = here();
  for (KeloNode* statement : static_cast<ListDetails&>(*list.cache.details).nodes) {
    resolved(*statement);
    visitStatement(*statement, list);
  }
  addRegion(Region::Kind::list, begin, list);
}

void Visitor::visitStatement(KeloNode& statement, KeloNode& list) {
  const int32_t begin = here();
  const int32_t mark = top_;
  const size_t loops = loops_.size();
  try {
    switch (statement.cache.kind) {
      case NodeKind::assignment: visitAssignment(statement); break;
      case NodeKind::expression: visitExpression(statement); break;
      case NodeKind::forLoop: visitForLoop(statement); break;
      case NodeKind::whileLoop: visitWhileLoop(statement); break;
      case NodeKind::if_: visitIf(statement); break;
      case NodeKind::switch_: visitSwitch(statement); break;
      case NodeKind::break_: return visitBreak(list);
      case NodeKind::continue_: return visitContinue(list);
      case NodeKind::return_: return visitReturn(list);
      default: emit(Op::fail, &statement, textIndex(text::kUnexpectedError)); break;
    }
  } catch (const NestedTooDeeply& problem) {
    code_->instructions.resize(static_cast<size_t>(begin));
    code_->places.resize(static_cast<size_t>(begin));
    std::erase_if(code_->regions, [&](const Region& region) { return region.begin >= begin; });
    loops_.resize(loops);
    site_ = -1;
    emit(Op::fail, problem.node, textIndex(text::kRecursionTooDeep), 0, 0, 0, 0, 1);
  }
  top_ = mark;
  emit(Op::poll, &list);
}

// A variable that is named alone is shown under its own name and leaves `ans` as it is. Whether
// there is one is asked when the name has been evaluated.
void Visitor::visitExpression(KeloNode& statement) {
  const NodeCache& cache = statement.cache;
  const bool shows = cache.shows;
  const int32_t value = visit(*cache.first, 0);
  if (cache.name.isEmpty()) {
    emit(Op::answer, &statement, slotOf(Name::intern("ans")), value, 0, 0, 0, shows);
  } else if (const int32_t slot = slotOf(cache.name); value != slot || shows) {
    emit(Op::nameStatement, &statement, slot, value, slotOf(Name::intern("ans")), 0, 0, shows);
  }
}

void Visitor::visitAssignment(KeloNode& statement) {
  KeloNode& assignment = *statement.cache.first;
  const bool shows = statement.cache.shows;
  switch (assignment.cache.assignment) {
    case AssignmentForm::list: return visitVar_list_assignment(assignment, shows);
    case AssignmentForm::variable: return visitVar_assignment(assignment, shows);
    case AssignmentForm::elements: return visitSubarray_assignment(assignment, shows);
    case AssignmentForm::chain: return visitStructure_assignment2(assignment, shows);
  }
}

}  // namespace kelo
