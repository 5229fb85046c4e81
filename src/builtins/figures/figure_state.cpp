// What is switched and named: hold, grid, legend, labels. Without a figure nothing happens.
// Tested by tests/transcripts/figures/state.txt.
#include "builtins/figures/handlers.h"
#include "builtins/text/char_rows.h"
#include "builtins/text/number_rows.h"
#include "figures/figure_panel.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "messages/catalogue/plot_commands.h"

namespace kelo::builtins {
namespace {

using figures::Figure;
using figures::PlotData;
using figures::SurfData;

constexpr Wording kOption{"option", "option", text::kOnOrOff};

// ---- hold, grid

bool* flagOf(Figure& figure, FigureFlag which) {
  if (auto* plot = std::get_if<PlotData>(&figure)) {
    return which == FigureFlag::hold ? &plot->shouldHold : &plot->shouldShowGrid;
  }
  if (auto* surface = std::get_if<SurfData>(&figure)) {
    return which == FigureFlag::hold ? &surface->hold : &surface->showGrid;
  }
  return nullptr;
}

// ---- legend

/// Changes the plot, if one is there.
template <class F>
NodeValue changePlot(Call& call, F&& change) {
  call.environment.figures.write([&](Figure& figure) {
    if (std::holds_alternative<SurfData>(figure)) throw expectation(text::kLegendOfSurface);
    if (auto* plot = std::get_if<PlotData>(&figure)) change(*plot);
  });
  return NodeValue::nothing();
}

NodeValue legendOption(Call& call) {
  enum { hide, off, show };
  const int option = read::option(call, 0, kOption, {"hide", "off", "show", "toggle"});
  return changePlot(call, [&](PlotData& plot) {
    plot.shouldShowLegend = option == show || (option > show && !plot.shouldShowLegend);
  });
}

std::vector<std::string> namesOf(const Call& call) {
  std::vector<std::string> names;
  for (const Storable& value : call.args) {
    const NumericArray* array = value.numeric();
    if (!array || !array->is(Kind::Char)) throw Wording::sentence(text::kLegendNames).complaint(call);
    names.push_back(toUtf8(array->asChar()));
  }
  return names;
}

// ---- Labels

/// The text of an argument; nothing of an empty array.
std::optional<std::string> labelText(const Call& call) {
  const NumericArray& array = read::numeric(call, 0, {"c", "c", text::kLabel});
  if (array.isEmpty()) return std::nullopt;
  const CharArray text = array.is(Kind::Char) ? array.asChar() : numbersAsText(array, call.environment.nDigits());
  return text.size().isMatrix() ? linesOf(text) : toUtf8(text);
}

void setLabel(PlotData& plot, Label which, std::optional<std::string> text) {
  switch (which) {
    case Label::x: plot.xLabel = std::move(text); break;
    case Label::y: plot.yLabel = std::move(text); break;
    case Label::z: break;
    case Label::title: plot.title = std::move(text); break;
  }
}

void setLabel(SurfData& surface, Label which, std::optional<std::string> text) {
  switch (which) {
    case Label::x: surface.xLabelText = text.value_or(""); break;
    case Label::y: surface.yLabelText = text.value_or(""); break;
    case Label::z: surface.zLabelText = text.value_or(""); break;
    case Label::title: surface.title = std::move(text); break;
  }
}

}  // namespace

NodeValue figureFlag(Call& call) {
  const int option = call.count() == 0 ? -1 : read::option(call, 0, kOption, {"on", "off"});
  call.environment.figures.write([&](Figure& figure) {
    bool* flag = flagOf(figure, call.selector<FigureFlag>());
    if (flag) *flag = option < 0 ? !*flag : option == 0;
  });
  return NodeValue::nothing();
}

NodeValue legend(Call& call) {
  if (call.count() == 0) {
    return changePlot(call, [](PlotData& plot) { plot.shouldShowLegend = !plot.shouldShowLegend; });
  }
  if (call.count() == 1) return legendOption(call);
  const std::vector<std::string> names = namesOf(call);
  return changePlot(call, [&](PlotData& plot) {
    if (names.size() > plot.lines.size()) {
      throw expectation(text::tooManyNames(static_cast<int64_t>(plot.lines.size())));
    }
    for (size_t k = 0; k < names.size(); ++k) plot.lines[k].attribute.name = names[k];
    plot.shouldShowLegend = true;
  });
}

NodeValue label(Call& call) {
  const std::optional<std::string> text = labelText(call);
  const auto which = call.selector<Label>();
  call.environment.figures.write([&](Figure& figure) {
    if (auto* plot = std::get_if<PlotData>(&figure)) setLabel(*plot, which, text);
    if (auto* surface = std::get_if<SurfData>(&figure)) setLabel(*surface, which, text);
  });
  return NodeValue::nothing();
}

}  // namespace kelo::builtins
