// The point of a plot that is nearest to a place in the view.
#pragma once

#include <map>
#include <optional>

#include "figures/plot_area.h"
#include "figures/point_index.h"

namespace kelo::figures {

struct Tip {
  int64_t line;   ///< from 0
  int64_t index;  ///< of the point in its line, from 0
  Point point;
  ViewPoint place;
};

/// Finds tips; it keeps an index of each line of more than a few points that it has seen, for as
/// long as that line stays in the plot it is asked about. Thread: one at a time
class TipFinder {
 public:
  /// The nearest of the points that lie within the limits, of two equally near the first; nothing
  /// without any.
  std::optional<Tip> find(const PlotData& plot, const PlotArea& area, ViewPoint place);

 private:
  void forgetOthers(const PlotData& plot);

  std::map<const void*, PointIndex> indices_;  // by the identity of the points, which they keep alive
};

}  // namespace kelo::figures
