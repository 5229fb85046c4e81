// What every part of a drawing needs: the list it adds to, the theme, the measure of text, and the
// unit that widths, gaps and fonts grow with.
#pragma once

#include <cmath>
#include <string>
#include <utility>

#include "figures/drawing/display_list.h"
#include "figures/drawing/theme.h"
#include "figures/tick_labels.h"
#include "platform/font_measure.h"
#include "platform/text_measure.h"

namespace kelo::drawing {

using Part = Role::Part;

/// How a figure is drawn.
struct DrawingOptions {
  Size size;
  const Theme* theme = &Theme::light();
  const platform::FontMeasure* measure = nullptr;  ///< null: that of DejaVu Sans
  /// Device pixels per point of the finest screen that is to show the list; long lines are reduced
  /// to what such pixels can tell apart.
  double pixelsPerPoint = 2;
  /// False: every point of a line goes into the list.
  bool reducesLines = true;
  /// Points per letter height instead of the one that follows from the size, for a screen of
  /// character cells.
  double fontSize = 0;
};

class Sheet {
 public:
  explicit Sheet(const DrawingOptions& options);

  DisplayList list;
  const DrawingOptions& options;
  const Theme& theme;
  const platform::FontMeasure& measure;
  double em;    ///< size of the font of labels
  double unit;  ///< em / 12: a length that is right for a picture of 640 x 480

  double tickSize() const { return options.fontSize > 0 ? em : 0.92 * em; }
  double titleSize() const { return options.fontSize > 0 ? em : 1.25 * em; }
  double tickLength() const { return options.fontSize > 0 ? 0 : 4.5 * unit; }

  Paint stroke(Rgba color, double width) const { return {color, {}, static_cast<float>(width * unit), {}}; }
  static Paint fill(Rgba color) { return {{}, color, 0, {}}; }
  /// Adds a text; `at` is its baseline's anchor.
  void text(Role role, Vec2 at, std::string text, double size, Anchor anchor, Rgba color, double angle = 0) {
    list.text(role, at, {std::move(text), size, anchor, angle, color});
  }
};

/// The width of text of one size, for what measures labels.
class SizedMeasure : public platform::TextMeasure {
 public:
  SizedMeasure(const platform::FontMeasure& measure, double size) : measure_(measure), size_(size) {}
  double width(std::string_view utf8) const override { return measure_.width(utf8, size_); }

 private:
  const platform::FontMeasure& measure_;
  double size_;
};

/// Few digits, so that the eye finds its way.
inline constexpr auto kDigits = figures::LabelMeasure::Digits::needed;

/// The dashes of a style for a line so wide.
Dash dashOf(figures::Line::Style style, double width);

/// "×10³"; empty for 0.
std::string powerText(int power);

}  // namespace kelo::drawing
