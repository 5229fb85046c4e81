// The variables as the workspace panel lists them.
//
// Values belong to the run while one is going on. So the list is taken before a run begins and
// stands until its end.
#pragma once

#include <string>
#include <vector>

#include "display/display_parameters.h"
#include "session/json_rpc.h"
#include "values/workspace.h"

namespace kelo::session {

struct Variable {
  std::string name;
  std::string className;  ///< "double", "complex", "logical", "char", "int", "struct", "function_handle"
  std::vector<int64_t> size;
  int64_t bytes;
  std::string preview;  ///< one line of at most some 80 characters
  std::vector<std::string> fields;  ///< of a structure

  Json toJson() const;
};

/// The variables of a workspace, sorted by name. REQUIRES: no run is going on
std::vector<Variable> variablesOf(const Workspace& workspace, const DisplayParameters& parameters);

}  // namespace kelo::session
