#include "builtins/figures/plot_data_lines.h"

#include "messages/catalogue/plot_commands.h"
#include "messages/message.h"

namespace kelo::builtins {
namespace {

using figures::Line;
using figures::Point;
using figures::Points;

/// Numbers at equal distances in memory.
struct Run {
  const double* first;
  int64_t step;
  double operator[](int64_t i) const { return first[i * step]; }
};

template <class X, class Y>
Line lineOf(int64_t count, const X& x, const Y& y) {
  Line line;
  line.points = Points::made(count, [&](int64_t i) { return Point{x[i], y[i]}; });
  return line;
}

/// 1, 2, 3, ...
struct Positions {
  double operator[](int64_t i) const { return static_cast<double>(i + 1); }
};

/// How the lines of a pair lie in the array y.
struct Layout {
  int64_t lines, points;
  int64_t lineStep, pointStep;
};

Layout columnsOf(const SizeVector& y) {
  const int64_t rows = y.rows();
  return {y.numElements() == 0 ? (y.isMatrix() ? y.columns() : 0) : y.numElements() / rows, rows, rows, 1};
}

Layout layoutOver(int64_t length, const SizeVector& y) {
  if (y.rows() == length) return columnsOf(y);
  if (y.dimensionLength(2) != length) throw problem(text::kSizesOfData, text::kSizesOfDataExpected);
  if (!y.isMatrix()) throw expectation(text::kTransposeOfPages);
  return {y.rows(), length, 1, y.rows()};
}

}  // namespace

std::vector<Line> linesOverPositions(const NumericArray& y, int64_t ordinal) {
  if (!y.size().isMatrix()) throw problem(text::invalidArgument(ordinal), text::kVectorOrMatrix);
  if (y.isEmpty()) return {};
  const DoubleArray heights = y.toDoubleArray();
  const bool isVector = y.size().isVector();
  const int64_t points = isVector ? y.numElements() : y.size().rows();
  std::vector<Line> lines;
  for (int64_t start = 0; start < y.numElements(); start += points) {
    lines.push_back(lineOf(points, Positions(), heights.data() + start));
  }
  return lines;
}

std::vector<Line> linesOfPair(const NumericArray& x, const NumericArray& y) {
  const bool isShared = x.size().isVector();
  if (!isShared && x.size() != y.size()) throw problem(text::kSizesOfData, text::kSizesOfDataExpected);
  const Layout layout = isShared ? layoutOver(x.numElements(), y.size()) : columnsOf(y.size());
  const DoubleArray across = x.toDoubleArray(), heights = y.toDoubleArray();
  std::vector<Line> lines;
  for (int64_t k = 0; k < layout.lines; ++k) {
    const Run xs{across.data() + (isShared ? 0 : k * layout.points), 1};
    const Run ys{heights.data() + k * layout.lineStep, layout.pointStep};
    lines.push_back(ys.step == 1 ? lineOf(layout.points, xs.first, ys.first) : lineOf(layout.points, xs, ys));
  }
  return lines;
}

void colorInTurn(std::span<Line> lines, int64_t first) {
  for (Line& line : lines) line.attribute.lineColor = line.attribute.markerEdgeColor = figures::nextCycleColor(first++);
}

}  // namespace kelo::builtins
