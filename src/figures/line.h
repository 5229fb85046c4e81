// A line of a plot: its points and how they are drawn. Enumerations are stored in files by their
// ordinals.
#pragma once

#include <optional>
#include <string>

#include "figures/color.h"
#include "figures/shared_points.h"

namespace kelo::figures {

/// In data units; either may be NaN or infinite: limits and drawing skip such a point, and it
/// breaks the line.
struct Point {
  double x, y;
  friend bool operator==(const Point&, const Point&) = default;
};
using Points = SharedPoints<Point>;

enum class PlotStyle : uint8_t { Line, Scatter, Stair, Stem };

/// A marker as it is drawn.
struct Marker {
  enum class Style : uint8_t {
    square, plus, downTriangle, upTriangle, rightTriangle, leftTriangle, asterisk, fivePointedStar, sixPointedStar,
    cross, diamond, circle, point, none,
  };
  Style style;
  Color edgeColor;
  Color faceColor;
  double size;
};

struct Line {
  /// `hidden` draws markers only; no command gives `undefined`.
  enum class Style : uint8_t { solid, dashed, dot, dotDashed, hidden, undefined };

  struct Attributes {
    Style lineStyle = Style::solid;
    Color lineColor = ColorRole::systemBlue;
    double lineWidth = 1;
    Marker::Style markerStyle = Marker::Style::none;
    Color markerEdgeColor = ColorRole::systemBlue;
    Color markerFaceColor = ColorRole::clear;
    double markerSize = 1;
    std::optional<std::string> name;  ///< in the legend
    bool shownInLegend = true;
    PlotStyle type = PlotStyle::Line;

    /// The colour of line and marker edge, and of marker faces unless they are clear.
    void setColor(const Color& color) {
      lineColor = markerEdgeColor = color;
      if (!markerFaceColor.isClear()) markerFaceColor = color;
    }
    Marker marker() const { return {markerStyle, markerEdgeColor, markerFaceColor, markerSize}; }
    friend bool operator==(const Attributes&, const Attributes&) = default;
  };

  Attributes attribute;
  Points points;  ///< in the order given by the user

  friend bool operator==(const Line&, const Line&) = default;
};

}  // namespace kelo::figures
