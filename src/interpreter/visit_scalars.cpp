// The lane of double scalars.
//
// OPTIMIZATION: most of what a loop does is arithmetic on numbers: `s + k*2`, `x(k - 1)/h`. Such an expression is
// computed here without a NodeValue for each of its nodes. The lane only reads literals, variables and elements, so it
// changes nothing, shows nothing and may give up anywhere; the general visit then starts over. What it computes is what
// the general visit would have given.
#include "interpreter/visit_guard.h"
#include "values/chains.h"
#include "values/indexing.h"

namespace kelo {
namespace {

// Deeper expressions go the general way, so that a failed attempt stays cheap at every level of a deep one.
constexpr int kMaxDepth = 6;

}  // namespace

// The statement NAME = number; the most frequent of all. What it shows, the general visit shows.
bool Visitor::assignScalar(KeloNode& statement) {
  if (statement.cache.kind != NodeKind::assignment || statement.cache.flag) return false;
  NodeCache& cache = statement.cache.first->cache;
  double number;
  if (cache.selector != 1 || !scalar(*cache.second, &number)) return false;
  app_.workspaces.top().variable(cache.name, &cache.hint).setNumber(number);
  return true;
}

bool Visitor::scalar(KeloNode& node, double* result) { return scalar(node, kMaxDepth, result); }

// Leaves are most of the nodes and are read without a call.
inline bool Visitor::scalar(KeloNode& node, int depth, double* result) {
  const NodeCache& cache = node.cache;
  if (cache.kind == NodeKind::id) {
    const Storable* value = app_.workspaces.top().find(cache.name, &cache.hint);
    if (value == nullptr || !value->isDoubleScalar()) return false;
    *result = value->doubleScalar();
    return true;
  }
  if (cache.kind == NodeKind::number) {
    *result = cache.number;
    return cache.flag;
  }
  return depth > 0 && compound(node, depth - 1, result);
}

bool Visitor::compound(KeloNode& node, int depth, double* result) {
  const NodeCache& cache = node.cache;
  switch (cache.kind) {
    case NodeKind::binaryOps: {
      double a, b;
      return scalar(*cache.first, depth, &a) && scalar(*cache.second, depth, &b) &&
             scalarArithmetic(static_cast<BinaryOp>(cache.selector), a, b, result);
    }
    case NodeKind::parenthesis: return scalar(*cache.first, depth, result);
    case NodeKind::subarrayOrFunc: {
      const Storable* value = findVariable(cache.name, &cache.hint);
      return value && value->isNumeric() &&
             elementOf(*value->numeric(), detailsOf<CallDetails>(node).args, depth, result);
    }
    case NodeKind::structure2: {
      const FieldDetails* field = detailsOf<ChainDetails>(node).onlyField();
      const Storable* variable = field ? findVariable(cache.name, &cache.hint) : nullptr;
      const Storable* value = variable ? plainField(*variable, field->name) : nullptr;
      if (value == nullptr || !value->isNumeric()) return false;
      if (field->hasArgs) return elementOf(*value->numeric(), field->args, depth, result);
      if (!value->isDoubleScalar()) return false;
      *result = value->doubleScalar();
      return true;
    }
    default: return false;
  }
}

bool Visitor::elementOf(const NumericArray& array, const Nodes& subscripts, double* result) {
  return elementOf(array, subscripts, kMaxDepth, result);
}

bool Visitor::elementOf(const NumericArray& array, const Nodes& subscripts, int depth, double* result) {
  double i, j;
  if (!array.is(Kind::Double) || !subscriptNumbers(array.size(), subscripts, depth, &i, &j)) return false;
  return subscripts.size() == 1 ? readScalar(array, i, result) : readScalar(array, i, j, result);
}

bool Visitor::subscriptNumbers(const SizeVector& size, const Nodes& nodes, double* i, double* j) {
  return subscriptNumbers(size, nodes, kMaxDepth, i, j);
}

bool Visitor::subscriptNumbers(const SizeVector& size, const Nodes& nodes, int depth, double* i, double* j) {
  if (nodes.size() == 1) return subscriptNumber(*nodes[0], size.numElements(), depth, i);
  if (nodes.size() != 2 || !size.isMatrix()) return false;
  return subscriptNumber(*nodes[0], size.rows(), depth, i) && subscriptNumber(*nodes[1], size.columns(), depth, j);
}

// `end`, `end + 1`, `end - k`, or any number. An extent of 0 is left to the general visit, which complains.
bool Visitor::subscriptNumber(KeloNode& node, int64_t extent, int depth, double* result) {
  NodeCache& cache = node.cache;
  if (cache.containsEnd && extent == 0) return false;
  const auto last = [&](KeloNode& end) {
    end.cache.extent = extent;
    return static_cast<double>(extent);
  };
  if (cache.kind == NodeKind::endExpr) {
    *result = last(node);
    return true;
  }
  if (cache.kind == NodeKind::binaryOps && cache.first->cache.kind == NodeKind::endExpr) {
    double shift;
    return scalar(*cache.second, depth, &shift) &&
           scalarArithmetic(static_cast<BinaryOp>(cache.selector), last(*cache.first), shift, result);
  }
  return scalar(node, depth, result);
}

}  // namespace kelo
