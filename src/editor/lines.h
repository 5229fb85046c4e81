// A text as its lines, each with the line end after it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kelo {

struct TextLine {
  std::u16string text;  ///< without the line end
  std::u16string end;   ///< "\n", "\r\n", "\r", or nothing at the end of the whole
};

/// At least one line; a line end at the text's end is followed by an empty line.
std::vector<TextLine> linesOf(std::u16string_view text);
std::u16string joined(const std::vector<TextLine>& lines);

struct LinePosition {
  size_t line;
  int64_t column;
};

/// Where a position of the joined text stands; within a line end it counts as the end of its line.
/// REQUIRES: 0 <= position <= length of the text
LinePosition locate(const std::vector<TextLine>& lines, int64_t position);
int64_t positionOf(const std::vector<TextLine>& lines, LinePosition place);

}  // namespace kelo
