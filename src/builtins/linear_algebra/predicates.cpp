// Questions about the pattern of a matrix: its band, and whether it mirrors itself.
#include "builtins/linear_algebra/handlers.h"
#include "builtins/linear_algebra/matrix_arguments.h"
#include "linear/matrix_structure.h"
#include "messages/catalogue/linear_algebra.h"

namespace kelo::builtins::linear_algebra {
namespace {

Bandwidth bandOfFirst(const Call& call) {
  const NumericArray* array = call.arg(0).numeric();
  if (array && array->is(Kind::Char)) throw Wording::sentence(text::kNotForCharacters).complaint(call);
  if (!array || !array->size().isMatrix()) throw problem(text::kFirstInvalid, text::kShouldBeNumericMatrix);
  return bandwidthOf(*array);
}

NodeValue truth(bool value) { return LogicalArray(value); }

}  // namespace

NodeValue band(Call& call) {
  const Bandwidth found = bandOfFirst(call);
  switch (call.selector<Band>()) {
    case Band::isdiag: return truth(found.lower == 0 && found.upper == 0);
    case Band::istril: return truth(found.upper == 0);
    case Band::istriu: return truth(found.lower == 0);
    case Band::isbanded: break;
  }
  const Wording words{"A, lower, upper", "lower and upper", text::kBandLimits};
  const int64_t lower = read::integer(call, 1, words, 0), upper = read::integer(call, 2, words, 0);
  return truth(found.lower <= lower && found.upper <= upper);
}

NodeValue bandwidth(Call& call) {
  const Bandwidth found = bandOfFirst(call);
  const Storable lower(static_cast<double>(found.lower)), upper(static_cast<double>(found.upper));
  if (call.count() == 1) return call.outputs({lower, upper});
  const bool wantsUpper = read::option(call, 1, {"A, type", "type", text::kUpperOrLower}, {"upper", "lower"}) == 0;
  if (call.outputCount() > 1) throw outputCountComplaint(call.name(), 1);
  return wantsUpper ? upper : lower;
}

NodeValue symmetry(Call& call) {
  const NumericArray a = takeMatrix(call, Matrix::any, Text::asNumbers,
                                    {call.count() == 1 ? "A" : "A, tol", "A", predicate::kNumericMatrix});
  const bool conjugated = call.selector<Symmetry>() == Symmetry::ishermitian;
  return truth(isMirrored(a, conjugated ? Mirror::conjugated : Mirror::plain, tolerance(call).value_or(0)));
}

}  // namespace kelo::builtins::linear_algebra
