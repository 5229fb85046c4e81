// A change is read into the model as from a file; the rules of the setters are applied after it.
// Tested by tests/figures/interaction_test.cpp.
#include "figures/figure_edit.h"

#include <algorithm>

#include "figures/coding/editor.h"
#include "messages/catalogue/figures.h"
#include "messages/message.h"

namespace kelo::figures {
namespace {

/// The keys of an axis.
struct AxisKeys {
  Axis axis;
  std::string_view limits, autoLimits, ticks, autoTicks;
};

constexpr AxisKeys kPlotAxes[] = {
    {Axis::x, "xlims", "autoXLimits", "xTickPositions", "autoXTicks"},
    {Axis::y, "ylims", "autoYLimits", "yTickPositions", "autoYTicks"},
};
constexpr AxisKeys kSurfaceAxes[] = {
    {Axis::x, "xlims", "autoXLims", "xticks", "autoXTicks"},
    {Axis::y, "ylims", "autoYLims", "yticks", "autoYTicks"},
    {Axis::z, "zlims", "autoZLims", "zticks", "autoZTicks"},
};

/// The data of a figure, whose change moves automatic limits.
constexpr std::string_view kPlotLines = "lines";
constexpr std::string_view kSurfaces = "surfaces";

void fit(PlotData& plot) { plot.append({}); }
void fit(SurfData& surface) { surface.append({}); }

template <class Model>
void applyRules(Model& model, const AxisKeys& keys, std::string_view key) {
  const AxisState axis = model.axis(keys.axis);
  if (key == keys.limits) {
    if (!(axis.limits.lower < axis.limits.upper)) throw CodingError(text::kLimitsMustRise);
    model.axis(keys.axis).setLimits(axis.limits);
  } else if (key == keys.ticks) {
    std::sort(axis.ticks.begin(), axis.ticks.end());
    axis.autoTicks = false;
  } else if (key == keys.autoLimits) {
    model.setAutoLimits(keys.axis, axis.autoLimits);
  } else if (key == keys.autoTicks) {
    model.axis(keys.axis).setAutoTicks(axis.autoTicks);
  }
}

template <class Model>
void change(Model& model, std::span<const AxisKeys> axes, std::string_view data, const FigureChange& change) {
  Editor(change.key, change.value).edit(model);
  const std::string_view key = std::string_view(change.key).substr(0, change.key.find('/'));
  for (const AxisKeys& keys : axes) applyRules(model, keys, key);
  if (key == data) fit(model);
}

void apply(std::monostate, const FigureChange&) { throw CodingError(text::kNoFigure); }
void apply(PlotData& plot, const FigureChange& wanted) {
  change(plot, kPlotAxes, kPlotLines, wanted);
}
void apply(SurfData& surface, const FigureChange& wanted) {
  change(surface, kSurfaceAxes, kSurfaces, wanted);
}

}  // namespace

Figure edited(const Figure& figure, std::span<const FigureChange> changes) {
  Figure result = figure;
  for (const FigureChange& change : changes) {
    try {
      std::visit([&](auto& model) { apply(model, change); }, result);
    } catch (const CodingError& fault) {
      throw problem(change.key, fault.what());
    }
  }
  return result;
}

}  // namespace kelo::figures
