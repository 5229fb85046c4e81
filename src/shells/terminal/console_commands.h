// The console's own commands: what a line begins with that is no text of the language.
#pragma once

namespace kelo::terminal {

struct ConsoleCommand {
  const char* form;  ///< the command and, after a blank, the argument that it takes
  const char* help;
};

/// As the console's help lists them.
inline constexpr ConsoleCommand kConsoleCommands[] = {
    {"?NAME", "show the page of a function"},
    {":save NAME", "keep the figure among the documents"},
    {":figures", "list the figures that are kept"},
    {":show NAME", "make a kept figure the current one"},
    {":export FILE", "write the figure: .png .pdf .svg .kfig"},
    {":close", "close the figure"},
};

}  // namespace kelo::terminal
