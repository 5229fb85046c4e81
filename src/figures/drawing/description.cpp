#include "figures/drawing/description.h"

#include <fmt/format.h>

#include "figures/drawing/text_fit.h"

namespace kelo::drawing {
namespace {

constexpr const char* kStyles[] = {"line", "scatter", "stair", "stem"};

std::string counted(int64_t count, const std::string& noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string range(const char* axis, const std::string& label, const figures::Limits& limits) {
  const std::string name = cleanLine(label);
  const std::string named = name.empty() ? "" : fmt::format(" ({})", name);
  return fmt::format("{}{} from {:.6g} to {:.6g}", axis, named, limits.lower, limits.upper);
}

}  // namespace

void describe(const figures::PlotData& plot, DisplayList& list) {
  list.title = plot.title ? cleanLine(*plot.title) : "";
  if (list.title.empty()) list.title = "Plot";
  const std::string style = plot.lines.empty() ? "line" : kStyles[static_cast<size_t>(plot.lines[0].attribute.type)];
  const std::string noun = style == "line" ? style : style + " plot";
  list.description = fmt::format("{}; {}, {}.", counted(static_cast<int64_t>(plot.lines.size()), noun),
                                 range("x", plot.xLabel.value_or(""), plot.xlims),
                                 range("y", plot.yLabel.value_or(""), plot.ylims));
}

void describe(const figures::SurfData& surface, DisplayList& list) {
  list.title = surface.title ? cleanLine(*surface.title) : "";
  if (list.title.empty()) list.title = "Surface";
  list.description = fmt::format("{}; {}, {}, {}.", counted(static_cast<int64_t>(surface.surfaces.size()), "surface"),
                                 range("x", surface.xLabelText, surface.xlims),
                                 range("y", surface.yLabelText, surface.ylims),
                                 range("z", surface.zLabelText, surface.zlims));
}

}  // namespace kelo::drawing
