// Random figures for laws: every field set to something it may hold.
#pragma once

#include <cstring>
#include <random>

#include "figures/figure_panel.h"

namespace kelo::figures {

class RandomFigures {
 public:
  explicit RandomFigures(unsigned seed) : random_(seed) {}

  uint64_t below(uint64_t n) { return random_() % n; }
  bool flag() { return below(2) == 1; }
  /// Any finite double.
  double number() {
    while (true) {
      const uint64_t bits = random_();
      double x;
      std::memcpy(&x, &bits, sizeof x);
      if (std::isfinite(x)) return x;
    }
  }
  std::string text() {
    static const char* const kTexts[] = {
        "", "x", "a \"quoted\" \\ text", "line\nbreak\t\x01", "η², שלום, 🧪", "</script>"};
    return kTexts[below(std::size(kTexts))];
  }
  Color color() {
    const auto role = static_cast<ColorRole>(below(14));
    const auto channel = [&] { return static_cast<double>(below(1001)) / 1000; };
    return role == ColorRole::none ? Color(channel(), channel(), channel(), channel()) : Color(role);
  }
  std::optional<std::string> maybeText() { return flag() ? std::optional(text()) : std::nullopt; }
  Limits limits() {
    const double a = number(), b = number();
    return {std::min(a, b), std::max(a, b)};
  }
  std::vector<double> numbers() {
    std::vector<double> list(below(5));
    for (double& x : list) x = number();
    return list;
  }

  Line line() {
    Line line;
    line.attribute = {static_cast<Line::Style>(below(6)), color(), number(), static_cast<Marker::Style>(below(14)),
                      color(), color(), number(), maybeText(), flag(), static_cast<PlotStyle>(below(4))};
    std::vector<Point> points(below(20));
    for (Point& point : points) point = {number(), number()};
    line.points = std::move(points);
    return line;
  }

  PlotData plot() {
    PlotData plot;
    for (uint64_t n = below(4); n > 0; --n) plot.lines.push_back(line());
    plot.shouldShowLegend = flag();
    plot.shouldShowGrid = flag();
    plot.shouldHold = flag();
    plot.xLabel = maybeText();
    plot.yLabel = maybeText();
    plot.title = maybeText();
    plot.legendAttributes = {static_cast<Line::Style>(below(6)), color(), number(), number(), number(),
                             static_cast<Legend::Position>(below(4)), color(), number()};
    plot.gridAttributes = {static_cast<Line::Style>(below(6)), color(), number()};
    for (const Axis axis : {Axis::x, Axis::y}) fill(plot.axis(axis));
    return plot;
  }

  SurfData surface() {
    SurfData surface;
    surface.rotationAngles = vector();
    surface.translation = vector();
    surface.zoomFactor = number();
    for (const Axis axis : {Axis::x, Axis::y, Axis::z}) fill(surface.axis(axis));
    surface.hold = flag();
    surface.xLabelText = text();
    surface.yLabelText = text();
    surface.zLabelText = text();
    surface.title = maybeText();
    surface.showGrid = flag();
    for (uint64_t n = below(3); n > 0; --n) {
      const auto rows = static_cast<int64_t>(below(4)), columns = static_cast<int64_t>(below(4));
      std::vector<SCNVector3> points(static_cast<size_t>(rows * columns));
      for (SCNVector3& point : points) point = vector();
      surface.surfaces.push_back({std::move(points), {columns, rows}});
    }
    return surface;
  }

 private:
  void fill(AxisState axis) {
    axis.limits = limits();
    axis.autoLimits = flag();
    axis.autoTicks = flag();
    axis.ticks = numbers();
  }
  SCNVector3 vector() {
    const auto coordinate = [&] {
      while (true) {
        const auto bits = static_cast<uint32_t>(random_());
        float x;
        std::memcpy(&x, &bits, sizeof x);
        if (std::isfinite(x)) return x;
      }
    };
    return {coordinate(), coordinate(), coordinate()};
  }

  std::mt19937_64 random_;
};

}  // namespace kelo::figures
