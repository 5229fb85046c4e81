// The data of an SVG path, in relative steps of hundredths of a point.
#pragma once

#include <span>
#include <string>

#include "figures/drawing/geometry.h"

namespace kelo::pictures {

class SvgPath {
 public:
  /// Adds an item's points; a pair of NaN begins a new piece. `closes` each piece.
  void add(std::span<const float> points, bool closes);
  /// Adds a piece moved by some offset.
  void addPiece(std::span<const drawing::Vec2> points, drawing::Vec2 offset, bool closes);
  void addCircle(drawing::Vec2 center, double radius);
  const std::string& data() const { return data_; }

 private:
  void moveTo(double x, double y);
  void lineTo(double x, double y);
  void close();
  void command(char letter);
  void number(int64_t value);

  std::string data_;
  char last_ = 0;
  int64_t x_ = 0, y_ = 0, startX_ = 0, startY_ = 0;
};

}  // namespace kelo::pictures
