// A screen of character cells on which a display list is painted: each cell is 8 x 16 points and
// holds a character or 2 x 4 dots.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "figures/drawing/display_list.h"

namespace kelo::terminal {

class CellCanvas {
 public:
  static constexpr int kCellWidth = 8, kCellHeight = 16;
  static constexpr int kDot = 4;  ///< points a dot takes in each direction

  CellCanvas(int columns, int rows);

  int columns() const { return columns_; }
  int rows() const { return rows_; }

  /// Dots along a path in points.
  void stroke(std::span<const float> points, drawing::Rgba color, bool closes);
  /// Takes away the dots inside a polygon.
  void clearInside(std::span<const float> points);
  void dot(double x, double y, drawing::Rgba color);
  /// Takes away all that stands in a rectangle of points.
  void clear(double left, double top, double right, double bottom);
  /// Characters from a cell on; those outside are left out.
  void write(int column, int row, const std::string& text, drawing::Rgba color);

  std::string text(bool colour) const;

 private:
  struct Cell {
    uint8_t dots = 0;
    std::string character;  ///< in place of the dots
    bool isCovered = false;  ///< by the wide character on its left
    drawing::Rgba color;
  };

  void setDot(int x, int y, drawing::Rgba color);
  void segment(double x0, double y0, double x1, double y1, drawing::Rgba color);
  Cell* cellAt(int column, int row);

  int columns_, rows_;
  std::vector<Cell> cells_;
};

}  // namespace kelo::terminal
