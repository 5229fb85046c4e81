// scatter: one line of markers; sizes, colours and specification strings in any order.
// Tested by tests/transcripts/figures/scatter.txt.
#include <cmath>

#include "builtins/figures/handlers.h"
#include "builtins/figures/plot_arguments.h"
#include "builtins/figures/plot_data_lines.h"
#include "figures/attribute.h"
#include "messages/catalogue/plot_commands.h"
#include "messages/message.h"

namespace kelo::builtins {
namespace {

using figures::Marker;
using figures::PlotStyle;

Line markersOf(const PlotArguments& arguments) {
  for (int64_t i = 0; i < 2; ++i) {
    const bool isNumeric = arguments[i].isNumeric() && !arguments.isCharacters(i);
    if (!isNumeric) throw problem(text::invalidArgument(i + 1), text::kNumericValues);
  }
  const NumericArray &x = arguments.numbers(0), &y = arguments.numbers(1);
  const bool areVectors = x.size().isVector() && y.size().isVector();
  if (!areVectors || x.numElements() != y.numElements()) {
    throw problem(text::scatterSizes(1, 2), text::kScatterSizesExpected);
  }
  const DoubleArray xs = x.toDoubleArray(), ys = y.toDoubleArray();
  Line line;
  line.points = figures::Points::made(x.numElements(), [&](int64_t i) { return figures::Point{xs[i], ys[i]}; });
  line.attribute.type = PlotStyle::Scatter;
  line.attribute.lineStyle = Line::Style::hidden;
  line.attribute.markerStyle = Marker::Style::circle;
  return line;
}

/// NOTE: intended: three numbers are a size too, unless the first is none.
bool applySize(const Storable& value, Line& line) {
  if (value.isArray() && value.isEmpty()) return true;
  const NumericArray* array = value.numeric();
  if (!array || array->is(Kind::Char) || !array->has(Property::allReals)) return false;
  const double size = array->toDoubleArray()[0];
  if (!(size > 0) || std::isinf(size)) return false;
  line.attribute.markerSize = size;
  return true;
}

bool applyColor(const Storable& value, Line& line) {
  try {
    line.attribute.setColor(figures::colorValue(value));
    return true;
  } catch (const Problem&) {  // no colour: it may be something else
    return false;
  }
}

void apply(const PlotArguments& arguments, int64_t i, Line& line) {
  if (applySize(arguments[i], line) || applyColor(arguments[i], line)) return;
  if (!arguments.isCharacters(i)) throw expectation(text::kArgumentOfScatter);
  const std::string text = arguments.text(i);
  if (isFilled(text))
    fillMarkers({&line, 1});
  else if (!figures::parseLineSpec(text, {&line, 1}))
    throw expectation(text::kSpecOfScatter);
}

}  // namespace

NodeValue scatter(Call& call) {
  const PlotArguments arguments(call);
  std::vector<Line> lines = {markersOf(arguments)};
  colorInTurn(lines, heldLines(call));
  for (int64_t i = 2; i < arguments.attributes(); ++i) apply(arguments, i, lines.front());
  arguments.applyAttributesTo(lines);
  return show(call, std::move(lines));
}

}  // namespace kelo::builtins
