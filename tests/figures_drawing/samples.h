// Figures for the tests of drawings and pictures.
#pragma once

#include <cmath>
#include <limits>
#include <random>

#include "figures/drawing/drawing.h"

namespace kelo::drawing {

inline figures::Line sampleLine(int count, double from, double to, double (*f)(double), int64_t color = 0) {
  std::vector<figures::Point> points;
  for (int i = 0; i < count; ++i) {
    const double x = from + (to - from) * i / std::max(count - 1, 1);
    points.push_back({x, f(x)});
  }
  figures::Line line;
  line.points = std::move(points);
  line.attribute.lineColor = line.attribute.markerEdgeColor = figures::nextCycleColor(color);
  return line;
}

/// A random walk with noise, in order of x unless `turnsBack`, with gaps when wanted.
inline figures::Line walk(unsigned seed, int count, bool turnsBack, bool hasGaps) {
  std::mt19937 random(seed);
  const auto step = [&] { return static_cast<double>(random() % 2001) / 1000 - 1; };
  std::vector<figures::Point> points;
  double x = 0, y = 0;
  for (int i = 0; i < count; ++i) {
    x += turnsBack ? step() : std::fabs(step());
    y += step();
    points.push_back({x, hasGaps && random() % 500 == 0 ? NAN : y + 10 * step()});
  }
  figures::Line line;
  line.points = std::move(points);
  return line;
}

inline figures::SurfData::Surface sampleSurface(int rows, int cols, double (*f)(double, double)) {
  std::vector<figures::SCNVector3> points;
  for (int j = 0; j < cols; ++j) {
    for (int i = 0; i < rows; ++i) {
      const double x = 6.0 * i / std::max(rows - 1, 1) - 3, y = 6.0 * j / std::max(cols - 1, 1) - 3;
      points.push_back({static_cast<float>(x), static_cast<float>(y), static_cast<float>(f(x, y))});
    }
  }
  figures::SurfData::Surface surface;
  surface.points = std::move(points);
  surface.attributes = {cols, rows, {}};
  return surface;
}

inline double bump(double x, double y) { return std::exp(-x * x - y * y) * (1 + x); }

}  // namespace kelo::drawing
