// Assignments: to a variable, to a list of them, to elements, and along a chain of fields. The right side is evaluated
// first, then the subscripts; a variable is changed last and in place, so a failure leaves it as it was.
#include <fmt/format.h>

#include "frontend/node_text.h"
#include "interpreter/environment.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "values/chains.h"
#include "values/indexing.h"

namespace kelo {
namespace {

// The one value that an assignment to a single place takes; absent when there is none.
std::optional<Storable> firstOf(NodeValue value) {
  if (value.isStorable()) return std::move(value.storable());
  if (!value.isArrayList()) return std::nullopt;
  auto& [first, list] = value.arrayList();
  if (!first && !list.empty()) first = std::move(list.front());
  return std::move(first);
}

// A literal pair of brackets on the right side deletes.
bool isDeletion(KeloNode& right) { return right.cache.kind == NodeKind::emptyMat; }

}  // namespace

NodeValue Visitor::assignVariable(KeloNode& assignment, bool shows) {
  NodeCache& cache = assignment.cache;
  NodeValue right = visit(*cache.second, 1);
  if (right.isStorable() && !shows) {
    app_.workspaces.top().variable(cache.name, &cache.hint) = std::move(right.storable());
    return NodeValue::nothing();
  }
  if (right.isFailure()) return right;
  std::optional<Storable> value = firstOf(std::move(right));
  if (!value) return fail(assignment, text::kNoValueToAssign);
  if (shows) showValue(cache.name, *value);
  app_.workspaces.top().variable(cache.name, &cache.hint) = std::move(*value);
  return NodeValue::nothing();
}

NodeValue Visitor::assignList(KeloNode& assignment, bool shows) {
  const auto& names = detailsOf<ListDetails>(assignment).names;
  NodeValue value = visit(*assignment.cache.second, static_cast<Outputs>(names.size()));
  if (value.isVoid()) return fail(assignment, text::kNoValuesToAssign);
  std::vector<Storable> values;
  if (value.isStorable()) {
    values.push_back(std::move(value.storable()));
  } else if (value.isArrayList()) {
    auto& [first, list] = value.arrayList();
    if (first) values.push_back(std::move(*first));
    std::move(list.begin(), list.end(), std::back_inserter(values));
  } else {
    return NodeValue::failure();
  }
  if (values.size() < names.size()) return fail(assignment, text::kTooManyOutputs);
  for (size_t k = 0; k < names.size(); ++k) app_.workspaces.top().set(names[k], values[k]);
  values.resize(names.size());
  if (shows) show(NodeValue::listOf(std::move(values)), names);
  return NodeValue::nothing();
}

// After a change of elements or fields the whole variable is shown.
NodeValue Visitor::changed(KeloNode& assignment, bool shows) {
  if (shows) showValue(assignment.cache.name, *app_.workspaces.top().find(assignment.cache.name));
  return NodeValue::nothing();
}

// The value of the right side for A(I) = B; absent when a message was shown.
std::optional<Storable> Visitor::assignedValue(KeloNode& assignment) {
  NodeValue right = visit(*assignment.cache.second, 1);
  const bool failed = right.isFailure();
  std::optional<Storable> value = firstOf(std::move(right));
  if (!value) fail(assignment, failed ? text::kAssignedEvaluationFailed : text::kAssignedInvalidType);
  return value;
}

// A(I) = B. A name without a variable counts as an empty double.
NodeValue Visitor::assignElements(KeloNode& assignment, bool shows) {
  NodeCache& cache = assignment.cache;
  const auto& nodes = detailsOf<CallDetails>(assignment).args;
  KeloNode& right = *cache.second;
  if (right.cache.kind == NodeKind::unresolved) resolve(right, app_.builtins);
  double number;
  if (scalar(right, &number) && writeElement(cache, nodes, number)) return changed(assignment, shows);
  std::optional<Storable> value;
  if (!isDeletion(right)) {
    value = assignedValue(assignment);
    if (!value) return NodeValue::failure();
    if (value->isDoubleScalar() && writeElement(cache, nodes, value->doubleScalar())) return changed(assignment, shows);
  }
  const Storable* existing = findVariable(cache.name, &cache.hint);
  if (existing && !existing->isArray()) return fail(assignment, text::kAssignmentTargetNotArray);
  const SizeVector size = existing ? existing->size() : SizeVector();
  Subscripts subscripts;
  if (!evaluateSubscripts(size, nodes, subscripts, assignment)) return NodeValue::failure();
  Workspace& top = app_.workspaces.top();
  const bool isNew = findVariable(cache.name, &cache.hint) == nullptr;
  const NodeValue done = guarded(assignment, text::kAssignmentFailed, [&] {
    Storable fresh;
    Storable& target = isNew ? fresh : top.variable(cache.name, &cache.hint);
    if (!value) deleteElements(target, subscripts.indices());
    else if (!writeNumber(target, subscripts, *value)) writeElements(target, subscripts.indices(), *value);
    if (isNew) top.variable(cache.name, &cache.hint) = std::move(fresh);
    return NodeValue::nothing();
  });
  return done.isFailure() ? NodeValue::failure() : changed(assignment, shows);
}

// OPTIMIZATION: x(k) = v and A(i, j) = v for a double array that nobody else holds, with numbers for subscripts.
bool Visitor::writeElement(NodeCache& cache, const Nodes& nodes, double value) {
  const Storable* existing = findVariable(cache.name, &cache.hint);
  double i, j;
  if (!existing || !existing->isNumeric() || !subscriptNumbers(existing->size(), nodes, &i, &j)) return false;
  NumericArray& array = *app_.workspaces.top().variable(cache.name, &cache.hint).numeric();
  return nodes.size() == 1 ? writeScalar(array, i, value) : writeScalar(array, i, j, value);
}

bool Visitor::writeNumber(Storable& target, const Subscripts& subscripts, const Storable& value) {
  NumericArray* array = target.numeric();
  if (!array || !value.isDoubleScalar() || !subscripts.areNumbers()) return false;
  const auto& [i, j] = subscripts.numbers;
  const double number = value.doubleScalar();
  return subscripts.count == 1 ? writeScalar(*array, i, number) : writeScalar(*array, i, j, number);
}

// s.f = v, s(i).f(j).g = v. The subscripts are evaluated from the left, each with the extent of what stands before it.
NodeValue Visitor::assignChain(KeloNode& assignment, bool shows) {
  NodeCache& cache = assignment.cache;
  const auto& details = detailsOf<ChainDetails>(assignment);
  KeloNode& right = *cache.second;
  if (right.cache.kind == NodeKind::unresolved) resolve(right, app_.builtins);
  const FieldDetails* onlyField = details.onlyField();
  double number;
  if (onlyField && scalar(right, &number) && writeField(cache, *onlyField, number)) return changed(assignment, shows);
  const bool deletes = isDeletion(right) && details.fields.back().hasArgs;
  std::optional<Storable> value;
  if (!deletes) {
    NodeValue evaluated = visit(right, 1);
    if (evaluated.isFailure()) return evaluated;
    value = firstOf(std::move(evaluated));
    if (!value) return fail(assignment, text::kNoValueToAssign);
  }
  if (value && onlyField && !onlyField->hasArgs && findVariable(cache.name, &cache.hint)) {
    Storable& target = app_.workspaces.top().variable(cache.name, &cache.hint);
    if (Storable* field = writablePlainField(target, onlyField->name)) {
      *field = std::move(*value);
      return changed(assignment, shows);
    }
  }
  FieldChain chain(cache.name);
  if (!buildChain(assignment, details, chain)) return NodeValue::failure();
  Workspace& top = app_.workspaces.top();
  const bool isNew = findVariable(cache.name, &cache.hint) == nullptr;
  const NodeValue done = guarded(assignment, text::kStructureAssignmentFailed, [&] {
    Storable fresh;
    Storable& root = isNew ? fresh : top.variable(cache.name, &cache.hint);
    if (value) chain.assign(root, isNew, std::move(*value));
    else chain.erase(root, isNew);
    if (isNew) top.variable(cache.name, &cache.hint) = std::move(fresh);
    return NodeValue::nothing();
  });
  return done.isFailure() ? NodeValue::failure() : changed(assignment, shows);
}

// OPTIMIZATION: s.f = v and s.f(i) = v for numbers, in place.
bool Visitor::writeField(NodeCache& cache, const FieldDetails& field, double value) {
  const Storable* variable = findVariable(cache.name, &cache.hint);
  const Storable* existing = variable ? plainField(*variable, field.name) : nullptr;
  double i, j;
  if (existing == nullptr) return false;
  if (field.hasArgs && (!existing->isNumeric() || !subscriptNumbers(existing->size(), field.args, &i, &j)))
    return false;
  Storable& target = *writablePlainField(app_.workspaces.top().variable(cache.name, &cache.hint), field.name);
  if (!field.hasArgs) {
    target.setNumber(value);
    return true;
  }
  NumericArray& array = *target.numeric();
  return field.args.size() == 1 ? writeScalar(array, i, value) : writeScalar(array, i, j, value);
}

bool Visitor::buildChain(KeloNode& assignment, const ChainDetails& details, FieldChain& chain) {
  const auto addIndices = [&](bool hasArgs, const std::vector<KeloNode*>& nodes) {
    if (!hasArgs) return true;
    if (nodes.empty()) return !fail(assignment, text::kNoIndex).isFailure();
    SizeVector size;
    const NodeValue looked = guarded(assignment, text::kStructureAssignmentFailed, [&] {
      const Storable* reached = chain.reached(findVariable(assignment.cache.name, &assignment.cache.hint));
      if (reached && reached->isArray()) size = reached->size();
      return NodeValue::nothing();
    });
    Subscripts subscripts;
    if (looked.isFailure() || !evaluateSubscripts(size, nodes, subscripts, assignment)) return false;
    return !guarded(assignment, text::kIndexEvaluationFailed, [&] {
              const auto indices = subscripts.indices();
              chain.addIndices({indices.begin(), indices.end()});
              return NodeValue::nothing();
            }).isFailure();
  };
  if (!addIndices(details.hasArgs, details.args)) return false;
  for (const FieldDetails& field : details.fields) {
    const std::optional<Name> name = fieldName(field, assignment);
    if (!name) return false;
    chain.addField(*name);
    if (!addIndices(field.hasArgs, field.args)) return false;
  }
  return true;
}

}  // namespace kelo
