// How a surface's box is seen: parallel projection of the turned, moved and scaled box onto the
// picture.
//
// The box reaches from -1 to 1 in x and y and from -kHeight to kHeight in z; the limits of the axes
// are its faces. It is turned about z, then y, then x. The eye looks along -z of the turned box; y
// goes up on the screen.
#pragma once

#include <array>
#include <cmath>

#include "figures/drawing/geometry.h"
#include "figures/surf_data.h"

namespace kelo::drawing {

struct Vec3 {
  double x = 0, y = 0, z = 0;
  friend Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
  friend Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
  friend Vec3 operator*(Vec3 a, double s) { return {a.x * s, a.y * s, a.z * s}; }
  bool isFinite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }
};

class BoxView {
 public:
  static constexpr double kHeight = 0.75;

  /// Fits the box into `room` at zoom 1; a translation of 1 moves it by half an edge.
  BoxView(const figures::SurfData& surface, const Rect& room);

  /// From data to the box; finite data far outside the limits may come out not finite.
  Vec3 inBox(const figures::SCNVector3& point) const;
  /// From the box to the screen; z grows towards the eye.
  Vec3 onScreen(Vec3 p) const {
    const Vec3 turned = rotated(p);
    return {origin_.x + turned.x * scale_.x, origin_.y - turned.y * scale_.y, turned.z};
  }
  Vec2 place(Vec3 p) const {
    const Vec3 q = onScreen(p);
    return {q.x, q.y};
  }
  /// How directly the face with this outward normal looks at the eye: 1 straight, 0 from the side,
  /// below 0 away.
  double facing(Vec3 normal) const { return rotated(normal).z; }
  /// Points a unit of the box takes on the screen where it is seen at full length.
  double pointsPerUnit() const { return std::fmax(scale_.x, scale_.y); }

 private:
  Vec3 rotated(Vec3 p) const;

  struct AxisMap {
    double lower, width;
    bool half;
  };
  static AxisMap mapOf(const figures::Limits& limits);
  static double share(const AxisMap& map, double value);

  std::array<AxisMap, 3> maps_;
  std::array<std::array<double, 3>, 3> rotation_;
  Vec2 scale_, origin_;
};

}  // namespace kelo::drawing
