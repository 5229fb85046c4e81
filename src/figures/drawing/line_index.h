// An index over the points of a long line whose x never falls: least and greatest y of every block
// of points, so that a drawing at any limits looks at a few blocks per column of pixels instead of
// at all points.
//
// It takes 18 bytes for 256 points. Lines with gaps or with x that turns back have none; they are
// read whole each time.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "figures/line.h"

namespace kelo::drawing {

class LineIndex {
 public:
  static constexpr int64_t kBlock = 256;

  /// REQUIRES: points outlive the index
  explicit LineIndex(std::span<const figures::Point> points);

  /// All points are finite and x never falls; otherwise the index is of no use.
  bool isUsable() const { return isUsable_; }
  std::span<const figures::Point> points() const { return points_; }

  /// First point from `from` on whose x is at least that.
  int64_t lowerBound(double x, int64_t from = 0) const;

  /// Where y is least and greatest among points begin to end - 1. REQUIRES: begin < end
  struct Extremes {
    int64_t least, greatest;
  };
  Extremes extremes(int64_t begin, int64_t end) const;

 private:
  void summarize(int64_t block);
  void include(Extremes& extremes, int64_t i) const {
    if (points_[i].y < points_[extremes.least].y) extremes.least = i;
    if (points_[i].y > points_[extremes.greatest].y) extremes.greatest = i;
  }

  std::span<const figures::Point> points_;
  std::vector<uint8_t> least_, greatest_;  ///< offsets in the block
  std::vector<uint8_t> isOrdered_;
  bool isUsable_ = false;
};

/// The indices of the lines that were drawn last. Not for two threads at once.
class DrawingCache {
 public:
  /// The index of long points, made when first asked for; null where none helps.
  const LineIndex* indexOf(const figures::Points& points);
  /// Forgets what was not asked for since the last call; once a drawing.
  void sweep();

 private:
  struct Entry {
    figures::Points points;  // keeps them alive
    std::unique_ptr<LineIndex> index;
    bool wasAsked = true;
  };
  std::unordered_map<const void*, Entry> entries_;
};

}  // namespace kelo::drawing
