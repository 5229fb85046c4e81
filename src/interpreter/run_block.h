// The run block: one command or one file, from text to the end of its run. Runs on the parser
// queue.
#pragma once

#include <string>

#include "interpreter/console.h"

namespace kelo {

class Environment;

/// Runs a text of the console in the base workspace.
RunResult runCommand(Environment& environment, const std::string& text);

/// Runs a file. Names of files are looked up in its directory while it runs.
RunResult runFile(Environment& environment, const std::string& directory, const std::string& fileName);

}  // namespace kelo
