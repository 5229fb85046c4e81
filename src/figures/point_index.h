// An index over the points of a line: boxes around runs of neighbours, boxes around runs of boxes,
// and so on. Neighbours in the order of a line lie near each other as a rule, so that most runs can
// be passed over at a glance. It takes a fiftieth of the memory of the points, and one pass over
// them to make.
#pragma once

#include <algorithm>
#include <vector>

#include "figures/extent.h"

namespace kelo::figures {

class PointIndex {
 public:
  explicit PointIndex(Points points);

  const Points& points() const { return points_; }

  /// Visits the points of all runs that are not passed over, in no order that is promised.
  /// passes  whether a run with such extents (empty without finite numbers) can hold nothing of
  ///         interest
  /// visit   takes a run of points: the first one's index and how many
  template <class Passes, class Visit>
  void search(Passes&& passes, Visit&& visit) const {
    if (!levels_.empty()) searchRuns(levels_.size() - 1, 0, levels_.back().size(), passes, visit);
  }

 private:
  static constexpr int64_t kPointsInRun = 256;
  static constexpr size_t kBoxesInRun = 16;

  template <class Passes, class Visit>
  void searchRuns(size_t level, size_t begin, size_t end, Passes& passes, Visit& visit) const {
    for (size_t k = begin; k < end; ++k) {
      if (passes(levels_[level][k])) continue;
      if (level > 0) {
        searchRuns(level - 1, k * kBoxesInRun, std::min((k + 1) * kBoxesInRun, levels_[level - 1].size()), passes, visit);
      } else {
        const int64_t first = static_cast<int64_t>(k) * kPointsInRun;
        visit(first, std::min(kPointsInRun, points_.size() - first));
      }
    }
  }

  Points points_;
  std::vector<std::vector<PlotExtent>> levels_;  // of runs of points, of runs of those, ...
};

}  // namespace kelo::figures
