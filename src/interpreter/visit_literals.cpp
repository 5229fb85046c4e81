// The dispatcher of expressions, and the literals.
#include "interpreter/visitor.h"
#include "grammar/kelo_node.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "platform/stack_guard.h"

namespace kelo {

int32_t Visitor::visit(KeloNode& node, int outputs, int32_t wish) {
  if (platform::stackIsLow()) throw NestedTooDeeply{&node};
  resolved(node);
  switch (node.cache.kind) {
    case NodeKind::number: return visitDouble(node);
    case NodeKind::id: return visitId(node, outputs, wish);
    case NodeKind::binaryOps: return visitBinaryOps(node, wish);
    case NodeKind::unaryOps: return visitUnaryOps(node, wish);
    case NodeKind::parenthesis: return visitParenthesis(node, wish);
    case NodeKind::matrixCat: return visitMatrix_cat(node, wish);
    case NodeKind::emptyMat: return visitEmpty_mat();
    case NodeKind::builtInFunc: return visitBuilt_in_func(node, outputs, wish);
    case NodeKind::subarrayOrFunc: return visitSubarray_or_func(node, outputs, wish);
    case NodeKind::imaginary: return visitImaginary(node);
    case NodeKind::funcHandle: return visitFuncHandle(node, wish);
    case NodeKind::structure2: return visitStructure2(node, outputs, wish);
    case NodeKind::colonExpr: return visitColon_expr(node, wish);
    case NodeKind::endExpr: return visitEnd_expr(node, wish);
    case NodeKind::matrixColon: return visitMatrix_colon(node, wish);
    case NodeKind::charText: return visitChar(node);
    case NodeKind::transpose: return visitTranspose(node, wish);
    default: emit(Op::fail, &node, textIndex(text::kUnexpectedError)); return newTemporary();
  }
}

int32_t Visitor::visitDouble(KeloNode& node) {
  if (node.cache.isValid) return constant(Storable(node.cache.number));
  emit(Op::fail, &node, textIndex(text::kUnexpectedNumber));
  return newTemporary();
}

int32_t Visitor::visitImaginary(KeloNode& node) {
  if (node.cache.isValid) return constant(ComplexDoubleArray(ComplexDouble{0, node.cache.number}));
  emit(Op::fail, &node, textIndex(text::kUnexpectedImaginary));
  return newTemporary();
}

int32_t Visitor::visitChar(KeloNode& node) {
  return constant(static_cast<LiteralDetails&>(*node.cache.details).value);
}

int32_t Visitor::visitEmpty_mat() { return constant(Storable()); }

int32_t Visitor::visitParenthesis(KeloNode& node, int32_t wish) { return visit(*node.cache.first, kNoOutputs, wish); }

}  // namespace kelo
