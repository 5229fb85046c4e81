// The command line.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "figures/drawing/geometry.h"

namespace kelo::terminal {

/// What the program ends with.
enum ExitStatus { kAllRan = 0, kCommandFailed = 1, kWrongUsage = 2, kFatalFault = 70, kInterrupted = 130 };

/// How far a text goes: what stands before `run` is printed, and nothing runs.
enum class Stage { tokens, tree, code, run };

struct Options {
  std::vector<std::string> commands;  ///< of -e, in order
  std::optional<std::string> file;    ///< "-" is standard input
  std::optional<std::string> workDir;
  std::optional<int> numDigitIndex;  ///< into the list 5, 8, 12, 16
  std::optional<int> width;          ///< character cells
  std::optional<std::string> stateDir;
  std::optional<std::string> documentsDir;
  bool json = false;
  std::optional<std::string> functions;  ///< a built-in's name to show the page of; empty: the table of all
  Stage stage = Stage::run;
  bool noNative = false;  ///< makes no native code
  std::vector<std::string> figureFiles;  ///< of --figure, written at the end
  drawing::Size figureSize;              ///< points
  std::string theme = "light";           ///< or "dark"
  std::string plots = "auto";            ///< or "picture", "braille", "none"
};

/// The options, or the status to end with at once: help or version have been printed, or one line
/// on the wrong usage.
std::variant<Options, ExitStatus> parseOptions(int argc, char** argv);

}  // namespace kelo::terminal
