#include "figures/drawing/draw_lines.h"

#include <algorithm>
#include <cmath>

#include "figures/drawing/marker_places.h"

namespace kelo::drawing {
namespace {

using figures::Line;
using figures::PlotStyle;

/// A line of width 1 and a marker of size 1, in units of the sheet.
constexpr double kLineWidth = 1.6;
constexpr double kMarkerSize = 6.5;
constexpr double kMostWidth = 400;
constexpr double kMostMarkerSize = 2000;

double widthOf(const Line::Attributes& attributes) {
  return std::clamp(attributes.lineWidth, 0.01, kMostWidth) * kLineWidth;
}

bool hasStroke(const Line::Attributes& attributes) {
  const bool isHidden = attributes.lineStyle == Line::Style::hidden || attributes.lineStyle == Line::Style::undefined;
  return !isHidden && !attributes.lineColor.isClear();
}

/// Four columns a pixel: with fewer, strokes that stand side by side leave streaks.
Reduction reductionOf(const Sheet& sheet) {
  return {sheet.options.reducesLines ? 4 * sheet.options.pixelsPerPoint : 0};
}

void drawPath(Sheet& sheet, const Line& line, Role role, const PlotFrame& frame, DrawingCache* cache) {
  const LineIndex* index = cache != nullptr && sheet.options.reducesLines ? cache->indexOf(line.points) : nullptr;
  sheet.list.begin(DisplayList::Kind::path, role, linePaint(sheet, line.attribute));
  addLinePath(sheet.list, line, frame, reductionOf(sheet), index);
  sheet.list.dropIfEmpty();
}

/// Stems grow from 0, or from the limit that is nearest to it, and the baseline is drawn where it
/// is in sight.
void drawStems(Sheet& sheet, const Line& line, Role role, const PlotFrame& frame) {
  const double base = std::clamp(0.0, frame.ylims.lower, frame.ylims.upper);
  const double baseY = frame.y(base);
  sheet.list.begin(DisplayList::Kind::path, role, linePaint(sheet, line.attribute));
  addStems(sheet.list, line.points.values(), frame, baseY, reductionOf(sheet));
  sheet.list.dropIfEmpty();
  if (base != 0) return;
  sheet.list.segment(role, sheet.stroke(sheet.theme.axis, 1), {frame.area.left, baseY}, {frame.area.right, baseY});
}

void drawMarkers(Sheet& sheet, const Line& line, Role role, const PlotFrame& frame) {
  const Paint paint = markerPaint(sheet, line.attribute);
  if (!paint.stroke.isVisible() && !paint.fill.isVisible()) return;
  sheet.list.markers(role, paint, markerShape(sheet, line.attribute));
  addMarkerPlaces(sheet.list, line.points.values(), frame, reductionOf(sheet));
  sheet.list.dropIfEmpty();
}

/// How far a line's paint reaches beyond its points.
double overhang(const Sheet& sheet, const figures::PlotData& plot) {
  double most = 1;
  for (const Line& line : plot.lines) {
    most = std::max(most, widthOf(line.attribute) * sheet.unit / 2);
    if (line.attribute.markerStyle != figures::Marker::Style::none) {
      most = std::max(most, markerShape(sheet, line.attribute).size * 0.7 + 1);
    }
  }
  return most;
}

}  // namespace

Paint linePaint(const Sheet& sheet, const Line::Attributes& attributes) {
  if (!hasStroke(attributes)) return {};
  Paint paint = sheet.stroke(sheet.theme(attributes.lineColor), widthOf(attributes));
  paint.dash = dashOf(attributes.lineStyle, paint.width);
  return paint;
}

Paint markerPaint(const Sheet& sheet, const Line::Attributes& attributes) {
  if (attributes.markerStyle == figures::Marker::Style::none) return {};
  const Rgba edge = sheet.theme(attributes.markerEdgeColor);
  if (attributes.markerStyle == figures::Marker::Style::point) return Sheet::fill(edge);
  Paint paint = sheet.stroke(edge, std::fmin(std::fmax(widthOf(attributes) * 0.75, 1.1), 2.4));
  paint.fill = sheet.theme(attributes.markerFaceColor);
  return paint;
}

MarkerShape markerShape(const Sheet& sheet, const Line::Attributes& attributes) {
  const double size = std::clamp(attributes.markerSize * kMarkerSize * sheet.unit, 0.1, kMostMarkerSize);
  return {attributes.markerStyle, size};
}

void drawLines(Sheet& sheet, const figures::PlotData& plot, const PlotFrame& frame, DrawingCache* cache) {
  if (plot.lines.empty()) return;
  sheet.list.clip(frame.area.grownBy(overhang(sheet, plot)));
  for (size_t k = 0; k < plot.lines.size(); ++k) {
    const Line& line = plot.lines[k];
    const Role role{Part::line, static_cast<uint32_t>(k + 1)};
    if (hasStroke(line.attribute)) {
      const bool isStem = line.attribute.type == PlotStyle::Stem;
      isStem ? drawStems(sheet, line, role, frame) : drawPath(sheet, line, role, frame, cache);
    }
    drawMarkers(sheet, line, {Part::markers, role.number}, frame);
  }
  sheet.list.restore();
}

}  // namespace kelo::drawing
