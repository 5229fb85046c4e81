// Strokes against their definition, sample by sample.
#include "figures/pictures/line_painter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace kelo::pictures {
namespace {

using drawing::Paint;
using drawing::Rect;
using drawing::Vec2;

constexpr int kWidth = 40, kHeight = 30;

double dot(Vec2 a, Vec2 b) { return a.x * b.x + a.y * b.y; }

/// Whether a dash, not a gap, stands so far along the path.
bool isDrawn(const Paint& paint, double way) {
  double period = 0;
  for (int k = 0; k < paint.dash.count; ++k) period += paint.dash.lengths[k];
  if (period == 0) return true;
  way = std::fmod(way, period);
  for (int k = 0; k < paint.dash.count; way -= paint.dash.lengths[k++]) {
    if (way < paint.dash.lengths[k]) return k % 2 == 0;
  }
  return false;
}

/// At a turn the sector between the two ends belongs to a stroke; whether the rest of a round join
/// does is seen only where a stretch is shorter than half the stroke, and left open.
enum class Join { sector, disc };

bool isInStroke(const std::vector<Vec2>& path, const Paint& paint, Vec2 p, Join join) {
  double way = 0;
  Vec2 before;
  for (size_t k = 0; k + 1 < path.size(); ++k) {
    const Vec2 step = path[k + 1] - path[k], to = p - path[k];
    const double length = std::sqrt(dot(step, step)), along = dot(to, step) / length;
    const double aside = std::fabs(to.x * step.y - to.y * step.x) / length;
    if (aside <= paint.width / 2 && along >= 0 && along <= length && isDrawn(paint, way + along)) return true;
    const bool isJoined = join == Join::disc || (dot(to, before) >= 0 && along <= 0);
    if (k > 0 && isJoined && std::sqrt(dot(to, to)) <= paint.width / 2 && isDrawn(paint, way)) return true;
    way += length;
    before = step;
  }
  return false;
}

double coverage(const std::vector<Vec2>& path, const Paint& paint, int x, int y, Join join) {
  int count = 0;
  for (int v = 0; v < 8; ++v) {
    for (int u = 0; u < 8; ++u) count += isInStroke(path, paint, {x + (u + 0.5) / 8, y + (v + 0.5) / 8}, join);
  }
  return count / 64.0;
}

/// The path painted black on white, once or over and over, in points of two pixels, compared inside
/// and outside a clip.
void expectStroke(const std::vector<Vec2>& path, Paint paint, double tolerance, const std::string& what,
                  int times = 1) {
  const Rect clip{3, 5, kWidth - 8.0, kHeight - 2.0};
  Bitmap bitmap{kWidth, kHeight, std::vector<uint32_t>(kWidth * kHeight, 0xffffff)};
  std::vector<float> points;
  for (int k = 0; k < times; ++k) {
    for (const Vec2 p : path) points.insert(points.end(), {static_cast<float>(p.x / 2), static_cast<float>(p.y / 2)});
    points.insert(points.end(), 2, NAN);
  }
  Paint inPoints = paint;
  inPoints.width /= 2;
  for (float& length : inPoints.dash.lengths) length /= 2;
  LinePainter painter(bitmap, 2);
  painter.add(points, inPoints, {clip.left / 2, clip.top / 2, clip.right / 2, clip.bottom / 2});
  painter.flush();
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const bool isInside = x >= clip.left && x < clip.right && y >= clip.top && y < clip.bottom;
      const double painted = 1 - (bitmap.pixels[static_cast<size_t>(y * kWidth + x)] & 0xff) / 255.0;
      double expected = isInside ? coverage(path, paint, x, y, Join::sector) : 0;
      if (isInside && painted > expected + tolerance) {
        expected = std::fmin(painted, coverage(path, paint, x, y, Join::disc));
      }
      ASSERT_NEAR(painted, expected, tolerance) << what << " at " << x << ", " << y;
    }
  }
}

TEST(LinePainter, strokesAreTheirShape) {
  std::mt19937 random(7);
  const auto between = [&](double a, double b) { return a + (b - a) * (random() % 10001) / 10000; };
  for (int round = 0; round < 42; ++round) {
    Paint paint;
    paint.stroke = {0, 0, 0, 255};
    paint.width = static_cast<float>(between(0.3, round % 5 == 0 ? 20 : 4));
    if (round % 3 == 1) paint.dash = {4, {float(between(2, 9)), float(between(1, 5)), 1.5f, 2.5f}};
    std::vector<Vec2> path;
    Vec2 p{between(0, kWidth), between(0, kHeight)};
    for (int k = 0; k < 6; ++k) {
      path.push_back(p);
      const double reach = round % 2 == 0 ? 60 : 6;
      p = p + Vec2{between(-reach, reach), round % 7 == 3 ? 0 : between(-reach, reach)};
      if (round % 7 == 5) p = {path.back().x, p.y};
      p = {std::round(p.x * 64) / 64, std::round(p.y * 64) / 64};
    }
    expectStroke(path, paint, 0.12, "round " + std::to_string(round));
  }
}

TEST(LinePainter, denseStrokesFillWhatTheyCover) {
  Paint paint;
  paint.stroke = {0, 0, 0, 255};
  paint.width = 1.5f;
  std::vector<Vec2> path;
  for (int k = 0; k < 60; ++k) path.push_back({20 + k / 12.0, k % 2 == 0 ? 8 : 25.0 - k % 7});
  expectStroke(path, paint, 0.12, "zigzag");
  expectStroke(path, paint, 0.15, "a long way", 25);
}

/// Later strokes stand before earlier ones, together as one by one.
TEST(LinePainter, strokesStandInTheirOrder) {
  std::mt19937 random(5);
  const std::vector<uint32_t> white(kWidth * kHeight, 0xffffff);
  Bitmap together{kWidth, kHeight, white}, apart{kWidth, kHeight, white};
  LinePainter all(together, 1), one(apart, 1);
  for (int k = 0; k < 400; ++k) {
    Paint paint;
    const auto byte = [&] { return static_cast<uint8_t>(random()); };
    paint.stroke = {byte(), byte(), byte(), static_cast<uint8_t>(k % 4 == 0 ? 128 : 255)};
    paint.width = 1 + static_cast<float>(k % 3);
    const auto place = [&](int side) { return static_cast<float>(random() % 1000) * static_cast<float>(side) / 1000; };
    const std::vector<float> points = {place(kWidth), place(kHeight), place(kWidth), place(kHeight)};
    all.add(points, paint, {0, 0, kWidth, kHeight});
    one.add(points, paint, {0, 0, kWidth, kHeight});
    one.flush();
  }
  all.flush();
  for (size_t i = 0; i < white.size(); ++i) {
    for (int shift = 0; shift < 24; shift += 8) {
      ASSERT_NEAR(together.pixels[i] >> shift & 0xff, apart.pixels[i] >> shift & 0xff, 8) << i;
    }
  }
}

TEST(LinePainter, farAndEmptyPaths) {
  Paint paint;
  paint.stroke = {255, 0, 0, 255};
  paint.width = 3;
  for (const std::vector<float>& points : std::vector<std::vector<float>>{
           {}, {5, 5}, {5, 5, 5, 5}, {-1e6f, 1e6f, 1e6f, 2e6f}, {-1e7f, -1e7f, -9e6f, -1e7f}, {1e9f, 0, 1e9f, 50}}) {
    Bitmap bitmap{kWidth, kHeight, std::vector<uint32_t>(kWidth * kHeight, 0xffffff)};
    LinePainter painter(bitmap, 1);
    painter.add(points, paint, {0, 0, kWidth, kHeight});
    painter.flush();
    EXPECT_EQ(bitmap.pixels, std::vector<uint32_t>(kWidth * kHeight, 0xffffff));
  }
}

}  // namespace
}  // namespace kelo::pictures
