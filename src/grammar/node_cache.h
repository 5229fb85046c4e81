// What is found once per node and kept with it: the kind of the node, its operator, name, literal
// and operands.
//
// Nodes are made by the parser without any of this; the lowering fills it in before it visits a
// node (see resolve.h in the interpreter), and so asks for the class of a node and reads the text
// of its tokens once.
#pragma once

#include <cstdint>
#include <memory>

#include "values/name.h"

namespace kelo {

class KeloNode;

/// What a node is. `unresolved`: not looked at yet; `none`: nothing that can be evaluated.
enum class NodeKind : uint8_t {
  unresolved, none,
  number, imaginary, charText, emptyMat, parenthesis,
  id, unaryOps, binaryOps, transpose, matrixColon, matrixCat,
  subarrayOrFunc, builtInFunc, structure2, funcHandle, endExpr, colonExpr,
  statList, expression, assignment, forLoop, whileLoop, if_, switch_, break_, continue_, return_,
};

/// What an assignment writes to: NAME, [NAMES], NAME(ARGS), NAME.FIELD...
enum class AssignmentForm : uint8_t { variable, list, elements, chain };

/// What only some kinds of node need; each kind has a struct of its own.
struct NodeDetails {
  virtual ~NodeDetails() = default;
};

struct NodeCache {
  NodeKind kind = NodeKind::unresolved;
  uint8_t op = 0;                ///< the BinaryOp or UnaryOp of an operator
  bool isValid = false;          ///< literals: the text is a number
  bool containsEnd = false;      ///< an argument with the keyword `end` in it
  Name name;                     ///< of a variable or function
  AssignmentForm assignment = AssignmentForm::variable;
  bool shows = false;            ///< statements: no ";" after it
  int32_t line = -1;             ///< of the first token, from 1; -1: not asked yet
  int32_t charPos = -1;          ///< code point in the line, from 0
  int64_t extent = -1;           ///< `end` and ":": the extent of the last index they stood in; -1: none yet
  double number = 0;             ///< literals
  KeloNode* first = nullptr;     ///< operands
  KeloNode* second = nullptr;
  std::unique_ptr<NodeDetails> details;
};

}  // namespace kelo
