// A transcript: what is typed and what comes back, as text. tests/README.md describes its form; the
// examples of the help pages have the same one.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "player/player.h"

namespace kelo::player {

/// What a line of a transcript is.
enum class LineKind { output, caseName, comment, file, program, command, continuation, answer };

struct Line {
  LineKind kind;
  std::string text;  ///< after the mark; of an output line without the backslash before it
};

Lines splitLines(const std::string& text);
Line readLine(const std::string& line);

/// How output is written: with ¬ after a line that ends in a blank and in place of an empty line
/// at an item's end, or as it is, without blanks at the ends of lines.
enum class OutputForm { marked, plain };

/// Plays the steps of a transcript and writes it again; only what stands after a command is put in
/// anew. A line "## name" begins a case with a fresh player; without one the given player goes on.
std::string replay(const std::string& transcript, std::unique_ptr<Player>& player, OutputForm form);

}  // namespace kelo::player
