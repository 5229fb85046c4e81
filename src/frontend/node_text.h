// Questions about where a node stands in the text that it was parsed from.
#pragma once

#include <memory>
#include <string>

#include "grammar/kelo_node.h"

namespace kelo {

class ParsedText;

/// The parse that a node belongs to.
std::shared_ptr<const ParsedText> parseOf(const KeloNode& node);

/// A place in the text, as messages carry it.
struct TextPosition {
  int line = 1;     ///< from 1
  int charPos = 0;  ///< code point in the line, from 0
};

/// Where a node begins. Costs two reads.
TextPosition positionOf(const KeloNode& node);
TextPosition positionOf(const antlr4::Token& token);

/// The text of a node as the user typed it, with blanks and comments between its tokens.
std::string sourceText(const KeloNode& node);

}  // namespace kelo
