// The operators of logic and comparison under a name.
#include "builtins/elementwise/handlers.h"
#include "interpreter/reader.h"
#include "values/operators.h"

namespace kelo::builtins {
namespace {

NumericArray exclusiveOr(const NumericArray& a, const NumericArray& b) {
  expandedSize(a.size(), b.size());  // sizes are complained of before values that are no logicals
  return binaryLoop(a.toLogicalArray(), b.toLogicalArray(), [](bool x, bool y) noexcept { return x != y; });
}

}  // namespace

NodeValue logic(Call& call) {
  constexpr BinaryOp kOperators[] = {BinaryOp::and_, BinaryOp::eqeq, BinaryOp::ge,   BinaryOp::gt, BinaryOp::le,
                                     BinaryOp::lt,   BinaryOp::neq,  BinaryOp::and_, BinaryOp::or_};
  const auto which = call.selector<Logic>();
  if (which == Logic::not_)
    return unary(UnaryOp::not_, read::takeNumeric(call, 0, {"A", "A", predicate::kNumericArray}));
  NumericArray a = read::takeNumeric(call, 0, {"A, B", "A", predicate::kNumericArray});
  NumericArray b = read::takeNumeric(call, 1, {"A, B", "B", predicate::kNumericArray});
  if (which == Logic::xor_) return exclusiveOr(a, b);
  return elementwise(kOperators[call.builtin.selector], std::move(a), std::move(b));
}

}  // namespace kelo::builtins
