#include "figures/drawing/sheet.h"

#include "figures/drawing/dejavu_measure.h"

namespace kelo::drawing {
namespace {

/// Grows slower than the smaller side, so that a thumbnail stays readable and a poster is no page
/// of tiny print.
double fontSizeFor(const Size& size) {
  const double side = std::fmin(size.height, size.width * 0.8);
  return std::fmin(std::fmax(12 * std::pow(std::fmax(side, 1) / 480, 0.65), 8.5), 36);
}

}  // namespace

Sheet::Sheet(const DrawingOptions& options)
    : options(options),
      theme(*options.theme),
      measure(options.measure != nullptr ? *options.measure : DejavuMeasure::shared()),
      em(options.fontSize > 0 ? options.fontSize : fontSizeFor(options.size)),
      unit(em / 12) {
  list.size = options.size;
  list.rectangle({Part::background}, fill(theme.background), {0, 0, options.size.width, options.size.height});
}

Dash dashOf(figures::Line::Style style, double width) {
  const auto w = static_cast<float>(width);
  switch (style) {
    case figures::Line::Style::dashed: return {2, {5 * w, 3 * w}};
    case figures::Line::Style::dot: return {2, {1.2f * w, 2 * w}};
    case figures::Line::Style::dotDashed: return {4, {5 * w, 2.2f * w, 1.2f * w, 2.2f * w}};
    default: return {};
  }
}

std::string powerText(int power) {
  static constexpr const char* kRaised[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
  if (power == 0) return "";
  std::string text = "×10";
  for (const char c : std::to_string(power)) text += c == '-' ? "⁻" : kRaised[c - '0'];
  return text;
}

}  // namespace kelo::drawing
