// Loops and branches.
#include "interpreter/environment.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "values/operators.h"

namespace kelo {
namespace {

// One element of a loop's array: a double, a complex number where the element is not real, or a character.
Storable loopElement(const NumericArray& array, int64_t k) {
  switch (array.kind()) {
    case Kind::Double: return Storable(array.asDouble()[k]);
    case Kind::Int: return Storable(static_cast<double>(array.asInt()[k]));
    case Kind::Logical: return Storable(array.asLogical()[k] ? 1.0 : 0.0);
    case Kind::Char: return CharArray(array.asChar()[k]);
    case Kind::Complex: break;
  }
  const ComplexDouble z = array.asComplex()[k];
  if (z.imaginary == 0) return Storable(z.real);
  return ComplexDoubleArray(z);
}

bool allTrue(const LogicalArray& array) {
  for (const bool element : array.values()) {
    if (!element) return false;
  }
  return true;
}

}  // namespace

// NOTE: intended: the loop runs over single elements in storage order, also of a matrix, and a loop without statements
// does nothing at all.
// OPTIMIZATION: the elements of a range are never all made.
NodeValue Visitor::visitForLoop(KeloNode& statement) {
  NodeCache& cache = statement.cache;
  if (cache.first->cache.kind == NodeKind::unresolved) resolve(*cache.first, app_.builtins);
  if (cache.first->cache.kind == NodeKind::matrixColon) {
    const std::optional<Range> range = rangeAt(*cache.first);
    if (!range) return NodeValue::failure();
    return loop(statement, range->count, [&](int64_t k, Storable& variable) {
      variable.setNumber(range->element(static_cast<double>(k)));
    });
  }
  NodeValue value = visit(*cache.first);
  if (value.isFailure()) return value;
  NumericArray* numeric = value.numericArray();
  if (numeric == nullptr) return fail(statement, text::kLoopIndexNotNumeric);
  const NumericArray array = std::move(*numeric);
  return loop(statement, array.numElements(),
              [&](int64_t k, Storable& variable) { variable = loopElement(array, k); });
}

// A loop of so many rounds; setElement gives its variable the value of a round, counted from 0.
template <class SetElement>
NodeValue Visitor::loop(KeloNode& statement, int64_t rounds, SetElement&& setElement) {
  NodeCache& cache = statement.cache;
  if (cache.second == nullptr) return NodeValue::nothing();
  for (int64_t k = 0; k < rounds; ++k) {
    setElement(k, app_.workspaces.top().variable(cache.name, &cache.hint));
    NodeValue result = runStatements(*cache.second);
    if (result.isFailure() || result.form() == NodeValue::Form::returnValue) return result;
    if (result.form() == NodeValue::Form::breakValue) break;
  }
  return NodeValue::nothing();
}

// NOTE: intended: a `return` in the body only ends the present pass through it.
NodeValue Visitor::visitWhileLoop(KeloNode& statement) {
  NodeCache& cache = statement.cache;
  if (cache.second == nullptr) return NodeValue::nothing();
  while (true) {
    const std::optional<bool> goesOn = condition(*cache.first, text::kWhileNotNumeric);
    if (!goesOn) return NodeValue::failure();
    if (!*goesOn) return NodeValue::nothing();
    NodeValue result = runStatements(*cache.second);
    if (result.isFailure()) return result;
    if (result.form() == NodeValue::Form::breakValue) return NodeValue::nothing();
  }
}

// Whether every element is true. NOTE: intended: an empty array counts as true.
std::optional<bool> Visitor::condition(KeloNode& expression, const char* notNumeric) {
  if (expression.cache.kind == NodeKind::binaryOps) {
    double a, b;
    bool answer;
    if (scalar(*expression.cache.first, &a) && scalar(*expression.cache.second, &b) &&
        scalarComparison(static_cast<BinaryOp>(expression.cache.selector), a, b, &answer)) {
      return answer;
    }
  }
  NodeValue value = visit(expression);
  if (value.isFailure()) return std::nullopt;
  NumericArray* numeric = value.numericArray();
  if (numeric == nullptr) {
    fail(expression, notNumeric);
    return std::nullopt;
  }
  if (numeric->is(Kind::Logical) && numeric->isScalar()) return numeric->asLogical().scalar();
  std::optional<bool> answer;
  guarded(expression, text::kUnexpectedError, [&] {
    answer = allTrue(numeric->toLogicalArray());
    return NodeValue::nothing();
  });
  return answer;
}

NodeValue Visitor::visitIf(KeloNode& statement) {
  for (const auto& branch : detailsOf<BranchDetails>(statement).branches) {
    if (branch.condition) {
      const std::optional<bool> taken = condition(*branch.condition, text::kIfNotNumeric);
      if (!taken) return NodeValue::failure();
      if (!*taken) continue;
    }
    return branch.body ? runStatements(*branch.body) : NodeValue::nothing();
  }
  return NodeValue::nothing();
}

// The expression is evaluated twice, once to see that it does not fail. NOTE: intended: side effects happen twice.
std::optional<NumericArray> Visitor::switchValue(KeloNode& expression, const char* complaint) {
  if (visit(expression).isFailure()) return std::nullopt;
  NodeValue value = visit(expression);
  if (value.isFailure()) return std::nullopt;
  const NumericArray* array = value.numericArray();
  if (array && (array->is(Kind::Char) || array->isScalar())) return *array;
  fail(expression, complaint);
  return std::nullopt;
}

// NOTE: intended: a matching case without statements does not end the search.
NodeValue Visitor::visitSwitch(KeloNode& statement) {
  const auto value = switchValue(*statement.cache.first, text::kSwitchNotSimple);
  if (!value) return NodeValue::failure();
  for (const auto& branch : detailsOf<BranchDetails>(statement).branches) {
    if (!branch.condition) return branch.body ? runStatements(*branch.body) : NodeValue::nothing();
    const auto candidate = switchValue(*branch.condition, text::kCaseNotSimple);
    if (!candidate) return NodeValue::failure();
    if (!(candidate->size() == value->size())) continue;
    bool matches = false;
    const NodeValue compared = guarded(*branch.node, text::kUnexpectedError, [&] {
      matches = allTrue(elementwise(BinaryOp::eqeq, *value, *candidate).asLogical());
      return NodeValue::nothing();
    });
    if (compared.isFailure()) return NodeValue::failure();
    if (matches && branch.body) return runStatements(*branch.body);
  }
  return NodeValue::nothing();
}

}  // namespace kelo
