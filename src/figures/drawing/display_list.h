// The display list: a figure as a flat list of things to paint, in painting order. Whatever shows a
// figure - a file, the terminal, a canvas - paints this list and knows nothing else of figures.
//
// It is a structure of arrays: all coordinates stand in one array of 32-bit floats, x and y in
// turn, and an item is a range of it. A pair of NaN breaks a path. Joins of lines are round, ends
// are cut off at the last point. Colours are resolved by a theme already; the role tells what an
// item is.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "figures/drawing/geometry.h"
#include "figures/line.h"

namespace kelo::drawing {

/// Eight bits a channel, not premultiplied. Alpha 0: not painted.
struct Rgba {
  uint8_t red = 0, green = 0, blue = 0, alpha = 0;
  bool isVisible() const { return alpha != 0; }
  friend bool operator==(const Rgba&, const Rgba&) = default;
};

/// What an item is: a part, and for parts of which there are several a number from 1.
struct Role {
  enum class Part : uint8_t {
    background, plotArea, xAxis, xTick, xTickLabel, xAxisPower, xLabel, yAxis, yTick, yTickLabel, yAxisPower, yLabel,
    zAxis, zTick, zTickLabel, zAxisPower, zLabel, grid, title, line, markers, legend, legendLine, legendText, surface,
  };
  Part part = Part::background;
  uint32_t number = 0;

  std::string text() const;  ///< "x tick label", "line 1"
  friend bool operator==(const Role&, const Role&) = default;
};

/// Lengths of strokes and gaps in turn, in points; none: solid.
struct Dash {
  uint8_t count = 0;
  float lengths[4] = {};
  friend bool operator==(const Dash&, const Dash&) = default;
};

struct Paint {
  Rgba stroke, fill;
  float width = 0;
  Dash dash;
  friend bool operator==(const Paint&, const Paint&) = default;
};

enum class Anchor : uint8_t { start, middle, end };

/// One line of text; its point is where its baseline is anchored.
struct Text {
  std::string text;
  double size = 0;  ///< of the font, in points
  Anchor anchor = Anchor::start;
  double angle = 0;  ///< degrees, clockwise as the eye sees it
  Rgba color;
};

/// The same marker at every point of the item.
struct MarkerShape {
  figures::Marker::Style style = figures::Marker::Style::none;
  double size = 0;  ///< width of the whole, in points
};

class DisplayList {
 public:
  /// `clip` holds two points, the corners of a rectangle that bounds what follows up to its
  /// `restore`; clips do not nest.
  enum class Kind : uint8_t { path, polygon, marker, text, clip, restore };

  struct Item {
    Kind kind;
    Role role;
    const Paint& paint;
    std::span<const float> points;
    const Text* text;           ///< of a text
    const MarkerShape* marker;  ///< of markers
  };

  Size size;
  Rect plotArea;  ///< of a plot its axes' box, of a surface the rectangle around it
  std::string title, description;  ///< for whoever cannot see the picture

  size_t count() const { return kinds_.size(); }
  Item operator[](size_t i) const;
  /// Coordinates of all items.
  size_t numCoordinates() const { return points_.size(); }

  /// Begins an item; the points that follow belong to it.
  void begin(Kind kind, Role role, const Paint& paint);
  void point(double x, double y) {
    points_.push_back(static_cast<float>(x));
    points_.push_back(static_cast<float>(y));
  }
  void point(Vec2 p) { point(p.x, p.y); }
  /// The next point begins a new piece of the path.
  void breakPath() { points_.insert(points_.end(), 2, std::numeric_limits<float>::quiet_NaN()); }

  void segment(Role role, const Paint& paint, Vec2 from, Vec2 to);
  void rectangle(Role role, const Paint& paint, const Rect& rect);
  void text(Role role, Vec2 at, Text text);
  void markers(Role role, const Paint& paint, MarkerShape shape) {
    begin(Kind::marker, role, paint);
    payloads_.back() = static_cast<uint32_t>(markers_.size());
    markers_.push_back(shape);
  }
  void clip(const Rect& rect);
  void restore() { begin(Kind::restore, {Role::Part::plotArea, 0}, {}); }
  /// Takes back the last item when no points came.
  void dropIfEmpty();

 private:
  std::vector<Kind> kinds_;
  std::vector<Role> roles_;
  std::vector<uint32_t> paintOf_, firstPoint_, payloads_;
  std::vector<Paint> paints_;
  std::vector<float> points_;
  std::vector<Text> texts_;
  std::vector<MarkerShape> markers_;
};

}  // namespace kelo::drawing
