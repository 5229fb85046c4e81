#include "figures/drawing/line_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "figures/drawing/point_range.h"
#include "platform/parallel.h"

namespace kelo::drawing {
namespace {

/// Shorter lines are drawn as fast without.
constexpr int64_t kWorthIndexing = 1 << 16;
constexpr double kLargest = std::numeric_limits<double>::max();

/// Where the first point with that y stands, or the last point. OPTIMIZATION: some at a time,
/// without a branch for each.
int64_t placeOf(double y, std::span<const figures::Point> points) {
  static constexpr size_t kStep = 16;
  size_t i = 0;
  const auto isAmong = [&] {
    int count = 0;
    for (size_t k = i; k < i + kStep; ++k) count += points[k].y == y;
    return count > 0;
  };
  while (i + kStep < points.size() && !isAmong()) i += kStep;
  while (i + 1 < points.size() && points[i].y != y) ++i;
  return static_cast<int64_t>(i);
}

}  // namespace

LineIndex::LineIndex(std::span<const figures::Point> points) : points_(points) {
  const auto numPoints = static_cast<int64_t>(points.size());
  const int64_t numBlocks = (numPoints + kBlock - 1) / kBlock;
  least_.resize(static_cast<size_t>(numBlocks));
  greatest_.resize(least_.size());
  isOrdered_.resize(least_.size());
  platform::parallelForUnits(numBlocks, kBlock, [this](int64_t begin, int64_t end) {
    for (int64_t block = begin; block < end; ++block) summarize(block);
  });
  isUsable_ = std::all_of(isOrdered_.begin(), isOrdered_.end(), [](uint8_t ordered) { return ordered != 0; });
}

/// The last point of the block before belongs to the test of order.
void LineIndex::summarize(int64_t block) {
  const int64_t begin = block * kBlock, end = std::min<int64_t>(begin + kBlock, static_cast<int64_t>(points_.size()));
  const auto points = points_.subspan(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
  const PointRange range(points);
  int64_t numFalls = 0;
  for (int64_t i = std::max<int64_t>(begin, 1); i < end; ++i) numFalls += points_[i].x < points_[i - 1].x;
  const auto at = static_cast<size_t>(block);
  least_[at] = static_cast<uint8_t>(placeOf(range.least().y, points));
  greatest_[at] = static_cast<uint8_t>(placeOf(range.greatest().y, points));
  isOrdered_[at] = numFalls == 0 && range.isFinite();
}

int64_t LineIndex::lowerBound(double x, int64_t from) const {
  const auto first = points_.begin() + from;
  return std::partition_point(first, points_.end(), [x](const figures::Point& p) { return p.x < x; }) - points_.begin();
}

LineIndex::Extremes LineIndex::extremes(int64_t begin, int64_t end) const {
  Extremes extremes{begin, begin};
  const int64_t firstBlock = std::min((begin + kBlock - 1) / kBlock, end / kBlock + 1), endBlock = end / kBlock;
  if (firstBlock >= endBlock) {
    for (int64_t i = begin; i < end; ++i) include(extremes, i);
    return extremes;
  }
  for (int64_t i = begin; i < firstBlock * kBlock; ++i) include(extremes, i);
  for (int64_t block = firstBlock; block < endBlock; ++block) {
    include(extremes, block * kBlock + least_[static_cast<size_t>(block)]);
    include(extremes, block * kBlock + greatest_[static_cast<size_t>(block)]);
  }
  for (int64_t i = endBlock * kBlock; i < end; ++i) include(extremes, i);
  return extremes;
}

const LineIndex* DrawingCache::indexOf(const figures::Points& points) {
  if (points.size() < kWorthIndexing) return nullptr;
  Entry& entry = entries_[points.identity()];
  if (!entry.index) entry = {points, std::make_unique<LineIndex>(points.values()), true};
  entry.wasAsked = true;
  return entry.index->isUsable() ? entry.index.get() : nullptr;
}

void DrawingCache::sweep() {
  std::erase_if(entries_, [](const auto& entry) { return !entry.second.wasAsked; });
  for (auto& [identity, entry] : entries_) entry.wasAsked = false;
}

}  // namespace kelo::drawing
