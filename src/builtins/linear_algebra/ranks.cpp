// What depends on how small is nothing: pseudo-inverse, rank, echelon form; and norms.
#include <algorithm>
#include <cmath>

#include "builtins/linear_algebra/handlers.h"
#include "builtins/linear_algebra/matrix_arguments.h"
#include "linear/norm.h"
#include "linear/rref.h"
#include "linear/svd.h"
#include "messages/catalogue/linear_algebra.h"

namespace kelo::builtins::linear_algebra {

NodeValue pinv(Call& call) {
  NumericArray a = takeMatrix(call, Matrix::any, Text::asNumbers,
                              {call.count() == 1 ? "A" : "A, tol", "A", predicate::kNumericMatrix});
  if (!a.has(Property::allWellDefinedRealParts)) throw Wording::sentence(text::kFiniteInputs).complaint(call);
  return pseudoInverse(std::move(a), tolerance(call));
}

namespace {

DoubleArray tolerances(const Call& call) {
  const Wording words{"A, tol", "tol", text::kFiniteTolerances};
  DoubleArray result = read::real(call, 1, words);
  const auto isTolerance = [](double x) { return x >= 0 && x < INFINITY; };
  if (!std::all_of(result.values().begin(), result.values().end(), isTolerance)) throw words.complaint(call);
  return result;
}

double countAbove(const DoubleArray& singularValues, double limit) {
  const auto values = singularValues.values();
  return static_cast<double>(std::count_if(values.begin(), values.end(), [limit](double s) { return s > limit; }));
}

}  // namespace

NodeValue rank(Call& call) {
  NumericArray a = takeMatrix(call, Matrix::finite, Text::refused, Wording::sentence(text::kFirstFiniteMatrix));
  DoubleArray limits;
  if (call.count() == 2) limits = tolerances(call);
  const SizeVector size = a.size();
  const DoubleArray s = singularValues(std::move(a), text::kRankFailed);
  if (call.count() == 1) return NodeValue(s.isEmpty() ? 0.0 : countAbove(s, rankTolerance(size, s[0])));
  std::transform(limits.values().begin(), limits.values().end(), limits.writable(),
                 [&s](double limit) { return countAbove(s, limit); });
  return limits;
}

NodeValue norm(Call& call) {
  const char* signature = call.count() == 1 ? "x" : "x, p";
  NumericArray x = takeMatrix(call, Matrix::any, Text::asNumbers, {signature, "x", text::kVectorOrMatrix});
  const bool isVector = x.size().isVector();
  const Wording words = Wording::sentence(isVector ? text::kNormOfVector : text::kNormOfMatrix);
  const double p = call.count() == 1 ? 2 : read::realScalar(call, 1, words);
  const bool isAllowed = isVector ? p > 0 || p == -INFINITY : p == 1 || p == 2 || p == INFINITY;
  if (!isAllowed) throw words.complaint(call);
  try {
    return NodeValue(isVector ? vectorNorm(x, p) : matrixNorm(std::move(x), p));
  } catch (const std::exception&) {
    throw problem(text::kNormError);
  }
}

NodeValue rref(Call& call) {
  NumericArray a = takeMatrix(call, Matrix::any, Text::refused, Wording::sentence(text::kFirstNumericMatrix));
  Rref result = kelo::rref(std::move(a), tolerance(call));
  auto columns = DoubleArray::uninitialized(SizeVector(1, static_cast<int64_t>(result.pivots.size())));
  std::transform(result.pivots.begin(), result.pivots.end(), columns.writable(),
                 [](int64_t k) { return static_cast<double>(k + 1); });
  return call.outputs({std::move(result.reduced), std::move(columns)});
}

}  // namespace kelo::builtins::linear_algebra
