// The operators of products, quotients and powers under a name, those of matrices among them.
#include "builtins/elementwise/handlers.h"
#include "interpreter/reader.h"
#include "linear/linear.h"
#include "messages/catalogue/elementwise.h"

namespace kelo::builtins {
namespace {

NumericArray apply(BinaryOp op, Call& call, const char* signature, const char* first, const char* second) {
  NumericArray a = read::takeNumeric(call, 0, {signature, first, predicate::kNumericArray});
  NumericArray b = read::takeNumeric(call, 1, {signature, second, predicate::kNumericArray});
  return binary(op, std::move(a), std::move(b), [&call](const std::string& text) { call.warn(text); });
}

/// Powers that came out complex count as real when no imaginary part is left.
NumericArray realOnly(NumericArray powers, const Call& call) {
  if (!powers.has(Property::allReals)) throw Wording::sentence(text::kRealResults).complaint(call);
  return std::move(powers).toDoubleArray();
}

}  // namespace

NodeValue division(Call& call) {
  switch (call.selector<Division>()) {
    case Division::ldivide: return apply(BinaryOp::ldivide, call, "A, B", "A", "B");
    case Division::rdivide: return apply(BinaryOp::rdivide, call, "A, B", "A", "B");
    case Division::mldivide: return apply(BinaryOp::mldivide, call, "A, b", "A", "b");
    case Division::mrdivide: break;
  }
  return apply(BinaryOp::mrdivide, call, "b, A", "b", "A");
}

NodeValue product(Call& call) {
  const bool isMatrix = call.selector<Product>() == Product::mtimes;
  return apply(isMatrix ? BinaryOp::mult : BinaryOp::dmult, call, "A, B", "A", "B");
}

NodeValue power(Call& call) {
  switch (call.selector<Power>()) {
    case Power::mpower: return apply(BinaryOp::power, call, "A, b", "A", "b");
    case Power::realpow: return realOnly(apply(BinaryOp::dpower, call, "A, B", "A", "B"), call);
    case Power::power: break;
  }
  return apply(BinaryOp::dpower, call, "A, B", "A", "B");
}

}  // namespace kelo::builtins
