#include "figures/pictures/stroke_parts.h"

#include <cmath>

namespace kelo::pictures {
namespace {

using drawing::Vec2;

/// Where the path turns by less (cosine of 30 degrees), bars that reach a little further leave no
/// gap and pass a round join by less than a twentieth of their half width.
constexpr double kSlightTurn = 0.866;

/// Dashes and gaps that are shorter together are no longer seen; the line is drawn through.
constexpr double kLeastPeriod = 0.5;

double dot(Vec2 a, Vec2 b) { return a.x * b.x + a.y * b.y; }

class Stroker {
 public:
  Stroker(const drawing::Paint& paint, double scale) {
    parts_.half = paint.width * scale / 2;
    double period = 0;
    for (int k = 0; k < paint.dash.count; ++k) period += dashes_[k] = paint.dash.lengths[k] * scale;
    numDashes_ = period > kLeastPeriod ? paint.dash.count : 0;
  }

  void moveTo(Vec2 p) {
    last_ = p;
    hasBar_ = false;
    dash_ = 0;
    left_ = dashes_[0];
  }
  void lineTo(Vec2 p) {
    const Vec2 step = p - last_;
    const double length = std::sqrt(dot(step, step));
    if (length == 0) return;
    const Vec2 along = step * (1 / length);
    numDashes_ == 0 ? bar(last_, p, along) : dash(last_, length, along);
    last_ = p;
  }
  StrokeParts take() { return std::move(parts_); }

 private:
  void bar(Vec2 from, Vec2 to, Vec2 along) {
    if (hasBar_) from = joined(from, along);
    parts_.bars.push_back({from, to, along});
    hasBar_ = true;
  }

  /// Joins a bar to the one before; gives where it begins.
  Vec2 joined(Vec2 at, Vec2 along) {
    StrokeParts::Bar& before = parts_.bars.back();
    const double cosine = dot(before.along, along);
    if (cosine < kSlightTurn) {
      parts_.discs.push_back(at);
      return at;
    }
    const double sine = before.along.x * along.y - before.along.y * along.x;
    const double reach = parts_.half * std::fabs(sine) / (1 + cosine);
    before.to = at + before.along * reach;
    return at - along * reach;
  }

  void dash(Vec2 from, double length, Vec2 along) {
    double done = 0;
    while (length - done > left_) {
      const double end = done + left_;
      if (dash_ % 2 == 0) bar(from + along * done, from + along * end, along);
      hasBar_ = false;
      done = end;
      dash_ = (dash_ + 1) % numDashes_;
      left_ = dashes_[dash_];
    }
    if (dash_ % 2 == 0) bar(from + along * done, from + along * length, along);
    left_ -= length - done;
  }

  StrokeParts parts_;
  double dashes_[4] = {};
  int numDashes_ = 0, dash_ = 0;
  double left_ = 0;  // of the dash or gap
  Vec2 last_;
  bool hasBar_ = false;  // one ends at the last point
};

}  // namespace

StrokeParts strokeParts(std::span<const float> points, const drawing::Paint& paint, double scale) {
  Stroker stroker(paint, scale);
  bool isOpen = false;
  for (size_t i = 0; i + 1 < points.size(); i += 2) {
    const Vec2 p = Vec2{points[i], points[i + 1]} * scale;
    const bool isPoint = !std::isnan(p.x);
    if (isPoint) isOpen ? stroker.lineTo(p) : stroker.moveTo(p);
    isOpen = isPoint;
  }
  return stroker.take();
}

}  // namespace kelo::pictures
