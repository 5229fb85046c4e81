// Loops and branches.
//
// A loop has its test at its end. The register of a range are four: its first number, its step, its
// count and the number of the round to come; those of an array two: the array and the round.
#include "grammar/kelo_node.h"
#include "interpreter/visitor.h"
#include "messages/catalogue/interpreter.h"

namespace kelo {

// NOTE: intended: a loop runs over single elements in storage order, also of a matrix, and a loop
// without statements does nothing at all.
void Visitor::visitForLoop(KeloNode& statement) {
  NodeCache& cache = statement.cache;
  KeloNode& elements = *cache.first;
  resolved(elements);
  const bool isRange = elements.cache.kind == NodeKind::matrixColon;
  const int32_t mark = top_;
  const int32_t state = newTemporary();
  for (int k = 1; k < (isRange ? 4 : 2); ++k) newTemporary();
  const int32_t bodyTop = top_;
  if (isRange) {
    const int32_t first = rangeOperands(elements);
    const auto count = static_cast<int32_t>(static_cast<ListDetails&>(*elements.cache.details).nodes.size());
    emit(Op::forRange, &elements, state, first, count);
  } else {
    emit(Op::forArray, &statement, state, visit(elements));
  }
  top_ = bodyTop;
  if (cache.second == nullptr) {
    top_ = mark;
    return;
  }
  const int32_t slot = slotOf(cache.name);
  const size_t known = knownTrail_.size();
  setKnown(slot);
  const int32_t toStep = emit(Op::jump, &statement);
  const int32_t body = here();
  loops_.push_back({false, {}, {}});
  visitStat_list(*cache.second);
  for (const int32_t jump : loops_.back().continues) jumpHere(jump);
  jumpHere(toStep);
  emit(isRange ? Op::rangeStep : Op::arrayStep, &statement, state, slot, body);
  for (const int32_t jump : loops_.back().breaks) jumpHere(jump);
  loops_.pop_back();
  forgetSince(known);
  top_ = mark;
}

void Visitor::visitWhileLoop(KeloNode& statement) {
  NodeCache& cache = statement.cache;
  if (cache.second == nullptr) return;
  const size_t known = knownTrail_.size();
  const int32_t toTest = emit(Op::jump, &statement);
  const int32_t body = here();
  loops_.push_back({true, {}, {}});
  visitStat_list(*cache.second);
  forgetSince(known);
  for (const int32_t jump : loops_.back().continues) jumpHere(jump);
  jumpHere(toTest);
  const int32_t back = jumpWhere(true, *cache.first, text::kWhileNotNumeric);
  code_->instructions[static_cast<size_t>(back)].a = body;
  for (const int32_t jump : loops_.back().breaks) jumpHere(jump);
  loops_.pop_back();
}

// A jump, yet to be aimed, that is taken where the condition is or is not true.
int32_t Visitor::jumpWhere(bool isTrue, KeloNode& condition, const char* notNumeric) {
  resolved(condition);
  const int32_t mark = top_;
  int32_t jump;
  const auto op = static_cast<BinaryOp>(condition.cache.op);
  if (condition.cache.kind == NodeKind::binaryOps && op >= BinaryOp::eqeq && op <= BinaryOp::gt) {
    const int32_t left = visit(*condition.cache.first);
    const int32_t right = visit(*condition.cache.second);
    const int n = static_cast<int>(op) - static_cast<int>(BinaryOp::eqeq);
    jump = emit(Op::jumpOnEqual + n, &condition, 0, left, right, 0, 0, isTrue);
  } else {
    const int32_t value = visit(condition);
    jump = emit(Op::jumpOnTruth, &condition, 0, value, textIndex(notNumeric), 0, 0, isTrue);
  }
  top_ = mark;
  return jump;
}

void Visitor::visitBreak(KeloNode& list) {
  emit(Op::poll, &list);
  if (loops_.empty()) emit(Op::fail, &list, textIndex(text::kBreakOutsideLoop));
  else loops_.back().breaks.push_back(emit(Op::jump, &list));
}

void Visitor::visitContinue(KeloNode& list) {
  emit(Op::poll, &list);
  if (loops_.empty()) emit(Op::fail, &list, textIndex(text::kBreakOutsideLoop));
  else loops_.back().continues.push_back(emit(Op::jump, &list));
}

// NOTE: intended: in the body of a `while` it only ends the present pass through it.
void Visitor::visitReturn(KeloNode& list) {
  emit(Op::poll, &list);
  const int32_t jump = emit(Op::jump, &list);
  for (size_t k = loops_.size(); k > 0; --k) {
    if (loops_[k - 1].isWhile) return loops_[k - 1].continues.push_back(jump);
  }
  returns_.push_back(jump);
}

void Visitor::visitIf(KeloNode& statement) {
  std::vector<int32_t> toEnd;
  const auto& branches = static_cast<BranchDetails&>(*statement.cache.details).branches;
  for (size_t k = 0; k < branches.size(); ++k) {
    const auto& branch = branches[k];
    const int32_t skip = branch.condition ? jumpWhere(false, *branch.condition, text::kIfNotNumeric) : -1;
    const size_t known = knownTrail_.size();
    if (branch.body) visitStat_list(*branch.body);
    forgetSince(known);
    if (k + 1 < branches.size()) toEnd.push_back(emit(Op::jump, &statement));
    if (skip >= 0) jumpHere(skip);
  }
  for (const int32_t jump : toEnd) jumpHere(jump);
}

// The expression is evaluated twice, once to see that it does not fail. NOTE: intended: side
// effects happen twice.
int32_t Visitor::visitSwitchValue(KeloNode& expression, const char* complaint) {
  const int32_t mark = top_;
  if (!isSimple(expression)) {
    visit(expression);
    top_ = mark;
  }
  const int32_t value = visit(expression);
  emit(Op::checkSwitch, &expression, 0, value, textIndex(complaint));
  return value;
}

// NOTE: intended: a matching case without statements does not end the search.
void Visitor::visitSwitch(KeloNode& statement) {
  const int32_t value = visitSwitchValue(*statement.cache.first, text::kSwitchNotSimple);
  std::vector<int32_t> toEnd;
  for (const auto& branch : static_cast<BranchDetails&>(*statement.cache.details).branches) {
    int32_t skip = -1;
    if (branch.condition) {
      const int32_t mark = top_;
      const int32_t candidate = visitSwitchValue(*branch.condition, text::kCaseNotSimple);
      skip = emit(Op::caseJump, branch.node, 0, value, candidate);
      top_ = mark;
    }
    const size_t known = knownTrail_.size();
    if (branch.body) visitStat_list(*branch.body);
    forgetSince(known);
    if (branch.body) toEnd.push_back(emit(Op::jump, &statement));
    if (skip >= 0) jumpHere(skip);
    if (!branch.condition) break;
  }
  for (const int32_t jump : toEnd) jumpHere(jump);
}

}  // namespace kelo
