// Filling the caches of nodes: everything about a node that its class, its tokens and its children
// tell.
#pragma once

namespace kelo {

class BuiltinTable;
class KeloNode;
struct FunctionUnit;
struct ProgramDetails;

/// Fills the cache of a statement or an expression; afterwards its kind is not `unresolved`.
void resolve(KeloNode& node, const BuiltinTable& builtins);

/// The parts of a program (the tree of rule prog), found at the first call.
ProgramDetails& programDetails(KeloNode& program);

/// A declared function, whose parts are found at the first call.
FunctionUnit& functionUnit(KeloNode& declaration);

/// The expression of an Expr_only.
KeloNode* expressionOf(KeloNode& exprOnly);

}  // namespace kelo
