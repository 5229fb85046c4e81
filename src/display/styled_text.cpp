// Ranges in UTF-16 units over text in UTF-8: the units before a range are counted on from the last
// one.
#include "display/styled_text.h"

namespace kelo {

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
