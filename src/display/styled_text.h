// Text under construction, with the ranges that are drawn differently from the rest.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "messages/utf16.h"

namespace kelo {

enum class TextAttribute : uint8_t { foregroundColor };
enum class ConsoleColor : uint8_t { secondary };  ///< the shell chooses the colour itself

/// `Display::ConsoleTextAttributes`.
struct ConsoleTextAttributes {
  struct Range {
    int64_t location = 0, length = 0;  ///< in UTF-16 units of the display's text
    friend bool operator==(const Range&, const Range&) = default;
  };

  std::map<TextAttribute, ConsoleColor> attrDict;
  bool showConsoleMark = false;  ///< whether the console's mark stands at this range
  Range range;

  friend bool operator==(const ConsoleTextAttributes&, const ConsoleTextAttributes&) = default;
};

class StyledText {
 public:
  std::string text;
  std::vector<ConsoleTextAttributes> attributes;

  /// Appends text in the secondary colour.
  void appendSecondary(std::string_view utf8);
  /// Removes at most `limit` line feeds at the end.
  void trimLineFeeds(int limit);

 private:
  size_t countedBytes_ = 0;  // of the text, and their length in units
  int64_t countedUnits_ = 0;
};

}  // namespace kelo
