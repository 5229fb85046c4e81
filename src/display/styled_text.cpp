// Ranges in UTF-16 units over text in UTF-8: the units before a range are counted on from the last one.
#include "display/styled_text.h"

namespace kelo {

// Every byte that begins a code point gives a unit, and those that begin one above the basic plane give two.
int64_t utf16Length(std::string_view utf8) {
  int64_t units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    units += (byte & 0xC0) != 0x80;
    units += byte >= 0xF0;
  }
  return units;
}

void StyledText::appendSecondary(std::string_view utf8) {
  countedUnits_ += utf16Length(std::string_view(text).substr(countedBytes_));
  const int64_t length = utf16Length(utf8);
  attributes.push_back({{{TextAttribute::foregroundColor, ConsoleColor::secondary}}, false, {countedUnits_, length}});
  text += utf8;
  countedUnits_ += length;
  countedBytes_ = text.size();
}

void StyledText::trimLineFeeds(int limit) {
  for (; limit > 0 && !text.empty() && text.back() == '\n'; --limit) text.pop_back();
}

}  // namespace kelo
