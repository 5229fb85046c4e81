// What a front end does with a figure: edits, gestures, tips.
#include <gtest/gtest.h>

#include <cmath>

#include "figures/auto_ticks.h"
#include "figures/figure_edit.h"
#include "figures/gesture.h"
#include "figures/tip.h"
#include "messages/message.h"
#include "random_figures.h"

namespace kelo::figures {
namespace {

Line lineOf(std::vector<Point> points) {
  Line line;
  line.points = std::move(points);
  return line;
}

PlotData slope() { return PlotData({lineOf({{0, 0}, {10, 100}})}); }
PlotData plotOf(const Figure& figure) { return std::get<PlotData>(figure); }

// ---- Edits

Figure changed(const Figure& figure, const std::string& key, const std::string& value) {
  const FigureChange change{key, value};
  return edited(figure, {&change, 1});
}

TEST(FigureEdit, followsTheRulesOfTheCommands) {
  const Figure plot = slope();
  EXPECT_EQ(plotOf(changed(plot, "title", "\"Cost\"")).title, "Cost");
  EXPECT_EQ(plotOf(changed(plot, "lines/0/attribute/lineWidth", "2.5")).lines[0].attribute.lineWidth, 2.5);
  EXPECT_EQ(plotOf(changed(plot, "legendAttributes/position", "2")).legendAttributes.position,
            Legend::Position::bottomLeft);

  const PlotData limited = plotOf(changed(plot, "xlims", R"({"lower":2,"upper":5})"));
  EXPECT_FALSE(limited.autoXLimits);
  EXPECT_EQ(limited.xTickPositions, autoTicks({2, 5}));
  EXPECT_EQ(plotOf(changed(limited, "xlims/upper", "6")).xlims, (Limits{2, 6}));
  EXPECT_EQ(plotOf(changed(limited, "autoXLimits", "true")).xlims, (Limits{0, 10}));
  EXPECT_EQ(plotOf(changed(plot, "yTickPositions", "[50,3]")).yTickPositions, (std::vector<double>{3, 50}));
  EXPECT_FALSE(plotOf(changed(plot, "yTickPositions", "[50,3]")).autoYTicks);
  EXPECT_EQ(plotOf(changed(plot, "lines/0/points", "[[1,2],[3,8]]")).ylims, (Limits{2, 8}));

  const Figure surface = SurfData({{{{0, 0, 0}, {1, 1, 1}}, {1, 2}}});
  EXPECT_EQ(std::get<SurfData>(changed(surface, "zlims", R"({"lower":-1,"upper":2})")).zTicks, autoTicks({-1, 2}));
  EXPECT_EQ(std::get<SurfData>(changed(surface, "rotationAngles/z", "30")).rotationAngles, (SCNVector3{-45, 0, 30}));
}

TEST(FigureEdit, refusesAndChangesNothing) {
  const Figure plot = slope();
  const struct {
    const char* key;
    const char* value;
  } rows[] = {
      {"nothing", "1"},          {"", "1"},
      {"lines/1/attribute/lineWidth", "1"}, {"lines/x/attribute", "1"},
      {"lines/0/attribute/lineWidth", "0"}, {"lines/0/attribute/lineWidth", "\"2\""},
      {"lines/0/attribute/lineStyle", "9"}, {"title", "3"},
      {"title/x", "\"\""},       {"xlims", R"({"lower":2,"upper":2})"},
      {"xlims/lower", "11"},     {"xlims", R"({"lower":2})"},
      {"xTickPositions", "[1,null]"}, {"title", "\"a\" b"},
      {"gridAttributes/width", "-1"},
  };
  for (const auto& row : rows) EXPECT_THROW(changed(plot, row.key, row.value), Problem) << row.key;
  EXPECT_THROW(changed(Figure(), "title", "null"), Problem);
  const FigureChange changes[] = {{"title", "\"A\""}, {"xlims", "7"}};
  EXPECT_THROW(edited(plot, changes), Problem);
  const Figure surface = SurfData({{{{0, 0, 0}, {1, 1, 1}}, {1, 2}}});
  EXPECT_THROW(changed(surface, "surfaces/0/attributes/numRows", "3"), Problem);
  EXPECT_THROW(changed(surface, "zoomFactor", "0"), Problem);
}

// ---- Gestures

constexpr GestureView kView = {240, 220, {20, 10, 200, 100}};

TEST(Gesture, onAPlot) {
  Figure plot = slope();
  pan(plot, kView, 100, 50);
  EXPECT_EQ(plotOf(plot).xlims, (Limits{-5, 5}));
  EXPECT_EQ(plotOf(plot).ylims, (Limits{50, 150})) << "downwards: greater values come into view";
  EXPECT_FALSE(plotOf(plot).autoXLimits);
  reset(plot);
  EXPECT_EQ(plotOf(plot), slope());
  zoom(plot, kView, 2);
  EXPECT_EQ(plotOf(plot).xlims, (Limits{2.5, 7.5}));
  reset(plot);
  pinch(plot, kView, {20, 110}, 2, 0.5);
  EXPECT_EQ(plotOf(plot).xlims, (Limits{0, 5})) << "the place under the fingers stays";
  EXPECT_EQ(plotOf(plot).ylims, (Limits{0, 200}));
  rotate(plot, kView, 5, 5);
  EXPECT_EQ(plotOf(plot).xlims, (Limits{0, 5}));
}

TEST(Gesture, onASurface) {
  Figure figure = SurfData();
  rotate(figure, kView, 120, -1000);
  pan(figure, kView, 22, 22);
  zoom(figure, kView, 1e9);
  const auto& surface = std::get<SurfData>(figure);
  EXPECT_EQ(surface.rotationAngles, (SCNVector3{-180, 0, 45}));
  EXPECT_EQ(surface.translation, (SCNVector3{0.1f, -0.1f, 0}));
  EXPECT_EQ(surface.zoomFactor, 50);
  reset(figure);
  EXPECT_EQ(surface, SurfData());
}

TEST(Gesture, keepsLimitsWithinTheDoubles) {
  RandomFigures random(31);
  for (int n = 0; n < 3000; ++n) {
    Figure figure = random.flag() ? Figure(random.plot()) : Figure(random.surface());
    const auto any = [&] { return random.flag() ? random.number() : std::nan(""); };
    pan(figure, kView, any(), any());
    pinch(figure, kView, {any(), any()}, any(), any());
    rotate(figure, kView, any(), any());
    pan(figure, {0, 0, {0, 0, 0, 0}}, 1, 1);
    const auto* plot = std::get_if<PlotData>(&figure);
    if (!plot) continue;
    ASSERT_TRUE(std::isfinite(plot->xlims.lower) && std::isfinite(plot->xlims.upper)) << n;
    ASSERT_LE(plot->xlims.lower, plot->xlims.upper) << n;
  }
}

// ---- Tips

/// All points looked at, one after the other.
std::optional<Tip> plainTip(const PlotData& plot, const PlotArea& area, ViewPoint place) {
  std::optional<Tip> best;
  double nearest = HUGE_VAL;
  for (size_t n = 0; n < plot.lines.size(); ++n) {
    const Points& points = plot.lines[n].points;
    for (int64_t k = 0; k < points.size(); ++k) {
      const ViewPoint at = area.placeOf(points[k], plot.xlims, plot.ylims);
      const double square = (at.x - place.x) * (at.x - place.x) + (at.y - place.y) * (at.y - place.y);
      const bool isInside = plot.xlims.contains(points[k].x) && plot.ylims.contains(points[k].y);
      if (isInside && square < nearest) {
        nearest = square;
        best = Tip{static_cast<int64_t>(n), k, points[k], at};
      }
    }
  }
  return best;
}

TEST(Tip, isTheNearestPointThatIsSeen) {
  const unsigned seed = 77;
  RandomFigures random(seed);
  TipFinder finder;
  const auto share = [&] { return static_cast<double>(random.below(1000001)) / 1e6; };
  for (int n = 0; n < 60; ++n) {
    std::vector<Line> lines;
    for (int m = 0; m < 3; ++m) {
      std::vector<Point> points(random.below(n % 2 ? 6000 : 20));
      double x = 0;
      for (Point& point : points) {
        x = m == 0 ? x + share() : share() * 100;
        point = {x, random.below(50) == 0 ? std::nan("") : std::sin(x) + share()};
      }
      lines.push_back(lineOf(points));
    }
    PlotData plot(lines);
    if (random.flag()) plot.axis(Axis::x).setLimits({20, 30});
    for (int k = 0; k < 20; ++k) {
      const ViewPoint place{share() * 240, share() * 120};
      const auto tip = finder.find(plot, kView.plotArea, place), plain = plainTip(plot, kView.plotArea, place);
      ASSERT_EQ(tip.has_value(), plain.has_value()) << seed << " " << n;
      if (!tip) continue;
      ASSERT_EQ(tip->line, plain->line) << seed << " " << n;
      ASSERT_EQ(tip->index, plain->index) << seed << " " << n;
    }
  }
  EXPECT_FALSE(finder.find(PlotData(), kView.plotArea, {0, 0}));
}

}  // namespace
}  // namespace kelo::figures
