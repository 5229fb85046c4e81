// What is kept with the nodes that need more than a NodeCache: lists of operands, calls, chains,
// functions.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "grammar/node_cache.h"
#include "interpreter/builtin.h"
#include "messages/message.h"
#include "values/function_bodies.h"

namespace kelo {

struct FunctionUnit;

/// Char: the text. Built as a value once.
struct LiteralDetails : NodeDetails {
  Storable value;
};

/// Nodes in order: the statements of a list, the operands of a range, the operands of an
/// assignment.
struct ListDetails : NodeDetails {
  std::vector<KeloNode*> nodes;
  std::vector<Name> names;  // of an assignment to several variables
};

/// The transposes after an operand, from the left: true for "'", false for ".'".
struct TransposeDetails : NodeDetails {
  std::vector<bool> conjugates;
};

/// The elements of a bracket expression; `startsRow` when a row end stands before one.
struct CatDetails : NodeDetails {
  struct Element {
    KeloNode* node;
    bool startsRow;
  };
  std::vector<Element> elements;
};

/// NAME(ARGS), of a variable, a function or a built-in.
struct CallDetails : NodeDetails {
  std::vector<KeloNode*> args;
  const Builtin* builtin = nullptr;
  bool isCommand = false;  // "hold on"
};

/// A handle as it is written.
struct HandleDetails : NodeDetails {
  enum class Form : uint8_t { anonymous, builtIn, name };
  Form form = Form::anonymous;
  Ref<HandleBody> body;  // of an anonymous function
  std::optional<Problem> problem;
};

/// One ".f", ".(e)", with what stands in parentheses after it.
struct FieldDetails {
  Name name;                   // of a fixed field
  KeloNode* expression = nullptr;  // of ".(e)"
  bool hasArgs = false;
  std::vector<KeloNode*> args;
  KeloNode* node = nullptr;
};

/// NAME(ARGS).FIELD.FIELD..., read or written. The name stands in the cache.
struct ChainDetails : NodeDetails {
  bool hasArgs = false;
  std::vector<KeloNode*> args;
  std::vector<FieldDetails> fields;
  KeloNode* right = nullptr;  // of an assignment

  /// The field of NAME.FIELD and NAME.FIELD(ARGS); null for longer chains.
  const FieldDetails* onlyField() const {
    return fields.size() == 1 && !hasArgs && !fields.front().expression ? &fields.front() : nullptr;
  }
  /// Whether it is a row of fixed fields without subscripts.
  bool isPath() const {
    const auto isFixed = [](const FieldDetails& field) { return !field.expression && !field.hasArgs; };
    return !hasArgs && std::all_of(fields.begin(), fields.end(), isFixed);
  }
};

/// One branch of an `if` or a `switch`; no condition for `else` and `otherwise`.
struct BranchDetails : NodeDetails {
  struct Branch {
    KeloNode* condition;
    KeloNode* body;  // null: no statements
    KeloNode* node;
  };
  std::vector<Branch> branches;
};

/// A whole text: the main function or the statement list, and the local functions.
struct ProgramDetails : NodeDetails {
  enum class Form { function, statList, noText };
  Form form = Form::noText;
  FunctionUnit* main = nullptr;  // kept with its declaration
  KeloNode* statements = nullptr;
  std::vector<LocalFunctionBody> localFunctions;
  std::optional<std::string> problem;  // what forbids to run it: a name declared twice
  KeloNode* problemNode = nullptr;
};

}  // namespace kelo
