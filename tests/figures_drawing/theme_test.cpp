#include "figures/drawing/theme.h"

#include <gtest/gtest.h>

#include "figures/drawing/color_map.h"

namespace kelo::drawing {
namespace {

using figures::ColorRole;

TEST(Theme, linesAndTextsStandOff) {
  for (const Theme* theme : {&Theme::light(), &Theme::dark()}) {
    for (int64_t n = 0; n < 8; ++n) {
      const figures::Color color = figures::nextCycleColor(n);
      EXPECT_GE(contrast((*theme)(color), theme->plotArea), 3) << theme->name << " " << nameOf(color.role);
    }
    EXPECT_GE(contrast((*theme)(ColorRole::black), theme->plotArea), 3);
    EXPECT_GE(contrast(theme->axis, theme->plotArea), 3);
    for (const Rgba text : {theme->label, theme->tickLabel}) EXPECT_GE(contrast(text, theme->background), 4.5);
  }
}

TEST(ColorMap, lightnessRises) {
  const Rgba ground{0, 0, 0, 255};
  for (int i = 1; i < 64; ++i) {
    EXPECT_GE(contrast(heightColor(i / 63.0), ground), contrast(heightColor((i - 1) / 63.0), ground)) << i;
  }
  EXPECT_EQ(heightColor(-5), heightColor(0));
  EXPECT_EQ(heightColor(7), heightColor(1));
}

}  // namespace
}  // namespace kelo::drawing
