// What the front end makes of a text, as text: its tokens and its tree, as `kelo --tokens` and
// `kelo --tree` print them.
#pragma once

#include <string>
#include <string_view>

#include "antlr4-runtime.h"

namespace kelo {

/// The tokens that the parser reads, one a line: line and column from 1, kind, text in quotes. A
/// comma in place of a blank between two elements of a matrix shows with the blank as its text.
/// Bytes that are no text give nothing.
std::string tokenListing(std::string_view text);

/// A tree, a node a line, each two blanks deeper than its parent: its class and the tokens that are
/// all it has, or its children below it.
std::string treeListing(antlr4::tree::ParseTree& root);

}  // namespace kelo
