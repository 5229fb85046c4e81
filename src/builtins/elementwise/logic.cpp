// The operators of logic and comparison under a name.
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "values/operators.h"

namespace kelo::builtins {
namespace {

struct Operands {
  NumericArray a, b;
};

Operands readOperands(Call& call) {
  NumericArray a = read::takeNumeric(call, 0, {"A, B", "A", predicate::kNumericArray});
  NumericArray b = read::takeNumeric(call, 1, {"A, B", "B", predicate::kNumericArray});
  return {std::move(a), std::move(b)};
}

template <BinaryOp kOperator>
NodeValue comparison(Call& call) {
  auto [a, b] = readOperands(call);
  return elementwise(kOperator, std::move(a), std::move(b));
}

NodeValue exclusiveOr(Call& call) {
  const auto [a, b] = readOperands(call);
  expandedSize(a.size(), b.size());  // sizes are complained of before values that are no logicals
  return binaryLoop(a.toLogicalArray(), b.toLogicalArray(), [](bool x, bool y) noexcept { return x != y; });
}

NodeValue negation(Call& call) {
  return unary(UnaryOp::not_, read::takeNumeric(call, 0, {"A", "A", predicate::kNumericArray}));
}

// clang-format off
constexpr Builtin kLogic[] = {
    {"and", comparison<BinaryOp::and_>, {2, 2}, 1, "A, B",
     "Element-wise logical and, as A & B", "and([1 0], [1 1])"},
    {"or",  comparison<BinaryOp::or_>,  {2, 2}, 1, "A, B",
     "Element-wise logical or, as A | B", "or([1 0], [0 0])"},
    {"xor", exclusiveOr,                {2, 2}, 1, "A, B",
     "Whether exactly one of two elements is true", "xor([1 0], [1 1])"},
    {"not", negation,                   {1, 1}, 1, "A",
     "Element-wise logical not, as ~A", "not([1 0])"},
    {"eq",  comparison<BinaryOp::eqeq>, {2, 2}, 1, "A, B",
     "Whether elements are equal, as A == B", "eq([1 2], [1 3])"},
    {"ne",  comparison<BinaryOp::neq>,  {2, 2}, 1, "A, B",
     "Whether elements are unequal, as A ~= B", "ne([1 2], [1 3])"},
    {"lt",  comparison<BinaryOp::lt>,   {2, 2}, 1, "A, B",
     "Whether elements are less, as A < B", "lt([1 2], 2)"},
    {"le",  comparison<BinaryOp::le>,   {2, 2}, 1, "A, B",
     "Whether elements are less or equal, as A <= B", "le([1 2], 1)"},
    {"gt",  comparison<BinaryOp::gt>,   {2, 2}, 1, "A, B",
     "Whether elements are greater, as A > B", "gt([1 2], 1)"},
    {"ge",  comparison<BinaryOp::ge>,   {2, 2}, 1, "A, B",
     "Whether elements are greater or equal, as A >= B", "ge([1 2], 2)"},
};
// clang-format on

}  // namespace

std::span<const Builtin> logicTable() { return kLogic; }

}  // namespace kelo::builtins
