// Operators, ranges and brackets. Both operands are always evaluated, the left one first.
//
// OPTIMIZATION: an operand that is a literal or a variable with a double scalar is read in place; two double scalars meet
// without an array being made.
#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "interpreter/app_controller.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "linear/binary.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {
namespace {

// The operator as typed.
std::string operatorText(KeloNode& node) {
  for (auto* child : node.children) {
    if (auto* leaf = dynamic_cast<antlr4::tree::TerminalNode*>(child)) return leaf->getText();
  }
  return "";
}

// Two double scalars. Powers that are not real are left to the general road.
inline std::optional<NodeValue> scalarResult(BinaryOp op, double a, double b) {
  if (isScalarArithmetic(op)) return NodeValue(scalarOp(op, a, b));
  if (isComparison(op)) return NodeValue(LogicalArray(scalarCompare(op, a, b)));
  if (op == BinaryOp::and_ || op == BinaryOp::or_) {
    if (std::isnan(a) || std::isnan(b)) return std::nullopt;
    return NodeValue(LogicalArray(op == BinaryOp::and_ ? a != 0 && b != 0 : a != 0 || b != 0));
  }
  if (isRealPower(a, b)) return NodeValue(realPower(a, b));
  return std::nullopt;
}

}  // namespace

NodeValue Visitor::visitBinaryOps(KeloNode& node) {
  const auto op = static_cast<BinaryOp>(node.cache.selector);
  KeloNode& leftNode = *node.cache.first;
  KeloNode& rightNode = *node.cache.second;
  const double* leftNumber = peek(leftNode);
  const double* rightNumber = peek(rightNode);
  if (leftNumber && rightNumber) {
    if (auto result = scalarResult(op, *leftNumber, *rightNumber)) return std::move(*result);
  }
  if (!stackHasRoom(node)) return NodeValue::failure();
  NodeValue left = leftNumber ? NodeValue(*leftNumber) : visit(leftNode);
  if (left.isFailure()) return left;
  NodeValue right = visit(rightNode);
  if (right.isFailure()) return right;
  if (left.isStorable() && right.isStorable() && left.storable().isDoubleScalar() &&
      right.storable().isDoubleScalar()) {
    auto result = scalarResult(op, left.storable().doubleScalar(), right.storable().doubleScalar());
    if (result) return std::move(*result);
  }
  NumericArray* a = left.numericArray();
  NumericArray* b = right.numericArray();
  if (!a || !b) return fail(node, fmt::format(text::kBinaryNotNumeric, operatorText(node)));
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
  if (!operand.isStorable() || !operand.storable().isArray()) return fail(node, text::kNotTransposable);
  return guarded(node, text::kUnexpectedTranspose, [&] {
    Storable value = std::move(operand.storable());
    for (const bool conjugate : detailsOf<TransposeDetails>(node).conjugates) value = transpose(std::move(value), conjugate);
    return NodeValue(std::move(value));
  });
}

NodeValue Visitor::visitMatrix_colon(KeloNode& node) {
  if (!stackHasRoom(node)) return NodeValue::failure();
  std::vector<NumericArray> operands;
  for (KeloNode* operandNode : detailsOf<ListDetails>(node).nodes) {
    NodeValue operand = visit(*operandNode);
    if (operand.isFailure()) return operand;
    NumericArray* array = operand.numericArray();
    if (!array) return fail(node, text::kRangeOperands);
    operands.push_back(std::move(*array));
  }
  const NumericArray* step = operands.size() == 3 ? &operands[1] : nullptr;
  return guarded(node, text::kUnexpectedVector,
                 [&] { return NodeValue(range(operands.front(), step, operands.back())); });
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
