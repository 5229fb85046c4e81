// A line on its way into the display list: points come one by one, the part inside a rectangle goes
// out.
#pragma once

#include "figures/drawing/display_list.h"

namespace kelo::drawing {

/// Leaves out points of a path that lie on the way between their neighbours: no point is further
/// than a tolerance from the path that goes out, which never turns back where the points did not.
class StraightRuns {
 public:
  /// `tolerance` in points; 0: all points go out
  StraightRuns(DisplayList& list, double tolerance) : list_(list), tolerance_(tolerance) {}

  void start(Vec2 p);
  void add(Vec2 p);
  /// Gives the last point out; to be called before anything else is added to the list.
  void finish();

 private:
  bool continues(Vec2 p);

  DisplayList& list_;
  double tolerance_;
  Vec2 from_, last_;       ///< where the run began, and its end so far
  Vec2 left_, right_;      ///< the run's direction lies between these
  double reach_ = 0;       ///< of the run, squared
  bool hasLast_ = false;
};

/// Cuts a polyline at a rectangle. A break ends a piece; a piece of one point gives nothing.
class ClippedPolyline {
 public:
  /// A point that misses an edge by its last bits lies on it.
  ClippedPolyline(DisplayList& list, const Rect& rect, double tolerance)
      : list_(list), rect_(rect.grownBy(1e-6)), runs_(list, tolerance) {}
  ~ClippedPolyline() { runs_.finish(); }
  ClippedPolyline(const ClippedPolyline&) = delete;

  /// REQUIRES: finite coordinates
  void add(Vec2 p) {
    if (hasLast_) connect(last_, p);
    last_ = p;
    hasLast_ = true;
  }
  void breakHere() {
    hasLast_ = false;
    isOpen_ = false;
  }

 private:
  void connect(Vec2 from, Vec2 to);
  void put(Vec2 from, Vec2 to, bool startsInside);

  DisplayList& list_;
  Rect rect_;
  StraightRuns runs_;
  Vec2 last_;
  bool hasLast_ = false;
  bool isOpen_ = false;   ///< the list's last point is the last one that came
  bool hasPieces_ = false;
};

}  // namespace kelo::drawing
