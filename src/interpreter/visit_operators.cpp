// Operators, ranges and brackets.
//
// NOTE: intended: both operands are always evaluated, the left one first; `&&` and `||` are no
// short circuits.
#include "grammar/kelo_node.h"
#include "interpreter/visitor.h"

namespace kelo {

int32_t Visitor::visitBinaryOps(KeloNode& node, int32_t wish) {
  const int32_t mark = top_;
  const Op op = Op::plus + node.cache.op;
  const auto side = [&](KeloNode& side) {
    const int32_t value = visit(side);
    if (op == Op::mult && side.cache.kind == NodeKind::transpose) code_->instructions.back().flag = 1;
    return value;
  };
  const int32_t left = side(*node.cache.first);
  const int32_t right = side(*node.cache.second);
  const int32_t result = target(mark, wish);
  emit(op, &node, result, left, right);
  return result;
}

// A sign before a number makes a constant.
int32_t Visitor::visitUnaryOps(KeloNode& node, int32_t wish) {
  const auto op = static_cast<UnaryOp>(node.cache.op);
  KeloNode& operandNode = *node.cache.first;
  resolved(operandNode);
  if (op == UnaryOp::minus && operandNode.cache.kind == NodeKind::number && operandNode.cache.isValid) {
    return constant(Storable(-operandNode.cache.number));
  }
  const int32_t mark = top_;
  const int32_t operand = visit(operandNode);
  const int32_t result = target(mark, wish);
  emit(Op::unaryPlus + static_cast<int>(op), &node, result, operand);
  return result;
}

int32_t Visitor::visitTranspose(KeloNode& node, int32_t wish) {
  const int32_t mark = top_;
  int32_t operand = visit(*node.cache.first);
  const int32_t result = target(mark, wish);
  for (const bool conjugates : static_cast<TransposeDetails&>(*node.cache.details).conjugates) {
    emit(Op::transpose, &node, result, operand, conjugates);
    operand = result;
  }
  return result;
}

// The operands in a row of temporaries, of which the first is given.
int32_t Visitor::rangeOperands(KeloNode& node) {
  const Nodes& nodes = static_cast<ListDetails&>(*node.cache.details).nodes;
  const int32_t mark = top_;
  for (size_t k = 0; k < nodes.size(); ++k) {
    const int32_t operand = newTemporary();
    into(*nodes[k], operand);
    top_ = mark + static_cast<int32_t>(k) + 1;
    const bool othersFollow = k + 1 < nodes.size();
    if (othersFollow && !isLiteral(*nodes[k])) emit(Op::checkRange, &node, 0, operand);
  }
  top_ = mark;
  return newTemporary();
}

// A range that is an argument by itself need not become an array where it turns out a subscript.
int32_t Visitor::visitMatrix_colon(KeloNode& node, int32_t wish) {
  const auto count = static_cast<int32_t>(static_cast<ListDetails&>(*node.cache.details).nodes.size());
  const int32_t mark = top_;
  const int32_t first = rangeOperands(node);
  const int32_t result = target(mark, wish);
  const bool isArgument = site_ >= 0 && site(site_).arguments[static_cast<size_t>(siteArgument_)] == &node;
  if (isArgument) emit(Op::rangeArgument, &node, result, first, count, site_, siteArgument_);
  else emit(Op::range, &node, result, first, count);
  return result;
}

// x = [x, ...]: what is added goes behind what is there, in place where it may. False for any other
// right side.
bool Visitor::lowerAppend(KeloNode& node, int32_t slot) {
  if (node.cache.kind != NodeKind::matrixCat || !isKnown(slot)) return false;
  const auto& elements = static_cast<CatDetails&>(*node.cache.details).elements;
  resolved(*elements[0].node);
  const NodeCache& first = elements[0].node->cache;
  if (elements.size() < 2 || first.kind != NodeKind::id || slotOf(first.name) != slot) return false;
  for (const auto& element : elements) {
    if (element.startsRow) return false;
  }
  const int32_t mark = top_;
  emit(Op::checkElement, &node, 0, slot);
  const int32_t row = newTemporary();
  top_ = mark;
  for (size_t k = 1; k < elements.size(); ++k) {
    const int32_t value = newTemporary();
    into(*elements[k].node, value);
    top_ = mark + static_cast<int32_t>(k);
    if (k + 1 < elements.size() && !isLiteral(*elements[k].node)) emit(Op::checkElement, &node, 0, value);
  }
  top_ = mark;
  emit(Op::appendRow, &node, slot, row, static_cast<int32_t>(elements.size()) - 1);
  return true;
}

// A number as it is written, with a minus before it or none.
std::optional<double> Visitor::writtenNumber(KeloNode& node) {
  resolved(node);
  if (node.cache.kind == NodeKind::number && node.cache.isValid) return node.cache.number;
  if (node.cache.kind != NodeKind::unaryOps || static_cast<UnaryOp>(node.cache.op) != UnaryOp::minus) return std::nullopt;
  resolved(*node.cache.first);
  const NodeCache& number = node.cache.first->cache;
  return number.kind == NodeKind::number && number.isValid ? std::optional(-number.number) : std::nullopt;
}

// A matrix of such numbers, which need be made but once; absent for any other.
std::optional<Storable> Visitor::writtenMatrix(const CatDetails& matrix) {
  std::vector<std::vector<double>> rows(1);
  for (const auto& element : matrix.elements) {
    const auto number = writtenNumber(*element.node);
    if (!number) return std::nullopt;
    if (element.startsRow && !rows.back().empty()) rows.emplace_back();
    rows.back().push_back(*number);
  }
  const auto isOther = [&](const std::vector<double>& row) { return row.size() != rows[0].size(); };
  if (matrix.elements.size() < 2 || std::ranges::any_of(rows, isOther)) return std::nullopt;
  auto made = DoubleArray::uninitialized(SizeVector(std::ssize(rows), std::ssize(rows[0])));
  double* to = made.writable();
  for (size_t column = 0; column < rows[0].size(); ++column) {
    for (const auto& row : rows) *to++ = row[column];
  }
  return Storable(std::move(made));
}

// A row is joined as soon as the first element of the next one is there, and all rows at the end. A
// lone element is given unchecked, whatever it is.
int32_t Visitor::visitMatrix_cat(KeloNode& node, int32_t wish) {
  const auto& matrix = static_cast<CatDetails&>(*node.cache.details);
  if (auto written = writtenMatrix(matrix)) return constant(std::move(*written));
  const auto& elements = matrix.elements;
  const int32_t mark = top_;
  const int32_t first = newTemporary();
  top_ = mark;
  int32_t rows = 0, inRow = 0;
  for (const auto& element : elements) {
    const int32_t value = newTemporary();
    into(*element.node, value);
    top_ = mark + rows + inRow + 1;
    if (element.startsRow && inRow > 0) {
      emit(Op::joinRow, &node, first + rows, first + rows, inRow);
      ++rows;
      inRow = 0;
      if (first + rows != value) emit(Op::move, &node, first + rows, value);
      top_ = mark + rows + 1;
    }
    ++inRow;
    if (elements.size() > 1 && !isLiteral(*element.node)) {
      emit(Op::checkElement, &node, 0, first + rows + inRow - 1);
    }
  }
  const int32_t result = target(mark, wish);
  if (rows == 0) {
    emit(Op::joinRow, &node, result, first, inRow, elements.size() == 1);
    return result;
  }
  emit(Op::joinRow, &node, first + rows, first + rows, inRow);
  emit(Op::joinRows, &node, result, first, rows + 1);
  return result;
}

}  // namespace kelo
