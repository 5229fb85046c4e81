// The operators of products, quotients and powers under a name, those of matrices among them.
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "linear/linear.h"
#include "messages/catalogue/elementwise.h"

namespace kelo::builtins {
namespace {

struct Operands {
  const char *signature, *first, *second;
};
constexpr Operands kAlike = {"A, B", "A", "B"};
constexpr Operands kMatrixFirst = {"A, b", "A", "b"};
constexpr Operands kMatrixLast = {"b, A", "b", "A"};

NumericArray applied(BinaryOp op, const Operands& names, Call& call) {
  NumericArray a = read::takeNumeric(call, 0, {names.signature, names.first, predicate::kNumericArray});
  NumericArray b = read::takeNumeric(call, 1, {names.signature, names.second, predicate::kNumericArray});
  return binary(op, std::move(a), std::move(b), [&call](const std::string& text) { call.warn(text); });
}

template <BinaryOp kOperator, const Operands& kNames = kAlike>
NodeValue arithmetic(Call& call) {
  return applied(kOperator, kNames, call);
}

/// Powers that came out complex count as real when no imaginary part is left.
NodeValue realpow(Call& call) {
  NumericArray powers = applied(BinaryOp::dpower, kAlike, call);
  if (!powers.has(Property::allReals)) throw Wording::sentence(text::kRealResults).complaint(call);
  return std::move(powers).toDoubleArray();
}

// clang-format off
constexpr Builtin kArithmetic[] = {
    {"times",    arithmetic<BinaryOp::dmult>,                    {2, 2}, 1, "A, B",
     "Element-wise product, as A .* B", "times([1 2], [3 4])"},
    {"mtimes",   arithmetic<BinaryOp::mult>,                     {2, 2}, 1, "A, B",
     "Product of matrices, as A * B", "mtimes([1 2], [3; 4])"},
    {"rdivide",  arithmetic<BinaryOp::rdivide>,                  {2, 2}, 1, "A, B",
     "Element-wise quotient, as A ./ B", "rdivide([1 4], 2)"},
    {"ldivide",  arithmetic<BinaryOp::ldivide>,                  {2, 2}, 1, "A, B",
     "Element-wise quotient, as A .\\ B", "ldivide(2, [1 4])"},
    {"mrdivide", arithmetic<BinaryOp::mrdivide, kMatrixLast>,    {2, 2}, 1, "b, A",
     "Solves x * A = b, as b / A", "mrdivide([4 6], [2 0; 0 3])"},
    {"mldivide", arithmetic<BinaryOp::mldivide, kMatrixFirst>,   {2, 2}, 1, "A, b",
     "Solves A * x = b, as A \\ b", "mldivide([2 0; 0 3], [4; 6])"},
    {"power",    arithmetic<BinaryOp::dpower>,                   {2, 2}, 1, "A, B",
     "Element-wise power, as A .^ B", "power([1 2 3], 2)"},
    {"mpower",   arithmetic<BinaryOp::power, kMatrixFirst>,      {2, 2}, 1, "A, b",
     "Power of a square matrix, as A ^ b", "mpower([1 1; 1 0], 10)"},
    {"realpow",  realpow,                                        {2, 2}, 1, "A, B",
     "Element-wise power with real results only", "realpow([1 2 3], 2)"},
};
// clang-format on

}  // namespace

std::span<const Builtin> arithmeticTable() { return kArithmetic; }

}  // namespace kelo::builtins
