// Indentation of a line by the group of statements that it stands in. A step is always 4 blanks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/keywords.h"
#include "editor/lines.h"

namespace kelo {

/// The line at a position with its indentation mended, without its line end; a line in no group
/// stays as it is. Nothing when the position is outside the text.
std::optional<std::string> indentedLine(int64_t position, std::string_view text);

/// The same for line after line of a text.
class Indenter {
 public:
  /// REQUIRES: outlives this; lines change through `mend` only
  explicit Indenter(std::vector<TextLine>& lines) : lines_(lines), keywords_(lines.size()) {}

  /// Gives a line the indentation that the lines above it ask for.
  void mend(size_t line);

 private:
  std::optional<Keywords::Occurrence> enclosingGroup(size_t line);
  const std::vector<Keywords::Occurrence>& keywordsOf(size_t line);

  std::vector<TextLine>& lines_;
  std::vector<std::optional<std::vector<Keywords::Occurrence>>> keywords_;  // of each line, once looked at
};

/// Length of the blanks and tabs that a line begins with.
int64_t indentationOf(std::u16string_view line);

}  // namespace kelo
