// The files that were parsed in one run, so that a function called in a loop is parsed once.
// Whoever starts a run empties it, so that each run reads the files as they are.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "KeloParser.h"

namespace kelo {

/// A node and, with it, the whole parse that it belongs to.
template <class Context>
using Tree = std::shared_ptr<Context>;

/// From the path of a file, relative to the work directory, to its tree.
using ParserBuffer = std::map<std::string, Tree<KeloParser::ProgContext>>;

}  // namespace kelo
