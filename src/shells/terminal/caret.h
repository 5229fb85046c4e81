// The offending line under an error, with a caret below its column.
#pragma once

#include <string>

namespace kelo::terminal {

/// "    LINE\n    ^" with the caret below a code point, counted from 0. Wide characters take two
/// cells, combining marks none, a tab is kept. Empty when the text has no such line.
std::string caretExcerpt(const std::string& text, int lineNum, int charPos);

}  // namespace kelo::terminal
