// A line on its way into the display list: points come one by one, the part inside a rectangle goes
// out.
#pragma once

#include "figures/drawing/display_list.h"

namespace kelo::drawing {

/// Cuts a polyline at a rectangle. A break ends a piece; a piece of one point gives nothing.
class ClippedPolyline {
 public:
  ClippedPolyline(DisplayList& list, const Rect& rect) : list_(list), rect_(rect) {}

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
  Vec2 last_;
  bool hasLast_ = false;
  bool isOpen_ = false;   ///< the list's last point is the last one that came
  bool hasPieces_ = false;
};

}  // namespace kelo::drawing
