// The dispatcher of expressions, and the literals.
#include "interpreter/environment.h"
#include "interpreter/resolve.h"
#include "interpreter/visit_guard.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"

namespace kelo {

NodeValue Visitor::visit(KeloNode& node, Outputs outputs) {
  switch (node.cache.kind) {
    case NodeKind::number: return visitDouble(node);
    case NodeKind::id: return visitId(node, outputs);
    case NodeKind::binaryOps: return visitBinaryOps(node);
    case NodeKind::unaryOps: return visitUnaryOps(node);
    case NodeKind::parenthesis: return stackHasRoom(node) ? visit(*node.cache.first) : NodeValue::failure();
    case NodeKind::matrixCat: return visitMatrix_cat(node);
    case NodeKind::emptyMat: return NodeValue(DoubleArray());
    case NodeKind::builtInFunc: return visitBuilt_in_func(node, outputs);
    case NodeKind::subarrayOrFunc: return visitSubarray_or_func(node, outputs);
    case NodeKind::imaginary: return visitImaginary(node);
    case NodeKind::funcHandle: return visitFuncHandle(node);
    case NodeKind::structure2: return visitStructure2(node, outputs);
    case NodeKind::colonExpr: return visitColon_expr(node);
    case NodeKind::endExpr: return visitEnd_expr(node);
    case NodeKind::matrixColon: return visitMatrix_colon(node);
    case NodeKind::charText: return visitChar(node);
    case NodeKind::transpose: return visitTranspose(node);
    case NodeKind::unresolved:
      if (!stackHasRoom(node)) return NodeValue::failure();
      resolve(node, app_.builtins);
      return visit(node, outputs);
    default: return fail(node, text::kUnexpectedError);
  }
}

NodeValue Visitor::visitDouble(KeloNode& node) {
  return node.cache.flag ? NodeValue(node.cache.number) : fail(node, text::kUnexpectedNumber);
}

NodeValue Visitor::visitImaginary(KeloNode& node) {
  return node.cache.flag ? NodeValue(ComplexDouble{0, node.cache.number}) : fail(node, text::kUnexpectedImaginary);
}

NodeValue Visitor::visitChar(KeloNode& node) { return NodeValue(detailsOf<LiteralDetails>(node).value); }

}  // namespace kelo
