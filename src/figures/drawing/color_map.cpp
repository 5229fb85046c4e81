// Source: OKLab, Ottosson, "A perceptual color space for image processing", 2020.
#include "figures/drawing/color_map.h"

#include <array>
#include <cmath>

namespace kelo::drawing {
namespace {

struct Lab {
  double lightness, a, b;
};

constexpr int kEntries = 256;

// Lightness, then green to red, then blue to yellow.
constexpr std::array<Lab, 6> kStops = {{
    {0.33, 0.005, -0.150},
    {0.46, -0.050, -0.120},
    {0.58, -0.105, -0.040},
    {0.70, -0.125, 0.070},
    {0.83, -0.065, 0.155},
    {0.93, 0.000, 0.130},
}};

uint8_t channel(double linear) {
  const double c = std::fmin(std::fmax(linear, 0), 1);
  const double value = c <= 0.0031308 ? 12.92 * c : 1.055 * std::pow(c, 1 / 2.4) - 0.055;
  return static_cast<uint8_t>(std::lround(255 * value));
}

Rgba colorOf(const Lab& lab) {
  const auto cube = [](double x) { return x * x * x; };
  const double l = cube(lab.lightness + 0.3963377774 * lab.a + 0.2158037573 * lab.b);
  const double m = cube(lab.lightness - 0.1055613458 * lab.a - 0.0638541728 * lab.b);
  const double s = cube(lab.lightness - 0.0894841775 * lab.a - 1.2914855480 * lab.b);
  return {channel(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s),
          channel(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s),
          channel(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s), 255};
}

/// A curve through the stops (Catmull and Rom, 1974), t from 0 to 1.
Lab along(double t) {
  const double at = t * (kStops.size() - 1);
  const int k = std::min(static_cast<int>(at), static_cast<int>(kStops.size()) - 2);
  const double u = at - k;
  const auto stop = [](int i) { return kStops[static_cast<size_t>(std::clamp(i, 0, int(kStops.size()) - 1))]; };
  const auto blend = [u](double p, double q, double r, double s) {
    return q + 0.5 * u * (r - p + u * (2 * p - 5 * q + 4 * r - s + u * (3 * (q - r) + s - p)));
  };
  const Lab p = stop(k - 1), q = stop(k), r = stop(k + 1), s = stop(k + 2);
  return {blend(p.lightness, q.lightness, r.lightness, s.lightness), blend(p.a, q.a, r.a, s.a),
          blend(p.b, q.b, r.b, s.b)};
}

/// Entries at equal distances along the curve.
std::array<Rgba, kEntries> makeTable() {
  constexpr int kSteps = 4096;
  std::array<double, kSteps + 1> length{};
  Lab before = along(0);
  for (int i = 1; i <= kSteps; ++i) {
    const Lab now = along(double(i) / kSteps);
    length[i] = length[i - 1] + std::hypot(now.lightness - before.lightness, now.a - before.a, now.b - before.b);
    before = now;
  }
  std::array<Rgba, kEntries> table;
  int i = 0;
  for (int entry = 0; entry < kEntries; ++entry) {
    while (i < kSteps && length[i] < length[kSteps] * entry / (kEntries - 1)) ++i;
    table[entry] = colorOf(along(double(i) / kSteps));
  }
  return table;
}

}  // namespace

Rgba heightColor(double share) {
  static const std::array<Rgba, kEntries> table = makeTable();
  const double at = std::fmin(std::fmax(share, 0), 1) * (kEntries - 1);
  return table[static_cast<size_t>(std::lround(at))];
}

}  // namespace kelo::drawing
