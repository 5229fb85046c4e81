#include "editor/lines.h"

#include <algorithm>

namespace kelo {

std::vector<TextLine> linesOf(std::u16string_view text) {
  std::vector<TextLine> lines;
  while (true) {
    const size_t length = std::min(text.find_first_of(u"\r\n"), text.size());
    const size_t endLength = text.substr(length).starts_with(u"\r\n") ? 2 : std::min<size_t>(1, text.size() - length);
    lines.push_back({std::u16string(text.substr(0, length)), std::u16string(text.substr(length, endLength))});
    if (endLength == 0) return lines;
    text.remove_prefix(length + endLength);
  }
}

std::u16string joined(const std::vector<TextLine>& lines) {
  std::u16string text;
  for (const TextLine& line : lines) text.append(line.text).append(line.end);
  return text;
}

LinePosition locate(const std::vector<TextLine>& lines, int64_t position) {
  size_t at = 0;
  while (at + 1 < lines.size()) {
    const auto length = static_cast<int64_t>(lines[at].text.size() + lines[at].end.size());
    if (position < length) break;
    position -= length;
    ++at;
  }
  return {at, std::min(position, static_cast<int64_t>(lines[at].text.size()))};
}

int64_t positionOf(const std::vector<TextLine>& lines, LinePosition place) {
  size_t before = 0;
  for (size_t k = 0; k < place.line; ++k) before += lines[k].text.size() + lines[k].end.size();
  return static_cast<int64_t>(before) + place.column;
}

}  // namespace kelo
