// Specification strings; attributes are tested by tests/transcripts/figures/.
#include "figures/attribute.h"

#include <gtest/gtest.h>

namespace kelo::figures {
namespace {

TEST(LineSpec, table) {
  using L = Line::Style;
  using M = Marker::Style;
  using C = ColorRole;
  const struct {
    const char* text;
    bool parses;
    C color;
    L line;
    M marker;
  } rows[] = {
      {"", true, C::systemBlue, L::solid, M::none},
      {"r--o", true, C::systemRed, L::dashed, M::circle},
      {"o", true, C::systemBlue, L::hidden, M::circle},
      {"o-", true, C::systemBlue, L::solid, M::circle},
      {"-.square", true, C::systemBlue, L::dotDashed, M::square},
      {"magenta:", true, C::systemPink, L::dot, M::none},
      {"*w", true, C::white, L::hidden, M::asterisk},
      // "none" is a colour before all; "b" is taken before "black" only where that does not fit
      {"none", true, C::clear, L::solid, M::none},
      {"blackx", true, C::black, L::hidden, M::cross},
      {"blue-d", true, C::systemBlue, L::solid, M::diamond},
      // The short names stand before the long ones; case counts
      {"pentagram", false, C::systemBlue, L::solid, M::none},
      {"R", false, C::systemBlue, L::solid, M::none},
      {"r ", false, C::systemBlue, L::solid, M::none},
  };
  for (const auto& row : rows) {
    Line lines[2];
    ASSERT_EQ(parseLineSpec(row.text, lines), row.parses) << row.text;
    if (!row.parses) continue;
    for (const Line& line : lines) {
      EXPECT_EQ(line.attribute.lineColor.role, row.color) << row.text;
      EXPECT_EQ(line.attribute.markerEdgeColor.role, row.color) << row.text;
      EXPECT_TRUE(line.attribute.markerFaceColor.isClear()) << row.text;
      EXPECT_EQ(line.attribute.lineStyle, row.line) << row.text;
      EXPECT_EQ(line.attribute.markerStyle, row.marker) << row.text;
    }
  }
}

TEST(LineSpec, coloursAFaceThatIsNotClear) {
  Line lines[1];
  lines[0].attribute.markerFaceColor = ColorRole::black;
  ASSERT_TRUE(parseLineSpec("g", lines));
  EXPECT_EQ(lines[0].attribute.markerFaceColor.role, ColorRole::systemGreen);
}

TEST(CycleColor, eightInTurn) {
  EXPECT_EQ(nextCycleColor(0).role, ColorRole::systemBlue);
  EXPECT_EQ(nextCycleColor(4).role, ColorRole::systemPink);
  EXPECT_EQ(nextCycleColor(8).role, nextCycleColor(0).role);
  for (int k = 1; k <= static_cast<int>(ColorRole::clear); ++k) {
    const auto role = static_cast<ColorRole>(k);
    EXPECT_EQ(roleNamed(nameOf(role)), role);
  }
}

}  // namespace
}  // namespace kelo::figures
