// Points and rectangles of a picture, in points (1/72 inch on paper, a CSS pixel on a screen); y
// grows downwards.
#pragma once

#include <algorithm>

namespace kelo::drawing {

struct Vec2 {
  double x = 0, y = 0;
  friend Vec2 operator+(Vec2 a, Vec2 b) { return {a.x + b.x, a.y + b.y}; }
  friend Vec2 operator-(Vec2 a, Vec2 b) { return {a.x - b.x, a.y - b.y}; }
  friend Vec2 operator*(Vec2 a, double s) { return {a.x * s, a.y * s}; }
};

struct Size {
  double width = 640, height = 480;
};

struct Rect {
  double left = 0, top = 0, right = 0, bottom = 0;

  double width() const { return right - left; }
  double height() const { return bottom - top; }
  Vec2 center() const { return {(left + right) / 2, (top + bottom) / 2}; }
  bool contains(Vec2 p) const { return left <= p.x && p.x <= right && top <= p.y && p.y <= bottom; }
  bool overlaps(const Rect& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
  Rect grownBy(double margin) const { return {left - margin, top - margin, right + margin, bottom + margin}; }
};

}  // namespace kelo::drawing
