#include "figures/drawing/box_view.h"

#include <numbers>

namespace kelo::drawing {
namespace {

using Matrix = std::array<std::array<double, 3>, 3>;

/// How much more one direction of the screen may be stretched than the other to fill the picture.
constexpr double kMostStretch = 1.3;

Matrix product(const Matrix& a, const Matrix& b) {
  Matrix c{};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      for (int k = 0; k < 3; ++k) c[i][j] += a[i][k] * b[k][j];
    }
  }
  return c;
}

/// About axis 0, 1 or 2. Rounded, so that the last bits of sines, which differ between machines, do
/// not matter.
Matrix rotation(int axis, double degrees) {
  const double angle = std::fmod(std::isfinite(degrees) ? degrees : 0, 360) * std::numbers::pi / 180;
  const auto rounded = [](double x) { return std::round(x * 1e12) / 1e12; };
  const double c = rounded(std::cos(angle)), s = rounded(std::sin(angle));
  const int i = (axis + 1) % 3, j = (axis + 2) % 3;
  Matrix m{};
  m[axis][axis] = 1;
  m[i][i] = m[j][j] = c;
  m[i][j] = -s;
  m[j][i] = s;
  return m;
}

double finiteOr(double value, double otherwise) { return std::isfinite(value) ? value : otherwise; }

}  // namespace

BoxView::BoxView(const figures::SurfData& surface, const Rect& room)
    : maps_{mapOf(surface.xlims), mapOf(surface.ylims), mapOf(surface.zlims)} {
  const figures::SCNVector3& angles = surface.rotationAngles;
  rotation_ = product(rotation(0, angles.x), product(rotation(1, angles.y), rotation(2, angles.z)));
  Vec2 reach;  // of the turned box from its centre
  for (int corner = 0; corner < 8; ++corner) {
    const Vec3 p = rotated({corner & 1 ? 1.0 : -1.0, corner & 2 ? 1.0 : -1.0, corner & 4 ? kHeight : -kHeight});
    reach = {std::fmax(reach.x, p.x), std::fmax(reach.y, p.y)};
  }
  const double x = room.width() / 2 / reach.x, y = room.height() / 2 / reach.y, both = std::fmin(x, y);
  const double zoom = std::clamp(finiteOr(surface.zoomFactor, 1), 0.01, 100.0);
  scale_ = Vec2{std::fmin(x, both * kMostStretch), std::fmin(y, both * kMostStretch)} * zoom;
  const auto moved = [](float distance) { return std::clamp(finiteOr(distance, 0), -100.0, 100.0); };
  origin_ = {room.center().x + moved(surface.translation.x) * scale_.x,
             room.center().y - moved(surface.translation.y) * scale_.y};
}

Vec3 BoxView::rotated(Vec3 p) const {
  const auto row = [&](int i) { return rotation_[i][0] * p.x + rotation_[i][1] * p.y + rotation_[i][2] * p.z; };
  return {row(0), row(1), row(2)};
}

BoxView::AxisMap BoxView::mapOf(const figures::Limits& limits) {
  const bool half = !std::isfinite(limits.width());
  const double lower = half ? limits.lower / 2 : limits.lower;
  return {lower, half ? limits.upper / 2 - lower : limits.width(), half};
}

/// -1 at the lower limit, 1 at the upper one; limits that are one number have everything in the
/// middle.
double BoxView::share(const AxisMap& map, double value) {
  if (map.width == 0) return 0;
  return ((map.half ? value / 2 : value) - map.lower) / map.width * 2 - 1;
}

Vec3 BoxView::inBox(const figures::SCNVector3& p) const {
  return {share(maps_[0], p.x), share(maps_[1], p.y), share(maps_[2], p.z) * kHeight};
}

}  // namespace kelo::drawing
