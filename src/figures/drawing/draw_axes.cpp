#include "figures/drawing/draw_axes.h"

#include <cmath>

namespace kelo::drawing {
namespace {

using figures::Axis;

/// Ticks closer than this, in points, are drawn as one; grid lines keep more apart.
constexpr double kTickApart = 2;
constexpr double kGridApart = 5;

/// Where ticks stand along an axis, in points, those apart from the one before; the axis's own ends
/// are kept.
std::vector<double> places(const figures::AxisReading& axis, const AxisScale& scale, double apart) {
  std::vector<double> places;
  for (const double tick : axis.ticks) {
    if (!axis.limits.contains(tick)) continue;
    const double place = scale(tick);
    if (places.empty() || std::fabs(place - places.back()) >= apart) places.push_back(place);
  }
  return places;
}

Paint gridPaint(const Sheet& sheet, const figures::Grids& grid) {
  Paint paint = sheet.stroke(sheet.theme(grid.color), std::fmin(std::fmax(grid.width, 0.01), 50) * 1.2);
  paint.dash = dashOf(grid.lineType, paint.width);
  return paint;
}

void drawGrid(Sheet& sheet, const figures::PlotData& plot, const PlotFrame& frame) {
  const Rect& area = frame.area;
  if (!plot.shouldShowGrid || plot.gridAttributes.lineType == figures::Line::Style::hidden) return;
  sheet.list.begin(DisplayList::Kind::path, {Part::grid}, gridPaint(sheet, plot.gridAttributes));
  bool isFirst = true;
  const auto add = [&](Vec2 from, Vec2 to) {
    if (!isFirst) sheet.list.breakPath();
    isFirst = false;
    sheet.list.point(from);
    sheet.list.point(to);
  };
  const auto isInner = [](double place, double lower, double upper) { return place > lower + 1 && place < upper - 1; };
  for (const double x : places(plot.axis(Axis::x), frame.x, kGridApart)) {
    if (isInner(x, area.left, area.right)) add({x, area.top}, {x, area.bottom});
  }
  for (const double y : places(plot.axis(Axis::y), frame.y, kGridApart)) {
    if (isInner(y, area.top, area.bottom)) add({area.left, y}, {area.right, y});
  }
  sheet.list.dropIfEmpty();
}

}  // namespace

void drawBox(Sheet& sheet, const figures::PlotData& plot, const PlotFrame& frame) {
  const Rect& area = frame.area;
  sheet.list.rectangle({Part::plotArea}, Sheet::fill(sheet.theme.plotArea), area);
  drawGrid(sheet, plot, frame);
  Paint edge = sheet.stroke(sheet.theme.grid, 1);
  sheet.list.rectangle({Part::plotArea}, edge, area);
  const Paint axis = sheet.stroke(sheet.theme.axis, 1);
  const double length = sheet.tickLength();
  sheet.list.segment({Part::xAxis}, axis, {area.left, area.bottom}, {area.right, area.bottom});
  sheet.list.segment({Part::yAxis}, axis, {area.left, area.bottom}, {area.left, area.top});
  if (length <= 0) return;
  for (const double x : places(plot.axis(Axis::x), frame.x, kTickApart)) {
    sheet.list.segment({Part::xTick}, axis, {x, area.bottom}, {x, area.bottom + length});
  }
  for (const double y : places(plot.axis(Axis::y), frame.y, kTickApart)) {
    sheet.list.segment({Part::yTick}, axis, {area.left, y}, {area.left - length, y});
  }
}

void drawTexts(Sheet& sheet, const PlotLayout& layout) {
  const Rect& area = layout.area;
  const Theme& theme = sheet.theme;
  const double tick = sheet.tickSize();
  for (const auto& label : layout.xTicks.labels) {
    const Vec2 at{area.left + label.along, layout.xTickBaseline};
    sheet.text({Part::xTickLabel}, at, label.text, tick, Anchor::middle, theme.tickLabel);
  }
  const double half = sheet.measure.capHeight(tick) / 2;
  for (const auto& label : layout.yTicks.labels) {
    const Vec2 at{layout.yTickRight, area.bottom - label.along + half};
    sheet.text({Part::yTickLabel}, at, label.text, tick, Anchor::end, theme.tickLabel);
  }
  sheet.text({Part::xAxisPower}, {area.right, layout.xLabelBaseline}, powerText(layout.xTicks.power), tick, Anchor::end,
             theme.tickLabel);
  sheet.text({Part::yAxisPower}, {area.left, layout.yPowerBaseline}, powerText(layout.yTicks.power), tick,
             Anchor::start, theme.tickLabel);
  const Vec2 middle = area.center();
  sheet.text({Part::xLabel}, {middle.x, layout.xLabelBaseline}, layout.xLabel, sheet.em, Anchor::middle, theme.label);
  sheet.text({Part::yLabel}, {layout.yLabelX, middle.y}, layout.yLabel, sheet.em, Anchor::middle, theme.label, -90);
  const double step = sheet.measure.lineHeight(sheet.titleSize());
  for (size_t i = 0; i < layout.title.size(); ++i) {
    const Vec2 at{sheet.list.size.width / 2, layout.titleBaseline + static_cast<double>(i) * step};
    sheet.text({Part::title}, at, layout.title[i], sheet.titleSize(), Anchor::middle, theme.label);
  }
}

}  // namespace kelo::drawing
