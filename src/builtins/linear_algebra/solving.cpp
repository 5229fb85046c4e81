// Equations, inverses, condition and determinant. The algorithms and most of their complaints stand
// in linear/.
#include "builtins/linear_algebra/handlers.h"
#include "builtins/linear_algebra/matrix_arguments.h"
#include "linear/linear.h"
#include "linear/lu.h"
#include "messages/catalogue/linear_algebra.h"
#include "messages/catalogue/operators.h"
#include "values/numbers.h"

namespace kelo::builtins::linear_algebra {
namespace {

NumericArray operand(const Call& call, int position) {
  const Wording words = Wording::sentence(text::kInvalidArguments);
  const NumericArray& array = read::numeric(call, position, words);
  if (!array.has(Property::matrixInNumbers)) throw words.complaint(call);
  return charsToNumbers(array);
}

/// Of a system without equations or unknowns, or of a square one without right sides.
Solution emptySolution(const NumericArray& a, const NumericArray& b) {
  Solution solution;
  solution.x = DoubleArray(SizeVector(a.size().columns(), b.size().columns()), 0.0);
  solution.rcond = a.isEmpty() ? INFINITY : rcond(a);
  return solution;
}

}  // namespace

NodeValue linsolve(Call& call) {
  const NumericArray a = operand(call, 0), b = operand(call, 1);
  const bool isSquare = a.size().rows() == a.size().columns();
  if (a.size().rows() != b.size().rows()) throw Wording::sentence(text::kSameRows).complaint(call);
  Solution solution = a.isEmpty() || (b.isEmpty() && isSquare) ? emptySolution(a, b) : solve(a, b);
  report(solution, a.size(), text::kLeftEquation, [&call](const std::string& text) { call.warn(text); });
  const double quality = isSquare ? solution.rcond : static_cast<double>(solution.rank);
  return call.outputs({std::move(*solution.x), Storable(quality)});
}

NodeValue inv(Call& call) {
  NumericArray a = takeMatrix(call, Matrix::square, Text::refused, Wording::sentence(text::kInverseOfNonSquare));
  return inverse(std::move(a), [&call](const std::string& text) { call.warn(text); });
}

NodeValue rcond(Call& call) {
  return NodeValue(rcond(takeMatrix(call, Matrix::squareFinite, Text::refused, {"A", "A", text::kSquareFiniteMatrix})));
}

NodeValue det(Call& call) {
  return determinant(takeMatrix(call, Matrix::square, Text::asNumbers, {"A", "A", text::kSquareMatrix}));
}

}  // namespace kelo::builtins::linear_algebra
