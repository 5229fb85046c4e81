// The bodies behind handles and local functions: what a call needs. Parse trees are held by shared
// pointers whose type the value model does not know.
#pragma once

#include "values/function_handle.h"
#include "values/storable.h"
#include "values/workspace.h"

namespace kelo {

/// What all handles share that were made where one "@(x) ..." stands.
struct HandleBody : CountedObject {
  std::string expression;   ///< source of the body, as typed
  std::string displayText;  ///< what the console shows: from "@" to the end of the body
  std::vector<Name> inputArgs;
  std::vector<Name> captured;      ///< the other names in the body: what a handle captures
  std::vector<bool> mayBeScript;   ///< of each: whether it stands alone, so that it may mean a script
  bool capturesAll = false;        ///< the body looks at its workspace by other ways than names
  std::optional<int> exprLineNum, exprCharPos;  ///< of the body in its source: line from 1, code point from 0
  Name relativePath;        ///< file where it was written; empty: the console
  std::shared_ptr<void> code;  ///< of the body, once a call has made it
};

struct AnonymousFunction : CountedObject {
  Ref<HandleBody> body;
  SmallVector<Storable> values;       ///< of body->captured, as they were at definition; none: no variable
  std::vector<Storable> inputValues;  ///< of variables named like inputs, for calls that leave those out
  bool isWhole = true;                ///< there were variables of all these names
  std::unique_ptr<Workspace> all;     ///< all variables, where the body may ask for any
  Ref<LocalFunctionFile> functions;   ///< that the body may call; may be null
};

struct LocalFunctionBody {
  Name funName;
  std::vector<Name> inputArgs, outputArgs;
  KeloNode* declaration = nullptr;
};

/// All local functions of one file or script, in order.
struct LocalFunctionFile : CountedObject {
  Name url;  ///< the file's relative path; empty: the console
  std::vector<LocalFunctionBody> functions;
  std::shared_ptr<void> owner;  ///< of the trees

  int64_t indexOf(Name name) const;  ///< -1 when there is none
};

}  // namespace kelo
