// stem and stairs: one y, or one pair x, y. Complex numbers lose their imaginary parts.
// Tested by tests/transcripts/figures/stems.txt.
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

void style(std::span<Line> lines, Stems which) {
  for (Line& line : lines) {
    line.attribute.type = which == Stems::stem ? PlotStyle::Stem : PlotStyle::Stair;
    if (which == Stems::stem) line.attribute.markerStyle = Marker::Style::circle;
  }
}

bool applySpecification(const std::string& text, Stems which, std::span<Line> lines) {
  if (which == Stems::stairs || !isFilled(text)) return figures::parseLineSpec(text, lines);
  fillMarkers(lines);
  return true;
}

const char* specificationText(Stems which, bool startsWithY) {
  if (which == Stems::stem) return startsWithY ? text::kSpecOfStem : text::kSpecOfStemXY;
  return startsWithY ? text::kSpecOfStairs : text::kSpecOfStairsXY;
}

}  // namespace

NodeValue stems(Call& call) {
  const auto which = call.selector<Stems>();
  const PlotArguments arguments(call);
  const bool startsWithY = arguments.startWithY();
  std::vector<Line> lines = startsWithY ? linesOverPositions(arguments.numbers(0), 1)
                                        : linesOfPair(arguments.numbers(0), arguments.numbers(1));
  style(lines, which);
  colorInTurn(lines, heldLines(call));
  for (int64_t i = startsWithY ? 1 : 2; i < arguments.attributes(); ++i) {
    const bool parses = arguments.isCharacters(i) && applySpecification(arguments.text(i), which, lines);
    if (!parses) throw expectation(specificationText(which, startsWithY));
  }
  arguments.applyAttributesTo(lines);
  return show(call, std::move(lines));
}

}  // namespace kelo::builtins
