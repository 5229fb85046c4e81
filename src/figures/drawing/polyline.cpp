// Clipping after Liang and Barsky (1984).
#include "figures/drawing/polyline.h"

#include <algorithm>
#include <cmath>

namespace kelo::drawing {
namespace {

/// Narrows [t0, t1] to where a + t * d <= bound (or >= for negative sides, by signs). False:
/// nothing is left.
bool narrow(double distance, double step, double& t0, double& t1) {
  if (step == 0) return distance >= 0;
  const double t = distance / step;
  if (step > 0) {
    t1 = std::fmin(t1, t);
  } else {
    t0 = std::fmax(t0, t);
  }
  return t0 <= t1;
}

double cross(Vec2 a, Vec2 b) { return a.x * b.y - a.y * b.x; }

}  // namespace

void StraightRuns::start(Vec2 p) {
  list_.point(p);
  from_ = p;
  reach_ = 0;
  hasLast_ = false;
}

void StraightRuns::add(Vec2 p) {
  if (tolerance_ <= 0) return list_.point(p);
  if (hasLast_ && !continues(p)) {
    start(last_);
    continues(p);
  } else if (!hasLast_) {
    continues(p);
  }
  last_ = p;
  hasLast_ = true;
}

void StraightRuns::finish() {
  if (hasLast_) list_.point(last_);
  hasLast_ = false;
}

/// A point narrows the directions that pass all points of the run closely enough; one outside of
/// them, or one that comes back, ends the run. The first point, and those next to the beginning,
/// leave it open.
bool StraightRuns::continues(Vec2 p) {
  const Vec2 step = p - from_;
  const double reach = step.x * step.x + step.y * step.y;
  if (reach <= tolerance_ * tolerance_) return reach_ == 0;
  if (reach_ > 0 && (reach < reach_ || cross(right_, step) < 0 || cross(step, left_) < 0)) return false;
  const Vec2 aside = Vec2{-step.y, step.x} * (tolerance_ / std::sqrt(reach));
  const Vec2 left = step + aside, right = step - aside;
  if (reach_ == 0 || cross(left, left_) > 0) left_ = left;
  if (reach_ == 0 || cross(right_, right) > 0) right_ = right;
  reach_ = reach;
  return true;
}

void ClippedPolyline::connect(Vec2 from, Vec2 to) {
  if (rect_.contains(from) && rect_.contains(to)) return put(from, to, true);
  const Vec2 step = to - from;
  if (!std::isfinite(step.x) || !std::isfinite(step.y)) {  // too far out for a direction
    isOpen_ = false;
    return;
  }
  double t0 = 0, t1 = 1;
  const bool crosses = narrow(rect_.right - from.x, step.x, t0, t1) && narrow(from.x - rect_.left, -step.x, t0, t1) &&
                       narrow(rect_.bottom - from.y, step.y, t0, t1) && narrow(from.y - rect_.top, -step.y, t0, t1);
  if (!crosses) {
    isOpen_ = false;
    return;
  }
  // Far ends cost the sums their digits; the points lie on the edge all the same.
  const auto onEdge = [&](Vec2 p) {
    return Vec2{std::clamp(p.x, rect_.left, rect_.right), std::clamp(p.y, rect_.top, rect_.bottom)};
  };
  put(onEdge(t0 > 0 ? from + step * t0 : from), onEdge(t1 < 1 ? from + step * t1 : to), t0 == 0);
  if (t1 < 1) isOpen_ = false;
}

void ClippedPolyline::put(Vec2 from, Vec2 to, bool startsInside) {
  if (!isOpen_ || !startsInside) {
    runs_.finish();
    if (hasPieces_) list_.breakPath();
    runs_.start(from);
  }
  runs_.add(to);
  isOpen_ = hasPieces_ = true;
}

}  // namespace kelo::drawing
