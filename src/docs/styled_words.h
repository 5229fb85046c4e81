// The text of a node of Markdown as words, each with its style, ready to be filled into lines of a
// terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "docs/markdown.h"

namespace kelo::docs {

// What begins a style on a terminal, and what ends any.
inline constexpr std::string_view kBoldStyle = "\x1b[1m";
inline constexpr std::string_view kCodeStyle = "\x1b[36m";
inline constexpr std::string_view kPlainStyle = "\x1b[0m";

/// A stretch of text without a blank; the next one joins it unless a blank stands between.
struct Word {
  std::string text;
  std::string_view style;
  bool blankBefore;
  bool breakBefore = false;
};

/// The words below a node; `style` is that of words without one of their own. Formulas become plain
/// text.
std::vector<Word> wordsOf(const Node& node, std::string_view style);

/// Cells of a terminal that a text takes.
int cellsOf(std::string_view text);

}  // namespace kelo::docs
