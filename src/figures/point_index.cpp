#include "figures/point_index.h"

namespace kelo::figures {

PointIndex::PointIndex(Points points) : points_(std::move(points)) {
  const std::span<const Point> values = points_.values();
  std::vector<PlotExtent> runs;
  for (size_t first = 0; first < values.size(); first += kPointsInRun) {
    runs.push_back(finiteExtent(values.subspan(first, std::min<size_t>(kPointsInRun, values.size() - first))));
  }
  while (!runs.empty()) {
    levels_.push_back(runs);
    if (runs.size() <= kBoxesInRun) break;
    std::vector<PlotExtent> wider((runs.size() + kBoxesInRun - 1) / kBoxesInRun);
    for (size_t k = 0; k < runs.size(); ++k) {
      wider[k / kBoxesInRun].x.include(runs[k].x);
      wider[k / kBoxesInRun].y.include(runs[k].y);
    }
    runs = std::move(wider);
  }
}

}  // namespace kelo::figures
