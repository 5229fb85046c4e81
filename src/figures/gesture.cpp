// Tested by tests/figures/interaction_test.cpp.
#include "figures/gesture.h"

#include <algorithm>
#include <cmath>

namespace kelo::figures {
namespace {

constexpr double kLeastZoom = 0.05, kGreatestZoom = 50;
constexpr double kHalfTurn = 180;

/// Sets limits that are an axis; others change nothing.
void setRising(PlotData& plot, Axis axis, Limits limits) {
  const bool isAxis = std::isfinite(limits.lower) && std::isfinite(limits.upper) && limits.lower < limits.upper;
  if (isAxis && limits != plot.axis(axis).limits) plot.axis(axis).setLimits(limits);
}

/// Where the share of an axis, from 0 to 1 within the limits, lies in data.
double valueAt(const Limits& limits, double share) { return limits.lower * (1 - share) + limits.upper * share; }

void moveBy(PlotData& plot, Axis axis, double share) {
  const Limits limits = plot.axis(axis).limits;
  setRising(plot, axis, {valueAt(limits, -share), valueAt(limits, 1 - share)});
}

void spread(PlotData& plot, Axis axis, double share, double scale) {
  const Limits limits = plot.axis(axis).limits;
  setRising(plot, axis, {valueAt(limits, share - share / scale), valueAt(limits, share + (1 - share) / scale)});
}

void setZoom(SurfData& surface, double factor) {
  if (std::isfinite(factor)) surface.zoomFactor = std::clamp(factor, kLeastZoom, kGreatestZoom);
}

/// An angle from -180 to 180.
float wrapped(double degrees) { return static_cast<float>(std::remainder(degrees, 2 * kHalfTurn)); }

bool isPositive(double x) { return std::isfinite(x) && x > 0; }

}  // namespace

void pan(Figure& figure, const GestureView& view, double dx, double dy) {
  if (auto* plot = std::get_if<PlotData>(&figure)) {
    moveBy(*plot, Axis::x, dx / view.plotArea.width);
    moveBy(*plot, Axis::y, -dy / view.plotArea.height);
  } else if (auto* surface = std::get_if<SurfData>(&figure)) {
    const double side = std::min(view.width, view.height);
    const auto [x, y, z] = surface->translation;
    const SCNVector3 moved = {static_cast<float>(x + dx / side), static_cast<float>(y - dy / side), z};
    if (std::isfinite(moved.x) && std::isfinite(moved.y)) surface->translation = moved;
  }
}

void pinch(Figure& figure, const GestureView& view, ViewPoint center, double scaleX, double scaleY) {
  if (!isPositive(scaleX) || !isPositive(scaleY)) return;
  if (auto* plot = std::get_if<PlotData>(&figure)) {
    const PlotArea& area = view.plotArea;
    spread(*plot, Axis::x, (center.x - area.left) / area.width, scaleX);
    spread(*plot, Axis::y, 1 - (center.y - area.top) / area.height, scaleY);
  } else if (auto* surface = std::get_if<SurfData>(&figure)) {
    setZoom(*surface, surface->zoomFactor * std::sqrt(scaleX * scaleY));
  }
}

void zoom(Figure& figure, const GestureView& view, double scale) {
  const PlotArea& area = view.plotArea;
  pinch(figure, view, {area.left + area.width / 2, area.top + area.height / 2}, scale, scale);
}

void rotate(Figure& figure, const GestureView& view, double dx, double dy) {
  auto* surface = std::get_if<SurfData>(&figure);
  const double turn = dx / view.width * kHalfTurn, tilt = dy / view.height * kHalfTurn;
  if (!surface || !std::isfinite(turn) || !std::isfinite(tilt)) return;
  SCNVector3& angles = surface->rotationAngles;
  angles.z = wrapped(angles.z + turn);
  angles.x = static_cast<float>(std::clamp(angles.x + tilt, -kHalfTurn, 0.0));
}

void reset(Figure& figure) {
  if (auto* plot = std::get_if<PlotData>(&figure)) {
    for (const Axis axis : {Axis::x, Axis::y}) plot->axis(axis).autoLimits = true;
    plot->setAutoLimits(Axis::x, true);
  } else if (auto* surface = std::get_if<SurfData>(&figure)) {
    surface->rotationAngles = SurfData::kFirstRotation;
    surface->translation = {0, 0, 0};
    surface->zoomFactor = 1;
  }
}

}  // namespace kelo::figures
