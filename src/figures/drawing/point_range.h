// Least and greatest coordinates of a few points, for what reads all points of long lines.
#pragma once

#include <span>

#include "figures/line.h"

namespace kelo::drawing {

/// OPTIMIZATION: no branch for a point, both coordinates side by side in one register, and every
/// other point by itself, since each comparison waits for the one before.
class PointRange {
 public:
  /// REQUIRES: a point at least
  explicit PointRange(std::span<const figures::Point> points) : PointRange(pairOf(points[0])) {
    PointRange others(pairOf(points[0]));
    size_t i = 0;
    for (; i + 1 < points.size(); i += 2) {
      include(pairOf(points[i]));
      others.include(pairOf(points[i + 1]));
    }
    if (i < points.size()) include(pairOf(points[i]));
    include(others.least_);
    include(others.greatest_);
    faults_ += others.faults_;
  }
  /// Of the points that are finite.
  figures::Point least() const { return {least_[0], least_[1]}; }
  figures::Point greatest() const { return {greatest_[0], greatest_[1]}; }
  bool isFinite() const { return faults_[0] + faults_[1] == 0; }

 private:
  using Pair = double __attribute__((vector_size(16)));

  static Pair pairOf(figures::Point p) { return Pair{p.x, p.y}; }
  explicit PointRange(Pair p) : least_(p), greatest_(p) {}
  void include(Pair p) {
    least_ = p < least_ ? p : least_;
    greatest_ = p > greatest_ ? p : greatest_;
    faults_ += p - p;
  }

  Pair least_, greatest_;
  Pair faults_{0, 0};  // 0, or NaN once a point was not finite
};

}  // namespace kelo::drawing
