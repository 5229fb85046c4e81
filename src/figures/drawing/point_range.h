// Least and greatest coordinates of a few points, for what reads all points of long lines.
#pragma once

#include <span>

#include "figures/line.h"

namespace kelo::drawing {

/// OPTIMIZATION: no branch for a point, and both coordinates side by side in one register.
struct PointRange {
  figures::Point least, greatest;  ///< of the points that are finite

  /// REQUIRES: a point at least
  explicit PointRange(std::span<const figures::Point> points) : least(points[0]), greatest(points[0]) {
    for (const figures::Point p : points) {
      least = {p.x < least.x ? p.x : least.x, p.y < least.y ? p.y : least.y};
      greatest = {p.x > greatest.x ? p.x : greatest.x, p.y > greatest.y ? p.y : greatest.y};
      faults_ = {faults_.x + (p.x - p.x), faults_.y + (p.y - p.y)};
    }
  }
  bool isFinite() const { return faults_.x + faults_.y == 0; }

 private:
  figures::Point faults_{0, 0};  // 0, or NaN once a point was not finite
};

}  // namespace kelo::drawing
