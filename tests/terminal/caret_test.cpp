#include "shells/terminal/caret.h"

#include <gtest/gtest.h>

namespace kelo::terminal {
namespace {

TEST(Caret, StandsBelowItsColumnInCells) {
  const std::tuple<const char*, int, int, const char*> rows[] = {
      {"x = y", 1, 4, "    x = y\n        ^"},
      {"a\nbb\r\nc", 2, 1, "    bb\n     ^"},
      {"'日本' + y", 1, 7, "    '日本' + y\n             ^"},        // wide characters take two cells
      {"'e\xCC\x81' + y", 1, 6, "    'e\xCC\x81' + y\n         ^"},  // a combining mark takes none
      {"\tx y", 1, 3, "    \tx y\n    \t  ^"},
      {"x = [1", 1, 6, "    x = [1\n          ^"},  // after the end
      {"x", 2, 0, ""},
      {"", 1, 0, ""},
      {"\xFFx", 1, 1, ""},
  };
  for (const auto& [text, line, column, expected] : rows) EXPECT_EQ(caretExcerpt(text, line, column), expected) << text;
}

}  // namespace
}  // namespace kelo::terminal
