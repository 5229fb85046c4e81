#include "display/cell_measure.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

TEST(CellMeasure, CountsCells) {
  const std::pair<const char*, int64_t> rows[] = {
      // clang-format off
      {"", 0},           {"hello", 5},      {"日本", 4},         {"한글", 4},         {"é", 1},          {"e\u0301", 1},
      {"\u0301", 0},     {"×", 1},          {"\t\n", 0},       {"😀", 2},          {"❤\uFE0F", 2},    {"🇫🇷", 2},
      {"👩‍👩‍👧", 2},      {"a日e\u0301😀", 6},
      // clang-format on
  };
  for (const auto& [text, cells] : rows) EXPECT_EQ(CellMeasure::cells(text), cells) << text;
  EXPECT_EQ(CellMeasure::shared().width("a日"), 24);
}

}  // namespace
}  // namespace kelo
