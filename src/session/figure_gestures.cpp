#include "session/figure_gestures.h"

#include <algorithm>
#include <cmath>

#include "figures/drawing/drawing.h"

namespace kelo::session {
namespace {

using figures::Axis;
using figures::Limits;
using figures::PlotData;
using figures::SurfData;
using Kind = Gesture::Kind;

constexpr double kDegreesPerPoint = 0.5;
constexpr double kLeastZoom = 0.05, kMostZoom = 50;

/// Limits that went too far, to the end of the doubles or to no width at all, stay as they were.
void setLimits(PlotData& plot, Axis axis, double lower, double upper) {
  const bool isWide = std::isfinite(lower) && std::isfinite(upper) &&
                      upper - lower > 1e-14 * std::max(std::fabs(lower), std::fabs(upper)) && std::isfinite(upper - lower);
  if (isWide) plot.setLimits(axis, {lower, upper});
}

/// shift: part of the width that the content moves by; scale about `share`, the part of the width that stays.
void moveAxis(PlotData& plot, Axis axis, double shift, double scale, double share) {
  const Limits limits = plot.axis(axis).limits;
  const double width = limits.width();
  const double fixed = limits.lower + share * width;
  const double newWidth = width / scale;
  const double lower = fixed - share * newWidth - shift * width;
  setLimits(plot, axis, lower, lower + newWidth);
}

PlotData moved(PlotData plot, const Gesture& gesture) {
  drawing::DrawingOptions options;
  options.size = gesture.view;
  const drawing::Rect area = drawing::draw(plot, options).plotArea;
  if (area.width() <= 0 || area.height() <= 0) return plot;
  const bool isPinch = gesture.kind == Kind::pinch;
  switch (gesture.kind) {
    case Kind::pan:
      moveAxis(plot, Axis::x, gesture.dx / area.width(), 1, 0);
      moveAxis(plot, Axis::y, -gesture.dy / area.height(), 1, 0);
      break;
    case Kind::pinch:
    case Kind::zoom:
      moveAxis(plot, Axis::x, 0, gesture.scaleX, isPinch ? (gesture.x - area.left) / area.width() : 0.5);
      moveAxis(plot, Axis::y, 0, gesture.scaleY, isPinch ? (area.bottom - gesture.y) / area.height() : 0.5);
      break;
    case Kind::rotate: break;
    case Kind::reset:
      plot.setAutoLimits(Axis::x, true);
      plot.setAutoLimits(Axis::y, true);
      break;
  }
  return plot;
}

float turned(float angle, double by) { return static_cast<float>(std::remainder(angle + by, 360)); }

SurfData moved(SurfData surface, const Gesture& gesture) {
  const double side = std::min(gesture.view.width, gesture.view.height);
  switch (gesture.kind) {
    case Kind::pan:
      surface.translation.x += static_cast<float>(gesture.dx / side);
      surface.translation.y -= static_cast<float>(gesture.dy / side);
      break;
    case Kind::pinch:
    case Kind::zoom:
      surface.zoomFactor = std::clamp(surface.zoomFactor * std::sqrt(gesture.scaleX * gesture.scaleY), kLeastZoom, kMostZoom);
      break;
    case Kind::rotate:
      surface.rotationAngles.z = turned(surface.rotationAngles.z, gesture.dx * kDegreesPerPoint);
      surface.rotationAngles.x = turned(surface.rotationAngles.x, gesture.dy * kDegreesPerPoint);
      break;
    case Kind::reset:
      surface.rotationAngles = SurfData::kFirstRotation;
      surface.translation = {0, 0, 0};
      surface.zoomFactor = 1;
      break;
  }
  return surface;
}

}  // namespace

figures::Figure moved(const figures::Figure& figure, const Gesture& gesture) {
  if (const auto* plot = std::get_if<PlotData>(&figure)) return moved(*plot, gesture);
  if (const auto* surface = std::get_if<SurfData>(&figure)) return moved(*surface, gesture);
  return figure;
}

}  // namespace kelo::session
