// An index over the points of a line: boxes around runs of neighbours, boxes around runs of boxes,
// and so on. Neighbours in the order of a line lie near each other as a rule, so that most runs can
// be passed over at a glance. It takes a hundredth of the memory of the points, and one pass over
// them to make.
#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "figures/extent.h"

namespace kelo::figures {

class PointIndex {
 public:
  explicit PointIndex(Points points);

  const Points& points() const { return points_; }

  /// Visits runs of points, the nearest first as far as that is known.
  /// distanceOf  how near a point with such extents (empty without finite numbers) can be
  /// isFar       whether what is so far away is of no interest; asked anew after each visit
  /// visit       takes a run: the index of its first point, and how many
  template <class DistanceOf, class IsFar, class Visit>
  void search(DistanceOf&& distanceOf, IsFar&& isFar, Visit&& visit) const {
    if (!levels_.empty()) searchRuns(levels_.size() - 1, 0, distanceOf, isFar, visit);
  }

 private:
  static constexpr int64_t kPointsInRun = 256;
  static constexpr size_t kBoxesInRun = 16;

  template <class DistanceOf, class IsFar, class Visit>
  void searchRuns(size_t level, size_t begin, DistanceOf& distanceOf, IsFar& isFar, Visit& visit) const {
    const std::vector<PlotExtent>& boxes = levels_[level];
    const size_t count = std::min(kBoxesInRun, boxes.size() - begin);
    std::array<double, kBoxesInRun> distances;
    for (size_t k = 0; k < count; ++k) distances[k] = distanceOf(boxes[begin + k]);
    const auto nearest = static_cast<size_t>(std::min_element(distances.begin(), distances.begin() + count) -
                                             distances.begin());
    for (size_t k = 0; k <= count; ++k) {  // the nearest, then all but that
      const size_t box = k == 0 ? nearest : k - 1;
      if ((k > 0 && box == nearest) || isFar(distances[box])) continue;
      if (level > 0)
        searchRuns(level - 1, (begin + box) * kBoxesInRun, distanceOf, isFar, visit);
      else
        visitRun(begin + box, visit);
    }
  }

  template <class Visit>
  void visitRun(size_t run, Visit& visit) const {
    const int64_t first = static_cast<int64_t>(run) * kPointsInRun;
    visit(first, std::min(kPointsInRun, points_.size() - first));
  }

  Points points_;
  std::vector<std::vector<PlotExtent>> levels_;  // of runs of points, of runs of those, ...
};

}  // namespace kelo::figures
