// Shapes look equally heavy at one size: pointed ones reach a little further out than the circle.
#include "figures/drawing/marker_outline.h"

#include <array>
#include <cmath>
#include <numbers>

namespace kelo::drawing {
namespace {

using Style = figures::Marker::Style;

constexpr std::array<std::string_view, 14> kNames = {
    "square", "plus", "downTriangle", "upTriangle", "rightTriangle", "leftTriangle", "asterisk", "fivePointedStar",
    "sixPointedStar", "cross", "diamond", "circle", "point", "none",
};
constexpr int kSidesOfCircle = 24;

/// Corners on one circle or on two in turn, clockwise from `start` degrees, 0 being upwards.
std::vector<Vec2> corners(int count, double start, double radius, double innerRadius) {
  std::vector<Vec2> points;
  for (int i = 0; i < count; ++i) {
    const double angle = (start + 360.0 * i / count) * std::numbers::pi / 180;
    const double r = i % 2 == 0 ? radius : innerRadius;
    points.push_back({r * std::sin(angle), -r * std::cos(angle)});
  }
  return points;
}

MarkerOutline polygon(int count, double start, double radius) {
  return {{corners(count, start, radius, radius)}, true, 0};
}

/// Strokes through the middle, the first upwards.
MarkerOutline strokes(int count, double start, double radius) {
  MarkerOutline outline;
  outline.isClosed = false;
  for (const Vec2 end : corners(count, start, radius, radius)) {
    if (outline.pieces.size() < static_cast<size_t>(count) / 2) outline.pieces.push_back({end, end * -1});
  }
  return outline;
}

MarkerOutline circle(double radius) {
  MarkerOutline outline = polygon(kSidesOfCircle, 0, radius);
  outline.radius = radius;
  return outline;
}

}  // namespace

MarkerOutline markerOutline(const MarkerShape& shape) {
  const double r = shape.size / 2;
  switch (shape.style) {
    case Style::square: return polygon(4, 45, r * 1.25);
    case Style::plus: return strokes(4, 0, r * 1.1);
    case Style::downTriangle: return polygon(3, 180, r * 1.25);
    case Style::upTriangle: return polygon(3, 0, r * 1.25);
    case Style::rightTriangle: return polygon(3, 90, r * 1.25);
    case Style::leftTriangle: return polygon(3, 270, r * 1.25);
    case Style::asterisk: return strokes(6, 0, r * 1.1);
    case Style::fivePointedStar: return {{corners(10, 0, r * 1.3, r * 0.52)}, true, 0};
    case Style::sixPointedStar: return {{corners(12, 0, r * 1.25, r * 0.72)}, true, 0};
    case Style::cross: return strokes(4, 45, r * 1.15);
    case Style::diamond: return polygon(4, 0, r * 1.25);
    case Style::circle: return circle(r);
    case Style::point: return circle(r * 0.5);
    case Style::none: break;
  }
  return {};
}

std::string_view nameOf(figures::Marker::Style style) { return kNames[static_cast<size_t>(style)]; }

}  // namespace kelo::drawing
