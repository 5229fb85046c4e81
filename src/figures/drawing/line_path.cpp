#include "figures/drawing/line_path.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "figures/drawing/point_range.h"

namespace kelo::drawing {
namespace {

using figures::Point;

constexpr double kLargest = std::numeric_limits<double>::max();

/// How far a line may pass a point by that is left out, in columns.
constexpr double kStraight = 0.15;

bool isFinite(const Point& p) { return std::fabs(p.x) <= kLargest && std::fabs(p.y) <= kLargest; }

/// Takes data points, gives the clipped path.
class PathSink {
 public:
  PathSink(DisplayList& list, const PlotFrame& frame, Reduction reduction, bool isStairs)
      : path_(list, frame.area, reduction.columnsPerPoint > 0 ? kStraight / reduction.columnsPerPoint : 0),
        frame_(frame),
        isStairs_(isStairs) {}

  void add(const Point& point) {
    const Vec2 p{frame_.x(point.x), frame_.y(point.y)};
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return breakHere();
    if (isStairs_ && hasLast_) path_.add({p.x, last_.y});
    path_.add(p);
    last_ = p;
    hasLast_ = true;
  }
  void breakHere() {
    path_.breakHere();
    hasLast_ = false;
  }
  /// Some of four points in their order, each once.
  void addFour(std::span<const Point> points, int64_t first, int64_t least, int64_t greatest, int64_t last) {
    const int64_t lower = std::min(least, greatest), upper = std::max(least, greatest);
    add(points[first]);
    if (lower != first) add(points[lower]);
    if (upper != lower && upper != first) add(points[upper]);
    if (last != upper && last != first) add(points[last]);
  }

 private:
  ClippedPolyline path_;
  const PlotFrame& frame_;
  bool isStairs_;
  bool hasLast_ = false;
  Vec2 last_;
};

/// The columns of pixels in data units.
class Columns {
 public:
  Columns(const PlotFrame& frame, Reduction reduction)
      : frame_(frame), perPoint_(reduction.columnsPerPoint) {}

  /// The edges [lower, upper) of the column that x stands in; beyond the limits one column takes
  /// all.
  void around(double x, double& lower, double& upper) const {
    if (x < frame_.xlims.lower) {
      lower = -kLargest;
      upper = frame_.xlims.lower;
      return;
    }
    if (x > frame_.xlims.upper) {
      lower = std::nextafter(frame_.xlims.upper, kLargest);
      upper = std::numeric_limits<double>::infinity();
      return;
    }
    const double column = std::floor((frame_.x(x) - frame_.area.left) * perPoint_);
    lower = frame_.x.inverse(frame_.area.left + column / perPoint_);
    upper = frame_.x.inverse(frame_.area.left + (column + 1) / perPoint_);
    if (!(lower <= x)) lower = x;
    if (!(upper > x)) upper = std::nextafter(x, kLargest);
  }

 private:
  const PlotFrame& frame_;
  double perPoint_;
};

void addAll(PathSink& sink, std::span<const Point> points) {
  for (const Point& point : points) isFinite(point) ? sink.add(point) : sink.breakHere();
}

/// A run of neighbours in one column, and where they are least and greatest.
struct ColumnRun {
  int64_t end, least, greatest;
};

/// OPTIMIZATION: a few points at a time, without a branch for each.
class RunReader {
 public:
  RunReader(std::span<const Point> points, double lower, double upper)
      : points_(points), count_(static_cast<int64_t>(points.size())), lower_(lower), upper_(upper) {}

  /// REQUIRES: the first one is finite and stands in the column
  ColumnRun from(int64_t first) {
    run_ = {first + 1, first, first};
    while (run_.end + kStep <= count_ && takesStep()) run_.end += kStep;
    while (run_.end < count_ && belongs(points_[run_.end])) include(run_.end++);
    return run_;
  }

 private:
  static constexpr int kStep = 16;

  bool belongs(const Point& p) const { return (p.x >= lower_) & (p.x < upper_) & (std::fabs(p.y) <= kLargest); }
  void include(int64_t i) {
    if (points_[i].y < points_[run_.least].y) run_.least = i;
    if (points_[i].y > points_[run_.greatest].y) run_.greatest = i;
  }
  bool takesStep() {
    const PointRange range(points_.subspan(static_cast<size_t>(run_.end), kStep));
    if (!range.isFinite() || range.least().x < lower_ || range.greatest().x >= upper_) return false;
    if (range.least().y < points_[run_.least].y || range.greatest().y > points_[run_.greatest].y) {
      for (int k = 0; k < kStep; ++k) include(run_.end + k);
    }
    return true;
  }

  std::span<const Point> points_;
  int64_t count_;
  double lower_, upper_;
  ColumnRun run_{};
};

/// Reads every point; runs of neighbours in one column become four.
void addByRuns(PathSink& sink, std::span<const Point> points, const Columns& columns) {
  const auto count = static_cast<int64_t>(points.size());
  for (int64_t i = 0; i < count;) {
    if (!isFinite(points[i])) {
      sink.breakHere();
      ++i;
      continue;
    }
    double lower, upper;
    columns.around(points[i].x, lower, upper);
    const ColumnRun run = RunReader(points, lower, upper).from(i);
    sink.addFour(points, i, run.least, run.greatest, run.end - 1);
    i = run.end;
  }
}

/// The same with the index: reads what lies inside the limits, and of that only what the index does
/// not know.
void addByIndex(PathSink& sink, const LineIndex& index, const PlotFrame& frame, const Columns& columns) {
  const std::span<const Point> points = index.points();
  const auto count = static_cast<int64_t>(points.size());
  const int64_t inside = index.lowerBound(frame.xlims.lower);
  int64_t i = std::max<int64_t>(inside - 1, 0);
  while (i < count) {
    double lower, upper;
    columns.around(points[i].x, lower, upper);
    const int64_t end = std::max(index.lowerBound(upper, i), i + 1);
    const LineIndex::Extremes extremes = index.extremes(i, end);
    sink.addFour(points, i, extremes.least, extremes.greatest, end - 1);
    if (points[i].x > frame.xlims.upper) break;
    i = end;
  }
}

}  // namespace

void addLinePath(DisplayList& list, const figures::Line& line, const PlotFrame& frame, Reduction reduction,
                 const LineIndex* index) {
  const bool isStairs = line.attribute.type == figures::PlotStyle::Stair;
  PathSink sink(list, frame, reduction, isStairs);
  const std::span<const Point> points = line.points.values();
  const bool isShort = static_cast<double>(points.size()) < 2 * frame.area.width() * reduction.columnsPerPoint;
  if (reduction.columnsPerPoint <= 0 || isShort) return addAll(sink, points);
  const Columns columns(frame, reduction);
  index != nullptr ? addByIndex(sink, *index, frame, columns) : addByRuns(sink, points, columns);
}

}  // namespace kelo::drawing
