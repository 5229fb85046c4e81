// Help on the built-in functions: `kelo --functions [NAME]`, and `?` and `?NAME` in the console.
#pragma once

#include <string>

#include "docs/terminal_text.h"

namespace kelo::terminal {

/// All names by family with a line of help each; after them, where `listsCommands`, the console's
/// own commands.
std::string functionTable(bool listsCommands);

/// Prints the page of a built-in function, or the table when the name is empty. False: there is no
/// such function, and one line has said so.
bool printFunctionHelp(const std::string& name, const docs::TextLook& look, bool listsCommands);

/// Answers a line of the console that begins with "?"; false for any other line.
bool runHelpLine(const std::string& line, const docs::TextLook& look);

}  // namespace kelo::terminal
