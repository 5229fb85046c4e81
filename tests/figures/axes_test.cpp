// Limits and ticks: tables, and laws on random data.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>

#include "figures/auto_ticks.h"
#include "figures/data_limits.h"
#include "figures/plot_data.h"
#include "figures/surf_data.h"

namespace kelo::figures {
namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

Line lineOf(std::vector<Point> points, PlotStyle type = PlotStyle::Line) {
  Line line;
  line.points = std::move(points);
  line.attribute.type = type;
  return line;
}

std::string textOf(const Limits& limits) {
  return ::testing::PrintToString(limits.lower) + " to " + ::testing::PrintToString(limits.upper);
}

// ---- Ticks

TEST(AutoTicks, table) {
  const struct {
    double lower, upper;
    std::vector<double> ticks;
  } rows[] = {
      // Round ends are doubled; steps are added up
      {0, 1, {0, 0, 0.2, 0.4, 0.2 + 0.2 + 0.2, 0.8, 1}},
      {0, 10, {0, 0, 2, 4, 6, 8, 10}},
      {-1, 1, {-1, -0.8, -0.4, 0, 0.4, 0.8, 1}},
      // A spacing of 3
      {0.5, 14, {0.5, 3, 6, 9, 12, 14}},
      // Only the ends: far out and narrow, no width, a width beyond the doubles
      {1e12, 1e12 + 1e-3, {1e12, 1e12 + 1e-3}},
      {-1e12, -1e12 + 1e-3, {-1e12, -1e12 + 1e-3}},
      {4, 4, {4, 4}},
      {-1.5e308, 1.5e308, {-1.5e308, 1.5e308}},
      {0, 5e-324, {0, 5e-324}},
  };
  for (const auto& row : rows) {
    std::vector<double> ticks = autoTicks({row.lower, row.upper});
    ASSERT_EQ(ticks.size(), row.ticks.size()) << row.lower << " " << row.upper << ::testing::PrintToString(ticks);
    for (size_t k = 0; k < ticks.size(); ++k) EXPECT_NEAR(ticks[k], row.ticks[k], 1e-15 * std::fabs(row.ticks[k]));
  }
}

/// Doubles of all magnitudes, and some near each other.
Limits anyLimits(std::mt19937_64& random) {
  double a = 0, b = 0;
  do {
    const uint64_t bits = random();
    std::memcpy(&a, &bits, sizeof a);
  } while (!std::isfinite(a));
  do {
    const uint64_t bits = random();
    std::memcpy(&b, &bits, sizeof b);
  } while (!std::isfinite(b));
  if (random() % 2) b = a * (1 + std::ldexp(1.0, -static_cast<int>(random() % 53)));
  if (!std::isfinite(b)) b = 0;
  return {std::min(a, b), std::max(a, b)};
}

TEST(AutoTicks, beginAndEndAtTheLimits) {
  const unsigned seed = 20261121;
  std::mt19937_64 random(seed);
  for (int n = 0; n < 20000; ++n) {
    const Limits limits = anyLimits(random);
    const std::vector<double> ticks = autoTicks(limits);
    ASSERT_EQ(ticks.front(), limits.lower) << seed << " " << textOf(limits);
    ASSERT_EQ(ticks.back(), limits.upper) << seed << " " << textOf(limits);
    ASSERT_TRUE(std::is_sorted(ticks.begin(), ticks.end())) << seed << " " << textOf(limits);
    ASSERT_LE(ticks.size(), 9u) << seed << " " << textOf(limits);
  }
}

// ---- Limits from data

TEST(LimitsFromData, table) {
  const struct {
    const char* what;
    std::vector<Line> lines;
    Limits x, y;
  } rows[] = {
      {"no lines", {}, {0, 1}, {0, 1}},
      {"one point", {lineOf({{2, 3}})}, {1, 3}, {2, 4}},
      {"coordinates are skipped each by itself", {lineOf({{1, kNaN}, {kInf, 5}, {3, -2}})}, {1, 3}, {-2, 5}},
      {"nothing finite", {lineOf({{kNaN, kInf}, {-kInf, kNaN}})}, {0, 1}, {0, 1}},
      {"equal stems above", {lineOf({{1, 5}, {2, 5}}, PlotStyle::Stem)}, {1, 2}, {0, 6}},
      {"stems below", {lineOf({{1, -5}, {2, -3}}, PlotStyle::Stem)}, {1, 2}, {-5, 0}},
      {"stems on both sides", {lineOf({{1, -5}, {2, 3}}, PlotStyle::Stem)}, {1, 2}, {-5, 3}},
      {"one stem line draws the baseline for all",
       {lineOf({{0, 7}, {9, 8}}), lineOf({{1, 5}}, PlotStyle::Stem)}, {0, 9}, {0, 8}},
  };
  for (const auto& row : rows) {
    const PlotLimits limits = limitsFromData(row.lines);
    EXPECT_EQ(limits.x, row.x) << row.what << ": " << textOf(limits.x);
    EXPECT_EQ(limits.y, row.y) << row.what << ": " << textOf(limits.y);
  }
}

TEST(LimitsFromData, containAllFinitePoints) {
  const unsigned seed = 7;
  std::mt19937_64 random(seed);
  for (int n = 0; n < 300; ++n) {
    std::vector<Point> points(random() % 60);
    std::vector<SCNVector3> corners;
    for (Point& point : points) {
      point = {anyLimits(random).lower, anyLimits(random).upper};
      if (random() % 8 == 0) point.y = random() % 2 ? kNaN : -kInf;
      corners.push_back({static_cast<float>(point.x), static_cast<float>(point.y), 1});
    }
    const PlotLimits limits = limitsFromData(std::vector<Line>{lineOf(points)});
    const std::vector<SurfData::Surface> surfaces = {{corners, {}}};
    const Limits inSpace = limitsFromSurfaces(surfaces, Axis::x);
    for (const Point& point : points) {
      ASSERT_TRUE(limits.x.contains(point.x)) << seed << " " << n;
      ASSERT_TRUE(!std::isfinite(point.y) || limits.y.contains(point.y)) << seed << " " << n;
      const auto x = static_cast<float>(point.x);
      ASSERT_TRUE(!std::isfinite(x) || inSpace.contains(x)) << seed << " " << n;
    }
  }
}

TEST(LimitsFromWindow, table) {
  const struct {
    const char* what;
    std::vector<Point> points;
    Limits window, limits;
  } rows[] = {
      {"points inside, and where the line rises into and out of the window", {{0, 0}, {1, 4}}, {1, 2}, {0.25, 0.5}},
      {"a falling line counts nothing", {{0, 4}, {1, 0}}, {1, 2}, {0, 1}},
      {"edges belong to the window", {{5, 1}, {7, 2}}, {1, 2}, {5, 7}},
      {"one value", {{5, 1}}, {0, 2}, {4.5, 5.5}},
      {"a gap breaks the line", {{0, 0}, {0.5, kNaN}, {1, 4}}, {1, 2}, {0, 1}},
      {"no points", {}, {1, 2}, {0, 1}},
  };
  for (const auto& row : rows) {
    const Limits x = limitsFromWindow(std::vector<Line>{lineOf(row.points)}, Axis::x, row.window);
    EXPECT_EQ(x, row.limits) << row.what << ": " << textOf(x);
    std::vector<Point> swapped;
    for (const Point& point : row.points) swapped.push_back({point.y, point.x});
    const Limits y = limitsFromWindow(std::vector<Line>{lineOf(swapped)}, Axis::y, row.window);
    EXPECT_EQ(y, row.limits) << row.what << " (y): " << textOf(y);
  }
}

// ---- Rules of the models

TEST(PlotData, limitsAndTicksFollowTheFlags) {
  PlotData plot({lineOf({{0, 0}, {10, 100}})});
  EXPECT_EQ(plot.xTickPositions, autoTicks({0, 10}));

  plot.axis(Axis::x).setLimits({2, 5});
  EXPECT_FALSE(plot.autoXLimits);
  EXPECT_EQ(plot.xTickPositions, autoTicks({2, 5}));
  EXPECT_EQ(plot.ylims, (Limits{0, 100})) << "manual limits of one axis do not move the other";

  plot.axis(Axis::y).setTicks({1, 2});
  plot.setAutoLimits(Axis::y, true);
  EXPECT_EQ(plot.ylims, (Limits{20, 50})) << "from the window of x";
  EXPECT_EQ(plot.yTickPositions, (std::vector<double>{1, 2})) << "manual ticks stay";

  plot.append({lineOf({{3, -7}})});
  EXPECT_EQ(plot.ylims, (Limits{-7, 50}));
  EXPECT_EQ(plot.xlims, (Limits{2, 5}));

  plot.setAutoLimits(Axis::x, true);
  plot.axis(Axis::y).setAutoTicks(true);
  EXPECT_EQ(plot.ylims, (Limits{-7, 100})) << "both automatic: both anew";
  EXPECT_EQ(plot.yTickPositions, autoTicks({-7, 100}));
}

TEST(SurfData, limitsFollowTheirOwnRule) {
  SurfData flat({{{{1, 1, 1}, {2, 1, 1}, {1, 2, 1}, {2, 2, 1}}, {2, 2}}});
  EXPECT_EQ(flat.xlims, (Limits{1, 2}));
  EXPECT_EQ(flat.zlims, (Limits{0, 1})) << "one height is the upper end";
  EXPECT_EQ(SurfData().zlims, (Limits{0, 1}));
  const float far = 16777216;
  EXPECT_EQ(SurfData({{{{far, 0, 0}}, {1, 1}}}).xlims, (Limits{far - 1, far})) << "in 32-bit floats";

  flat.axis(Axis::x).setLimits({0, 5});
  flat.append({{{{9, 9, 9}}, {1, 1}}});
  EXPECT_EQ(flat.xlims, (Limits{0, 5}));
  EXPECT_EQ(flat.zlims, (Limits{1, 9}));
  EXPECT_EQ(flat.zTicks, autoTicks({1, 9}));
}

}  // namespace
}  // namespace kelo::figures
