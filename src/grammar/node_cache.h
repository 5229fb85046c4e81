// What the evaluator finds once per node and keeps with it: the kind of the node, its operator,
// name, literal and operands.
//
// Nodes are made by the parser without any of this; the first visit fills it in (see resolve.h in
// the interpreter). Later visits neither ask for the class of a node nor read the text of a token.
#pragma once

#include <cstdint>
#include <memory>

#include "values/name.h"

namespace kelo {

class KeloNode;

/// What a node is to the evaluator. `unresolved`: not visited yet; `none`: nothing that can be
/// evaluated.
enum class NodeKind : uint8_t {
  unresolved, none,
  number, imaginary, charText, emptyMat, parenthesis,
  id, unaryOps, binaryOps, transpose, matrixColon, matrixCat,
  subarrayOrFunc, builtInFunc, structure2, funcHandle, endExpr, colonExpr,
  statList, expression, assignment, forLoop, whileLoop, if_, switch_, break_, continue_, return_,
};

/// What only some kinds of node need; each kind has a struct of its own.
struct NodeDetails {
  virtual ~NodeDetails() = default;
};

struct NodeCache {
  NodeKind kind = NodeKind::unresolved;
  uint8_t selector = 0;        ///< the operator, or the alternative of the rule
  bool flag = false;           ///< statements: shows its result; lists: break and continue are allowed; literals: valid
  bool containsEnd = false;    ///< an index with the keyword `end` in it
  Name name;                   ///< of a variable or function
  mutable uint32_t hint = 0;   ///< where the name stood in its workspace last time
  int32_t line = -1;           ///< of the first token, from 1; -1: not asked yet
  int32_t charPos = -1;        ///< code point in the line, from 0
  int64_t extent = -1;         ///< `end` and ":": the extent of the last index they stood in
  double number = 0;           ///< literals
  KeloNode* first = nullptr;   ///< operands
  KeloNode* second = nullptr;
  std::unique_ptr<NodeDetails> details;
};

}  // namespace kelo
