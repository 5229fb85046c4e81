// The models of figures: what a plot command costs beside a copy of its data, files, and the
// nearest point.
#include <cmath>

#include "builtin_calls.h"
#include "figures/coding/coded_form.h"
#include "figures/tip.h"

namespace kelo::figures {
namespace {

constexpr int64_t kPoints = 1000000;

Points wave() {
  return Points::made(kPoints, [](int64_t i) {
    return Point{static_cast<double>(i) * 0.00123, std::sin(static_cast<double>(i) * 1e-4)};
  });
}

Line lineOf(Points points) {
  Line line;
  line.points = std::move(points);
  return line;
}

FigureData document() {
  FigureData data;
  data.plotData.emplace(std::vector<Line>{lineOf(wave())});
  return data;
}

void copyPoints(benchmark::State& state) {
  const Points points = wave();
  for (auto _ : state) benchmark::DoNotOptimize(Points(std::vector<Point>(points.begin(), points.end())));
}
BENCHMARK(copyPoints)->Unit(benchmark::kMillisecond);

void plotPoints(benchmark::State& state) {
  const SizeVector size(1, kPoints);
  callOver(state, "plot", {numbersBetween(0, 1, size), numbersBetween(-1, 1, size)}, 0);
}
BENCHMARK(plotPoints)->Unit(benchmark::kMillisecond);

void surface500(benchmark::State& state) { callOver(state, "surf", {numbersBetween(0, 1, SizeVector(500, 500))}, 0); }
BENCHMARK(surface500)->Unit(benchmark::kMillisecond);

void writeDocument(benchmark::State& state) {
  const FigureData data = document();
  for (auto _ : state) benchmark::DoNotOptimize(codedForm(data));
}
BENCHMARK(writeDocument)->Unit(benchmark::kMillisecond);

void readDocument(benchmark::State& state) {
  const std::string text = codedForm(document());
  for (auto _ : state) benchmark::DoNotOptimize(decodedFigureData(text));
}
BENCHMARK(readDocument)->Unit(benchmark::kMillisecond);

/// Over the line, and in a cloud whose points lie in no order.
void nearestPoint(benchmark::State& state) {
  Points points = wave();
  if (state.range(0) != 0) {
    const DoubleArray x = numbersBetween(0, 1, SizeVector(2, kPoints));
    points = Points::made(kPoints, [&](int64_t i) { return Point{x[2 * i], x[2 * i + 1]}; });
  }
  const PlotData plot({lineOf(points)});
  TipFinder finder;
  double x = 0;
  for (auto _ : state) {
    x = std::fmod(x + 37.7, 640);
    benchmark::DoNotOptimize(finder.find(plot, {0, 0, 640, 480}, {x, 200}));
  }
}
BENCHMARK(nearestPoint)->ArgName("cloud")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelo::figures
