#include "figures/drawing/marker_places.h"

#include <cmath>

namespace kelo::drawing {
namespace {

using figures::Point;

/// Cells and columns a point of width is cut into: finer than the pixels, so that nothing moves in
/// sight.
constexpr double kCellsPerPixel = 2;
constexpr double kFewPoints = 2000;

bool isSeen(const Point& p, const PlotFrame& frame) { return frame.xlims.contains(p.x) && frame.ylims.contains(p.y); }

Vec2 placeOf(const Point& p, const PlotFrame& frame) { return {frame.x(p.x), frame.y(p.y)}; }

/// One bit for each cell of the frame.
class CellSet {
 public:
  CellSet(const Rect& area, double cellsPerPoint)
      : area_(area), perPoint_(cellsPerPoint), columns_(static_cast<size_t>(area.width() * cellsPerPoint) + 2) {
    bits_.resize(columns_ * (static_cast<size_t>(area.height() * cellsPerPoint) + 2));
  }
  /// True when the cell of a place was not in the set before.
  bool insert(Vec2 place) {
    const auto column = static_cast<size_t>((place.x - area_.left) * perPoint_);
    const auto row = static_cast<size_t>((place.y - area_.top) * perPoint_);
    const auto bit = bits_[row * columns_ + column];
    const bool isNew = !bit;
    bits_[row * columns_ + column] = true;
    return isNew;
  }

 private:
  Rect area_;
  double perPoint_;
  size_t columns_;
  std::vector<bool> bits_;
};

/// A stem for the point that reaches furthest to each side of the baseline.
struct StemColumn {
  double lowX = 0, lowY = -HUGE_VAL;
  double highX = 0, highY = HUGE_VAL;
};

void addStem(DisplayList& list, double x, double y, double baseY, bool& isFirst) {
  if (!isFirst) list.breakPath();
  isFirst = false;
  list.point(x, baseY);
  list.point(x, y);
}

}  // namespace

void addMarkerPlaces(DisplayList& list, std::span<const Point> points, const PlotFrame& frame, Reduction reduction) {
  const bool keepsAll = reduction.columnsPerPoint <= 0 || static_cast<double>(points.size()) < kFewPoints;
  if (keepsAll) {
    for (const Point& p : points) {
      if (isSeen(p, frame)) list.point(placeOf(p, frame));
    }
    return;
  }
  CellSet cells(frame.area, reduction.columnsPerPoint * kCellsPerPixel);
  std::vector<Vec2> kept;
  for (auto p = points.rbegin(); p != points.rend(); ++p) {
    if (!isSeen(*p, frame)) continue;
    const Vec2 place = placeOf(*p, frame);
    if (cells.insert(place)) kept.push_back(place);
  }
  for (auto place = kept.rbegin(); place != kept.rend(); ++place) list.point(*place);
}

void addStems(DisplayList& list, std::span<const Point> points, const PlotFrame& frame, double baseY,
              Reduction reduction) {
  bool isFirst = true;
  const double perPoint = reduction.columnsPerPoint * kCellsPerPixel;
  const auto isDrawn = [&](const Point& p) { return frame.xlims.contains(p.x) && std::isfinite(p.y); };
  const auto end = [&](const Point& p) {
    return std::fmin(std::fmax(frame.y(p.y), frame.area.top), frame.area.bottom);
  };
  if (perPoint <= 0 || static_cast<double>(points.size()) < 2 * perPoint * frame.area.width()) {
    for (const Point& p : points) {
      if (isDrawn(p)) addStem(list, frame.x(p.x), end(p), baseY, isFirst);
    }
    return;
  }
  std::vector<StemColumn> columns(static_cast<size_t>(frame.area.width() * perPoint) + 2);
  for (const Point& p : points) {
    if (!isDrawn(p)) continue;
    const double x = frame.x(p.x), y = end(p);
    StemColumn& column = columns[static_cast<size_t>((x - frame.area.left) * perPoint)];
    if (y > column.lowY) column.lowX = x, column.lowY = y;
    if (y < column.highY) column.highX = x, column.highY = y;
  }
  for (const StemColumn& column : columns) {
    if (column.lowY > baseY) addStem(list, column.lowX, column.lowY, baseY, isFirst);
    if (column.highY < baseY) addStem(list, column.highX, column.highY, baseY, isFirst);
  }
}

}  // namespace kelo::drawing
