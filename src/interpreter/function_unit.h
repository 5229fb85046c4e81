// A declared function and the code of an anonymous one, lowered when they are first called. Both
// come twice: for calls that give all inputs, which are then known to be there, and for the others.
#pragma once

#include "interpreter/code.h"
#include "grammar/node_cache.h"
#include "values/function_bodies.h"

namespace kelo {

class BuiltinTable;

struct FunctionUnit : NodeDetails {
  Name funName;
  std::vector<Name> inputs, outputs;
  KeloNode* body = nullptr;     ///< null: no statements
  KeloNode* node = nullptr;     ///< the declaration
  KeloNode* program = nullptr;  ///< of a main function: its file
  bool isMain = false;

  const Code& code(bool areGiven, const BuiltinTable& builtins);

 private:
  std::unique_ptr<Code> given_, cautious_;
};

/// The body of an anonymous function, once a call has parsed it.
struct HandleCode {
  std::shared_ptr<void> parsed;  ///< owner of the tree
  KeloNode* expression = nullptr;
  std::unique_ptr<Code> given, cautious;
};

}  // namespace kelo
