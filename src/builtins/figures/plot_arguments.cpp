#include "builtins/figures/plot_arguments.h"

#include <algorithm>

#include "figures/attribute.h"
#include "figures/figure_panel.h"
#include "interpreter/environment.h"
#include "messages/catalogue/plot_commands.h"
#include "messages/message.h"

namespace kelo::builtins {
namespace {

std::string lowered(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

}  // namespace

PlotArguments::PlotArguments(const Call& call) : all_(call.args) {
  attributes_ = std::find_if(all_.begin(), all_.end(), figures::attribute::isName) - all_.begin();
}

bool PlotArguments::isCharacters(int64_t i) const {
  const NumericArray* array = (*this)[i].numeric();
  return array && array->is(Kind::Char);
}

std::string PlotArguments::text(int64_t i) const { return toUtf8(numbers(i).asChar()); }

bool PlotArguments::startWithY() const {
  const auto expected = [](int64_t i) { return i == 0 ? text::kNonCharacterArray : text::kNumericOrCharacterArray; };
  for (int64_t i = 0; i < count(); ++i) {
    if (!(*this)[i].isNumeric()) throw problem(text::invalidArgument(i + 1), expected(i));
  }
  if (isCharacters(0)) throw problem(text::invalidArgument(1), expected(0));
  return count() == 1 || isCharacters(1);
}

void PlotArguments::applyAttributesTo(std::span<Line> lines) const {
  figures::applyAttributes(all_, static_cast<size_t>(attributes_), lines);
}

bool isFilled(const std::string& text) { return lowered(text) == "filled"; }

void fillMarkers(std::span<Line> lines) {
  for (Line& line : lines) {
    Line::Attributes& own = line.attribute;
    own.markerFaceColor =
        own.lineColor.isClear() && !own.markerEdgeColor.isClear() ? own.markerEdgeColor : own.lineColor;
  }
}

int64_t heldLines(const Call& call) {
  return call.environment.figures.read([](const figures::Figure& figure) {
    const auto* plot = std::get_if<figures::PlotData>(&figure);
    return plot && plot->shouldHold ? static_cast<int64_t>(plot->lines.size()) : 0;
  });
}

NodeValue show(Call& call, std::vector<Line> lines) {
  figures::PlotData plot(std::move(lines));
  call.environment.runOnMain([&] { call.environment.figures.plotDataShow(std::move(plot)); });
  return NodeValue::nothing();
}

}  // namespace kelo::builtins
