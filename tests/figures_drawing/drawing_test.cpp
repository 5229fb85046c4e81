// Laws of drawings: texts lie apart and inside, whatever the figure and the size; an index changes
// nothing; nothing that a figure may hold harms.
#include "figures/drawing/drawing.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "figures/drawing/dejavu_measure.h"
#include "figures/drawing/display_list_json.h"
#include "figures/random_figures.h"
#include "figures_drawing/samples.h"

namespace kelo::drawing {
namespace {

using figures::PlotData;
using figures::SurfData;

const Size kSizes[] = {{240, 180}, {320, 480}, {640, 480}, {1600, 300}, {3000, 2000}};

Rect boxOf(const DisplayList::Item& item) {
  const DejavuMeasure& measure = DejavuMeasure::shared();
  const Text& text = *item.text;
  const double width = measure.width(text.text, text.size), height = measure.capHeight(text.size);
  const double share = text.anchor == Anchor::start ? 0 : text.anchor == Anchor::middle ? 0.5 : 1;
  const double x = item.points[0], y = item.points[1];
  if (text.angle == -90) return {x - height, y - width * (1 - share), x, y + width * share};
  return {x - width * share, y - height, x + width * (1 - share), y};
}

void expectTextsApart(const DisplayList& list, const std::string& what) {
  const Rect picture = Rect{0, 0, list.size.width, list.size.height}.grownBy(0.01);
  std::vector<std::pair<Rect, std::string>> texts;
  for (size_t i = 0; i < list.count(); ++i) {
    if (list[i].kind != DisplayList::Kind::text) continue;
    const Rect box = boxOf(list[i]);
    EXPECT_TRUE(picture.contains({box.left, box.top}) && picture.contains({box.right, box.bottom}))
        << what << ": \"" << list[i].text->text << "\" is cut";
    for (const auto& [other, text] : texts) {
      EXPECT_FALSE(box.overlaps(other)) << what << ": \"" << text << "\" and \"" << list[i].text->text << "\"";
    }
    texts.emplace_back(box, list[i].text->text);
  }
}

TEST(Drawing, textsLieApartAndInside) {
  const double spans[][2] = {{0, 1}, {-1e-5, 1e-5}, {1e12, 1e12 + 5}, {-123.456, 99999}, {-1e300, 1e300}};
  for (const auto& [lower, upper] : spans) {
    PlotData plot({sampleLine(50, lower, upper, [](double x) { return x; })});
    plot.title = "A title that goes on and on, with <signs> & so on, until there is no room for it at all on any line";
    plot.xLabel = plot.yLabel = "a label that is rather long for a small picture";
    SurfData surface({sampleSurface(8, 8, bump)});
    surface.title = plot.title;
    surface.axis(figures::Axis::z).setLimits({lower, upper});
    surface.xLabelText = surface.yLabelText = surface.zLabelText = "a label of some length";
    PlotData own = plot;
    own.axis(figures::Axis::x).setTicks({lower, upper});
    own.axis(figures::Axis::y).setTicks({});
    own.yLabel.reset();
    for (const Size& size : kSizes) {
      const std::string what = std::to_string(int(size.width)) + " wide, to " + std::to_string(upper);
      expectTextsApart(draw(plot, {size}), what);
      expectTextsApart(draw(own, {size}), what + ", own ticks");
      for (const float angle : {-45.0f, 0.0f, 30.0f, 100.0f, 200.0f}) {
        surface.rotationAngles = {angle - 40, 0, angle};
        expectTextsApart(draw(surface, {size}), what + ", turned by " + std::to_string(angle));
      }
    }
  }
}

/// Limits hug the data, so lines often run along them; the sums of a scale may miss an edge by a bit.
TEST(Drawing, linesAlongTheLimitsAreDrawn) {
  for (int k = 1; k < 200; ++k) {
    const double least = -0.7 * k, greatest = k / 3.0;
    figures::Line line;
    line.points = {{least, least}, {greatest, least}, {greatest, greatest}, {least, greatest}, {least, least}};
    const DisplayList list = draw(PlotData({line}), {{400.0 + k, 300 + 0.1 * k}});
    for (size_t i = 0; i < list.count(); ++i) {
      if (list[i].role.part != Part::line) continue;
      EXPECT_EQ(list[i].points.size(), 10u) << k;
    }
  }
}

TEST(Drawing, theIndexChangesNothing) {
  const figures::Line line = walk(3, 200000, false, false);
  PlotData plot({line});
  const double end = plot.xlims.upper;
  DrawingCache cache;
  for (const figures::Limits limits : {plot.xlims, {end / 3, end / 2}, {end * 0.4, end * 0.4001}, {-end, -1}}) {
    plot.axis(figures::Axis::x).setLimits(limits);
    EXPECT_EQ(json(draw(plot, {}, &cache)), json(draw(plot, {}))) << limits.lower;
  }
  EXPECT_LT(draw(plot, {}, &cache).numCoordinates(), 40000u);
}

TEST(Drawing, anyFigureGivesAListThatCanBeRead) {
  figures::RandomFigures random(11);
  for (int round = 0; round < 200; ++round) {
    const Size size{1.0 + static_cast<double>(random.below(900)), 1.0 + static_cast<double>(random.below(900))};
    const figures::Figure figure = round % 2 ? figures::Figure(random.plot()) : figures::Figure(random.surface());
    const DisplayList list = draw(figure, {size});
    for (size_t i = 0; i < list.count(); ++i) {
      for (const float p : list[i].points) EXPECT_FALSE(std::isinf(p)) << round << " " << list[i].role.text();
    }
    EXPECT_TRUE(nlohmann::json::accept(json(list))) << round << json(list);
  }
  PlotData crowd(std::vector<figures::Line>(100000, sampleLine(2, 0, 1, [](double x) { return x; })));
  crowd.shouldShowLegend = true;
  crowd.axis(figures::Axis::x).setTicks(std::vector<double>(5000, 0.5));
  EXPECT_LT(draw(crowd, {}).count(), 100200u);
}

}  // namespace
}  // namespace kelo::drawing
