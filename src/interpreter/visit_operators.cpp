// Operators, ranges and brackets.
//
// NOTE: intended: both operands are always evaluated, the left one first; `&&` and `||` are no short circuits.
//
// OPTIMIZATION: an operand that is a double scalar is computed without a NodeValue (visit_scalars.cpp); two of them
// meet without an array being made.
#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "interpreter/environment.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "linear/linear.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/operators.h"

namespace kelo {
namespace {

// The operator as typed.
std::string operatorText(KeloNode& node) {
  for (auto* child : node.children) {
    if (auto* leaf = dynamic_cast<antlr4::tree::TerminalNode*>(child)) return leaf->getText();
  }
  return "";
}

inline bool isScalar(const NodeValue& value, double* number) {
  if (!value.isStorable() || !value.storable().isDoubleScalar()) return false;
  *number = value.storable().doubleScalar();
  return true;
}

}  // namespace

NodeValue Visitor::visitBinaryOps(KeloNode& node) {
  KeloNode& leftNode = *node.cache.first;
  KeloNode& rightNode = *node.cache.second;
  double a, b;
  if (scalar(leftNode, &a)) {
    if (scalar(rightNode, &b)) return combineScalars(node, a, b);
    NodeValue right = visit(rightNode);
    if (right.isFailure()) return right;
    if (isScalar(right, &b)) return combineScalars(node, a, b);
    NodeValue left(a);
    return combine(node, left, right);
  }
  if (!stackHasRoom(node)) return NodeValue::failure();
  NodeValue left = visit(leftNode);
  if (left.isFailure()) return left;
  NodeValue right = visit(rightNode);
  if (right.isFailure()) return right;
  if (isScalar(left, &a) && isScalar(right, &b)) return combineScalars(node, a, b);
  return combine(node, left, right);
}

// Two double scalars. Logic and powers that are not real take the general road.
NodeValue Visitor::combineScalars(KeloNode& node, double a, double b) {
  const auto op = static_cast<BinaryOp>(node.cache.selector);
  double number;
  if (scalarArithmetic(op, a, b, &number)) return NodeValue(number);
  bool answer;
  if (scalarComparison(op, a, b, &answer)) return NodeValue(LogicalArray(answer));
  NodeValue left(a), right(b);
  return combine(node, left, right);
}

// Any two operands, which are consumed.
NodeValue Visitor::combine(KeloNode& node, NodeValue& left, NodeValue& right) {
  NumericArray* a = left.numericArray();
  NumericArray* b = right.numericArray();
  if (!a || !b) return fail(node, fmt::format(text::kBinaryNotNumeric, operatorText(node)));
  const auto op = static_cast<BinaryOp>(node.cache.selector);
  return guarded(node, text::kUnexpectedError, [&] {
    return NodeValue(binary(op, std::move(*a), std::move(*b), [&](std::string text) { warn(node, std::move(text)); }));
  });
}

NodeValue Visitor::visitUnaryOps(KeloNode& node) {
  const auto op = static_cast<UnaryOp>(node.cache.selector);
  if (!stackHasRoom(node)) return NodeValue::failure();
  NodeValue operand = visit(*node.cache.first);
  if (operand.isFailure()) return operand;
  if (op == UnaryOp::minus && operand.isStorable() && operand.storable().isDoubleScalar()) {
    return NodeValue(-operand.storable().doubleScalar());
  }
  NumericArray* array = operand.numericArray();
  if (!array) return fail(node, fmt::format(text::kUnaryNotNumeric, operatorText(node)));
  return guarded(node, text::kUnexpectedError, [&] { return NodeValue(unary(op, std::move(*array))); });
}

NodeValue Visitor::visitTranspose(KeloNode& node) {
  if (!stackHasRoom(node)) return NodeValue::failure();
  NodeValue operand = visit(*node.cache.first);
  if (operand.isFailure()) return operand;
  if (!operand.isStorable() || !operand.storable().isArray()) return fail(node, text::kTransposeOfNonArray);
  return guarded(node, text::kUnexpectedTranspose, [&] {
    Storable value = std::move(operand.storable());
    for (const bool conjugate : detailsOf<TransposeDetails>(node).conjugates)
      value = transpose(std::move(value), conjugate);
    return NodeValue(std::move(value));
  });
}

NodeValue Visitor::visitMatrix_colon(KeloNode& node) {
  const std::optional<Range> range = rangeAt(node);
  if (!range) return NodeValue::failure();
  return guarded(node, text::kUnexpectedVector, [&] { return NodeValue(range->elements()); });
}

// Absent when a message was shown.
std::optional<Range> Visitor::rangeAt(KeloNode& node) {
  if (!stackHasRoom(node)) return std::nullopt;
  std::vector<NumericArray> operands;
  for (KeloNode* operandNode : detailsOf<ListDetails>(node).nodes) {
    NodeValue operand = visit(*operandNode);
    if (operand.isFailure()) return std::nullopt;
    NumericArray* array = operand.numericArray();
    if (!array) {
      fail(node, text::kRangeOperands);
      return std::nullopt;
    }
    operands.push_back(std::move(*array));
  }
  const NumericArray* step = operands.size() == 3 ? &operands[1] : nullptr;
  std::optional<Range> range;
  guarded(node, text::kUnexpectedVector, [&] {
    range = rangeOf(operands.front(), step, operands.back());
    return NodeValue::nothing();
  });
  return range;
}

// A lone element is returned unchecked, whatever it is. Rows are joined as they end, and all rows at the end.
NodeValue Visitor::visitMatrix_cat(KeloNode& node) {
  if (!stackHasRoom(node)) return NodeValue::failure();
  std::vector<Storable> rows, row;
  const auto& elements = detailsOf<CatDetails>(node).elements;
  const auto endRow = [&] {
    rows.push_back(catenate(std::span(row), 2));
    row.clear();
  };
  return guarded(node, text::kUnexpectedVector, [&] {
    for (const auto& element : elements) {
      NodeValue value = visit(*element.node);
      if (value.isFailure()) return value;
      if (element.startsRow && !row.empty()) endRow();
      const auto before = static_cast<std::ptrdiff_t>(row.size());
      if (value.isStorable()) {
        if (elements.size() == 1) return value;
        row.push_back(std::move(value.storable()));
      } else if (value.isArrayList()) {
        auto& [first, list] = value.arrayList();
        if (first) row.push_back(std::move(*first));
        std::move(list.begin(), list.end(), std::back_inserter(row));
      } else {
        return fail(node, text::kCatenatesNonArray);
      }
      const auto isArray = [](const Storable& joined) { return joined.isArray(); };
      if (!std::all_of(row.begin() + before, row.end(), isArray)) return fail(node, text::kCatenatesNonArray);
    }
    if (rows.empty()) return NodeValue(catenate(std::span(row), 2));
    endRow();
    return NodeValue(catenate(std::span(rows), 1));
  });
}

}  // namespace kelo
