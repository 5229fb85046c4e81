// Tested by tests/figures/axes_test.cpp.
#include "figures/data_limits.h"

#include <cmath>

#include "figures/extent.h"

namespace kelo::figures {
namespace {

/// A single value gets `below` and `above` around it; without values it is 0 to 1.
template <class T>
Extent<T> widened(Extent<T> extent, T below, T above) {
  if (extent.isEmpty()) return {0, 1};
  if (extent.lower != extent.upper) return extent;
  return {static_cast<T>(extent.lower - below), static_cast<T>(extent.upper + above)};
}

template <class T>
Limits limitsOf(const Extent<T>& extent) {
  return checkedLimits(extent.lower, extent.upper);
}

/// Stems stand on 0 where all of them point to one side.
void includeBaseline(Extent<double>& y) {
  if (y.upper > 0 && y.lower >= 0)
    y.lower = 0;
  else if (y.upper <= 0 && y.lower < 0)
    y.upper = 0;
}

/// A point seen from the axis whose limits are sought: `along` it and `across` it.
struct Seen {
  double along, across;
  bool isFinite() const { return std::isfinite(along) && std::isfinite(across); }
};

Seen seen(const Point& point, Axis axis) {
  return axis == Axis::x ? Seen{point.x, point.y} : Seen{point.y, point.x};
}

void includeRise(const Seen& from, const Seen& to, double edge, Extent<double>& extent) {
  if (!(from.across < edge && to.across > edge)) return;
  const double along = to.along - (to.along - from.along) * ((to.across - edge) / (to.across - from.across));
  if (std::isfinite(along)) extent.include(along);
}

void includeInWindow(const Line& line, Axis axis, const Limits& window, Extent<double>& extent) {
  Seen before{NAN, NAN};
  for (const Point& point : line.points) {
    const Seen now = seen(point, axis);
    if (now.isFinite()) {
      if (before.isFinite()) {
        includeRise(before, now, window.lower, extent);
        includeRise(before, now, window.upper, extent);
      }
      if (window.contains(now.across)) extent.include(now.along);
    }
    before = now;
  }
}

}  // namespace

PlotLimits limitsFromData(std::span<const Line> lines) {
  PlotExtent extent;
  bool hasStems = false;
  for (const Line& line : lines) {
    const PlotExtent own = finiteExtent(line.points.values());
    extent.x.include(own.x);
    extent.y.include(own.y);
    hasStems = hasStems || line.attribute.type == PlotStyle::Stem;
  }
  extent.x = widened(extent.x, 1.0, 1.0);
  extent.y = widened(extent.y, 1.0, 1.0);
  if (hasStems) includeBaseline(extent.y);
  return {limitsOf(extent.x), limitsOf(extent.y)};
}

Limits limitsFromWindow(std::span<const Line> lines, Axis axis, const Limits& window) {
  Extent<double> extent;
  for (const Line& line : lines) includeInWindow(line, axis, window, extent);
  return limitsOf(widened(extent, 0.5, 0.5));
}

Limits limitsFromSurfaces(std::span<const SurfData::Surface> surfaces, Axis axis) {
  Extent<float> extent;
  for (const SurfData::Surface& surface : surfaces) {
    const SurfaceExtent own = finiteExtent(surface.points.values());
    extent.include(axis == Axis::x ? own.x : axis == Axis::y ? own.y : own.z);
  }
  return limitsOf(widened(extent, 1.0f, 0.0f));
}

}  // namespace kelo::figures
