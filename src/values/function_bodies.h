// The bodies behind handles and local functions: what a call needs. Parse trees are held by shared pointers whose type
// the value model does not know.
#pragma once

#include "values/function_handle.h"
#include "values/workspace.h"

namespace kelo {

struct AnonymousFunction : CountedObject {
  Workspace workspace;      ///< the variables captured at definition
  std::string expression;   ///< source of the body, as typed
  std::string displayText;  ///< what the console shows: from "@" to the end of the body
  std::vector<Name> inputArgs;
  std::optional<int> exprLineNum, exprCharPos;  ///< of the body in its source: line from 1, code point from 0
  Name relativePath;        ///< file where it was written; empty: the console

  std::shared_ptr<void> parsed;  ///< owner of the body's tree, once a call has parsed it
  KeloNode* tree = nullptr;
};

struct LocalFunctionBody {
  Name funName;
  std::vector<Name> inputArgs, outputArgs;
  KeloNode* parseTree = nullptr;  ///< statement list of the body; null: empty
};

/// All local functions of one file or script, in order.
struct LocalFunctionFile : CountedObject {
  Name url;  ///< the file's relative path; empty: the console
  std::vector<LocalFunctionBody> functions;
  std::shared_ptr<void> owner;  ///< of the trees

  int64_t indexOf(Name name) const;  ///< -1 when there is none
};

}  // namespace kelo
