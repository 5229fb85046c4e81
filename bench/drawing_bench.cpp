// Drawings and pictures: display lists of long lines, and the files of the figures that
// bench/compare/drawing.py makes too.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "figures/drawing/drawing.h"
#include "figures/pictures/native/cairo_renderer.h"
#include "figures/pictures/picture.h"

namespace kelo::pictures {
namespace {

using namespace figures;

Line walk(int64_t count) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> normal;
  std::vector<Point> points(static_cast<size_t>(count));
  double y = 0;
  for (int64_t i = 0; i < count; ++i) points[i] = {static_cast<double>(i), y += normal(random)};
  Line line;
  line.points = std::move(points);
  return line;
}

PlotData tenLines() {
  std::vector<Line> lines;
  for (int k = 0; k < 10; ++k) {
    std::vector<Point> points;
    for (int i = 0; i < 1000; ++i) points.push_back({i * 0.01, std::sin(i * 0.01 + 0.3 * k)});
    Line line;
    line.points = std::move(points);
    line.attribute.lineColor = nextCycleColor(k);
    lines.push_back(line);
  }
  return PlotData(lines);
}

SurfData bumps(int count) {
  std::vector<SCNVector3> points;
  for (int j = 0; j < count; ++j) {
    for (int i = 0; i < count; ++i) {
      const double x = 6.0 * i / (count - 1) - 3, y = 6.0 * j / (count - 1) - 3;
      points.push_back({float(x), float(y), float(std::sin(x * y) * std::exp(-0.1 * (x * x + y * y)))});
    }
  }
  SurfData::Surface surface;
  surface.points = std::move(points);
  surface.attributes = {count, count, {}};
  return SurfData({surface});
}

void pictureOf(benchmark::State& state, const Figure& figure, Format format) {
  native::CairoRenderer renderer;
  PictureOptions options;
  options.scale = 1;
  size_t bytes = 0;
  for (auto _ : state) bytes = picture(figure, format, options, renderer).size();
  state.counters["bytes"] = static_cast<double>(bytes);
}

void lineOf1e6Png(benchmark::State& state) { pictureOf(state, PlotData({walk(1000000)}), Format::png); }
void lineOf1e6Svg(benchmark::State& state) { pictureOf(state, PlotData({walk(1000000)}), Format::svg); }
void tenLinesPng(benchmark::State& state) { pictureOf(state, tenLines(), Format::png); }
void surface500Png(benchmark::State& state) { pictureOf(state, bumps(500), Format::png); }
BENCHMARK(lineOf1e6Png)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(lineOf1e6Svg)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(tenLinesPng)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(surface500Png)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

/// The first list builds the index, later ones use it.
void firstListOf1e7(benchmark::State& state) {
  const PlotData plot({walk(10000000)});
  for (auto _ : state) {
    drawing::DrawingCache cache;
    benchmark::DoNotOptimize(drawing::draw(plot, {{800, 600}}, &cache));
  }
}
void laterListOf1e7(benchmark::State& state) {
  PlotData plot({walk(10000000)});
  drawing::DrawingCache cache;
  drawing::draw(plot, {{800, 600}}, &cache);
  double lower = 0;
  for (auto _ : state) {
    plot.axis(Axis::x).setLimits({lower, lower + 5e6});
    lower = lower < 4e6 ? lower + 12345 : 0;
    benchmark::DoNotOptimize(drawing::draw(plot, {{800, 600}}, &cache));
  }
}
BENCHMARK(firstListOf1e7)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
BENCHMARK(laterListOf1e7)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

}  // namespace
}  // namespace kelo::pictures
