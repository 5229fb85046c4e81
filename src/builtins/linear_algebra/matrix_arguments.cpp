#include "builtins/linear_algebra/matrix_arguments.h"

#include "messages/catalogue/linear_algebra.h"

namespace kelo::builtins::linear_algebra {
namespace {

bool satisfies(const NumericArray& array, Matrix demand) {
  const bool square = demand == Matrix::square || demand == Matrix::squareFinite;
  const bool finite = demand == Matrix::finite || demand == Matrix::squareFinite;
  return array.has(square ? Property::squareMatrixInNumbers : Property::matrixInNumbers) &&
         (!finite || array.has(Property::allWellDefinedRealParts));
}

}  // namespace

NumericArray takeMatrix(Call& call, Matrix demand, Text text, const Wording& words) {
  NumericArray array = read::takeNumeric(call, 0, words);
  const bool isText = array.is(Kind::Char);
  if ((isText && text == Text::refused) || !satisfies(array, demand)) throw words.complaint(call);
  return isText ? std::move(array).toKind(Kind::Double) : array;
}

std::optional<double> tolerance(const Call& call) {
  if (call.count() < 2) return std::nullopt;
  const Wording words{"A, tol", "tol", text::kFiniteTolerance};
  const double result = read::realScalar(call, 1, words);
  if (!(result >= 0 && result < INFINITY)) throw words.complaint(call);
  return result;
}

bool isZero(const Storable& value) {
  const auto number = read::asInteger(value);
  return number && *number == 0 && !read::isText(value);
}

}  // namespace kelo::builtins::linear_algebra
