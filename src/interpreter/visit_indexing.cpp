// Indices, `end` and ":", and fields that are read.
//
// What `end` means is the extent in the running frame: it is set while a subscript is evaluated and put back after it,
// so a nested index sees its own and a recursive call cannot spoil it. An argument of a call inside an index keeps the
// extent of the index around it.
#include <fmt/format.h>

#include "interpreter/environment.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "values/chains.h"
#include "values/indexing.h"

namespace kelo {

// ---- Reading elements

NodeValue Visitor::index(const Storable& array, const std::vector<KeloNode*>& subscripts, KeloNode& place) {
  if (subscripts.empty()) return fail(place, text::kNoIndex);
  if (!array.isArray()) return fail(place, text::kIndexedNotArrayOrHandle);
  if (!stackHasRoom(place)) return NodeValue::failure();
  Subscripts evaluated;
  if (!evaluateSubscripts(array.size(), subscripts, evaluated, place)) return NodeValue::failure();
  if (const NumericArray* numbers = array.numeric(); numbers && evaluated.areNumbers()) {
    double element;
    const auto& [i, j] = evaluated.numbers;
    const bool read = evaluated.count == 1 ? readScalar(*numbers, i, &element) : readScalar(*numbers, i, j, &element);
    if (read) return NodeValue(element);
  }
  return guarded(place, text::kUnexpectedError,
                 [&] { return NodeValue(readElements(array, evaluated.indices())); });
}

// ---- Subscripts

namespace {

std::optional<double> scalarSubscript(const NodeValue& value) {
  const NumericArray* array = value.numericArray();
  if (!array || !array->isScalar()) return std::nullopt;
  if (array->is(Kind::Double)) return array->asDouble().scalar();
  if (array->is(Kind::Int)) return static_cast<double>(array->asInt().scalar());
  return std::nullopt;
}

}  // namespace

// One or two scalars stay numbers; anything else becomes a list of indices.
bool Visitor::evaluateSubscripts(const SizeVector& size, const std::vector<KeloNode*>& nodes, Subscripts& result,
                                 KeloNode& place) {
  result.count = static_cast<int>(nodes.size());
  if (subscriptNumbers(size, nodes, &result.numbers[0], &result.numbers[1])) return true;
  const std::vector<int64_t> extents = nodes.size() == 1 ? std::vector<int64_t>() : size.broughtTo(result.count);
  for (int k = 0; k < result.count; ++k) {
    KeloNode& node = *nodes[static_cast<size_t>(k)];
    const int64_t extent = extents.empty() ? size.numElements() : extents[static_cast<size_t>(k)];
    if (!addSubscript(node, extent, k, result, place)) return false;
  }
  return true;
}

bool Visitor::addSubscript(KeloNode& node, int64_t extent, int k, Subscripts& result, KeloNode& place) {
  if (node.cache.kind == NodeKind::colonExpr) {
    node.cache.extent = extent;
    return !guarded(place, text::kIndexEvaluationFailed, [&] {
              result.spill(k);
              result.list.push_back(Index::colon(extent));
              return NodeValue::nothing();
            }).isFailure();
  }
  if (extent == 0 && node.cache.containsEnd) {
    fail(place, expectation(text::kEndOfEmptyArray));
    return false;
  }
  NodeValue value = [&] {
    const ExtentScope scope(*this, extent);
    return visit(node);
  }();
  if (value.isFailure()) {
    fail(place, text::kIndexEvaluationFailed);
    return false;
  }
  if (const auto number = scalarSubscript(value); number && k < 2 && result.count <= 2 && result.list.empty()) {
    result.numbers[k] = *number;
    return true;
  }
  return !guarded(place, text::kIndexEvaluationFailed, [&] {
            if (!value.isStorable()) return fail(place, text::kIndexNotNumeric);
            result.spill(k);
            result.list.push_back(Index::from(value.storable()));
            return NodeValue::nothing();
          }).isFailure();
}

// A node that was evaluated in an index keeps its extent. NOTE: intended: a later use outside of one still sees it.
NodeValue Visitor::visitEnd_expr(KeloNode& node) {
  if (frame_.extent >= 0) node.cache.extent = frame_.extent;
  if (node.cache.extent < 0) return fail(node, text::kEndOutsideIndex);
  return NodeValue(node.cache.extent);
}

NodeValue Visitor::visitColon_expr(KeloNode& node) {
  if (frame_.extent >= 0) node.cache.extent = frame_.extent;
  const int64_t n = node.cache.extent;
  if (n < 0) return fail(node, text::kInvalidColon);
  return guarded(node, text::kUnexpectedError, [&] {
    if (n == 0) return NodeValue(IntArray());
    IntArray positions = IntArray::uninitialized(SizeVector(1, n));
    int64_t* out = positions.writable();
    for (int64_t k = 0; k < n; ++k) out[k] = k + 1;
    return NodeValue(std::move(positions));
  });
}

// ---- Fields

std::optional<Name> Visitor::fieldName(const FieldDetails& field, KeloNode& place) {
  if (!field.expression) return field.name;
  const NodeValue value = visit(*field.expression);
  if (!value.isStorable()) {
    fail(place, text::kFieldNameEvaluationFailed);
    return std::nullopt;
  }
  std::optional<Name> name;
  guarded(place, text::kFieldNameEvaluationFailed, [&] {
    name = fieldNameOf(value.storable());
    return NodeValue::nothing();
  });
  return name;
}

// OPTIMIZATION: a chain of fields of scalar structures is followed without a copy on the way.
NodeValue Visitor::visitStructure2(KeloNode& node, Outputs outputs) {
  if (!stackHasRoom(node)) return NodeValue::failure();
  const auto& chain = detailsOf<ChainDetails>(node);
  const Name name = node.cache.name;
  const Storable* variable = findVariable(name, &node.cache.hint);
  if (variable == nullptr && findLocalFunction(name)) {
    return fail(node, expectation(fmt::format(text::kLocalNotAccessible, name.text())));
  }
  if (variable == nullptr || !variable->isArray()) return fail(node, text::shouldBeArray(name.text()));
  if (!variable->isStructure()) return fail(node, text::shouldBeStructure(name.text()));
  if (const FieldDetails* field = chain.onlyField(); field && !field->hasArgs) {
    if (const Storable* value = plainField(*variable, field->name)) return NodeValue(*value);
  }
  const Storable held = *variable;
  NodeValue value = chain.hasArgs ? index(held, chain.args, node) : NodeValue(held);
  for (size_t k = 0; k < chain.fields.size() && !value.isFailure(); ++k) {
    value = fieldOf(value, chain.fields[k], k == 0 ? name : chain.fields[k - 1].name, outputs, node);
  }
  return value;
}

// The field of a value, and what the parentheses behind it select or call.
NodeValue Visitor::fieldOf(const NodeValue& value, const FieldDetails& field, Name parent, Outputs outputs,
                           KeloNode& place) {
  if (!value.isStorable()) return fail(place, text::kFieldOfMultipleOutputs);
  const std::optional<Name> name = fieldName(field, place);
  if (!name) return NodeValue::failure();
  const StructArray* structure = value.storable().structure();
  if (structure == nullptr) return fail(place, expectation(text::notAStructure(parent.text())));
  NodeValue read = guarded(place, text::kUnexpectedError, [&] { return readField(*structure, *name); });
  if (read.isFailure() || !field.hasArgs) return read;
  if (!read.isStorable()) return fail(place, text::kFieldOfMultipleOutputs);
  const Storable held = std::move(read.storable());
  return held.isFuncHandle() ? callWithArguments(*held.funcHandle(), field.args, outputs, place)
                             : index(held, field.args, place);
}

}  // namespace kelo
