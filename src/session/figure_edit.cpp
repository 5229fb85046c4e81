// What is not about axes is changed in the coded form of the model without its points, and read back by the decoder of
// figure files, which knows what each key takes.
#include "session/figure_edit.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "figures/coding/coded_form.h"
#include "session/method.h"

namespace kelo::session {
namespace {

using figures::Axis;
using figures::PlotData;
using figures::SurfData;

enum class Aspect { limits, autoLimits, ticks, autoTicks };
struct AxisKey {
  Axis axis;
  Aspect aspect;
};
using AxisKeys = std::map<std::string, AxisKey, std::less<>>;

const AxisKeys kPlotKeys = {
    {"xlims", {Axis::x, Aspect::limits}},         {"ylims", {Axis::y, Aspect::limits}},
    {"autoXLimits", {Axis::x, Aspect::autoLimits}}, {"autoYLimits", {Axis::y, Aspect::autoLimits}},
    {"xTickPositions", {Axis::x, Aspect::ticks}}, {"yTickPositions", {Axis::y, Aspect::ticks}},
    {"autoXTicks", {Axis::x, Aspect::autoTicks}}, {"autoYTicks", {Axis::y, Aspect::autoTicks}}};

const AxisKeys kSurfaceKeys = {
    {"xlims", {Axis::x, Aspect::limits}},         {"ylims", {Axis::y, Aspect::limits}},
    {"zlims", {Axis::z, Aspect::limits}},         {"autoXLims", {Axis::x, Aspect::autoLimits}},
    {"autoYLims", {Axis::y, Aspect::autoLimits}}, {"autoZLims", {Axis::z, Aspect::autoLimits}},
    {"xticks", {Axis::x, Aspect::ticks}},         {"yticks", {Axis::y, Aspect::ticks}},
    {"zticks", {Axis::z, Aspect::ticks}},         {"autoXTicks", {Axis::x, Aspect::autoTicks}},
    {"autoYTicks", {Axis::y, Aspect::autoTicks}}, {"autoZTicks", {Axis::z, Aspect::autoTicks}}};

Refusal wrongChange(const std::string& key, const std::string& expected) {
  return wrongParameter("changes/" + key, expected);
}

figures::Limits limitsOf(const std::string& key, const Json& value) {
  const auto has = [&](const char* name) { return value.is_object() && value.contains(name) && value[name].is_number(); };
  if (!has("lower") || !has("upper")) throw wrongChange(key, "limits {\"lower\", \"upper\"}");
  const figures::Limits limits{value["lower"].get<double>(), value["upper"].get<double>()};
  if (!std::isfinite(limits.lower) || !std::isfinite(limits.upper) || limits.lower >= limits.upper) {
    throw wrongChange(key, "limits whose lower one is below the upper one");
  }
  return limits;
}

std::vector<double> ticksOf(const std::string& key, const Json& value) {
  const auto isNumber = [](const Json& tick) { return tick.is_number() && std::isfinite(tick.get<double>()); };
  if (!value.is_array() || !std::all_of(value.begin(), value.end(), isNumber)) throw wrongChange(key, "a list of numbers");
  auto ticks = value.get<std::vector<double>>();
  if (!std::is_sorted(ticks.begin(), ticks.end())) throw wrongChange(key, "a list of numbers in rising order");
  return ticks;
}

bool flagOf(const std::string& key, const Json& value) {
  if (!value.is_boolean()) throw wrongChange(key, "true or false");
  return value.get<bool>();
}

template <class Model>
void changeAxis(Model& model, AxisKey what, const std::string& key, const Json& value) {
  switch (what.aspect) {
    case Aspect::limits: return model.setLimits(what.axis, limitsOf(key, value));
    case Aspect::autoLimits: return model.setAutoLimits(what.axis, flagOf(key, value));
    case Aspect::ticks: return model.setTicks(what.axis, ticksOf(key, value));
    case Aspect::autoTicks: return model.setAutoTicks(what.axis, flagOf(key, value));
  }
}

/// The optional keys, which the coded form leaves out while they have no value.
bool mayBeMissing(const std::string& name) {
  return name == "title" || name == "xLabel" || name == "yLabel" || name == "name";
}

/// Puts a value at a path; what stands there must be no record and no list of records.
void put(Json& model, const std::string& key, const Json& value) {
  Json* place = &model;
  for (size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1) {
    end = key.find('/', begin);
    const std::string name = key.substr(begin, end - begin);
    const bool isNumber = !name.empty() && name.size() < 10 && name.find_first_not_of("0123456789") == std::string::npos;
    if (place->is_array() && isNumber && std::stoul(name) < place->size()) {
      place = &(*place)[std::stoul(name)];
    } else if (place->is_object() && (place->contains(name) || (end == std::string::npos && mayBeMissing(name)))) {
      place = &(*place)[name];
    } else {
      throw wrongChange(key, "a key of the figure");
    }
  }
  const bool holdsPoints = key == "lines" || key == "surfaces" || key.ends_with("/points") || key.ends_with("/attributes") ||
                           key.starts_with("surfaces/");
  if (holdsPoints || place->is_object() != value.is_object()) throw wrongChange(key, "a single setting with its own kind of value");
  *place = value;
}

std::vector<figures::Line>& partsOf(PlotData& plot) { return plot.lines; }
std::vector<SurfData::Surface>& partsOf(SurfData& surface) { return surface.surfaces; }

PlotData decoded(const std::string& text, const PlotData&) { return figures::decodedPlot(text); }
SurfData decoded(const std::string& text, const SurfData&) { return figures::decodedSurface(text); }

void emptyPart(figures::Line& line) { line.points = {}; }
void emptyPart(SurfData::Surface& surface) { surface = {}; }

/// The changes that are not about axes, all in one go.
template <class Model>
Model withSettings(const Model& model, const AxisKeys& axisKeys, const Json& changes) {
  Model bare = model;
  for (auto& part : partsOf(bare)) emptyPart(part);
  Json coded = Json::parse(figures::codedForm(figures::Figure(bare), figures::NonFinite::refused));
  for (const auto& [key, value] : changes.items()) {
    if (!axisKeys.contains(key)) put(coded, key, value);
  }
  Model result = model;
  try {
    result = decoded(coded.dump(), model);
  } catch (const figures::CodingError& fault) {
    throw wrongParameter("changes", std::string("values that the keys take: ") + fault.what());
  }
  auto& parts = partsOf(result);
  const auto& before = partsOf(bare = model);
  for (size_t k = 0; k < before.size(); ++k) parts[k].points = before[k].points;
  if constexpr (std::is_same_v<Model, SurfData>) parts = before;
  return result;
}

template <class Model>
Model edited(const Model& model, const AxisKeys& axisKeys, const Json& changes) {
  Model result = withSettings(model, axisKeys, changes);
  for (const auto& [key, value] : changes.items()) {
    const auto axisKey = axisKeys.find(key);
    if (axisKey != axisKeys.end()) changeAxis(result, axisKey->second, key, value);
  }
  return result;
}

}  // namespace

figures::Figure editedFigure(const figures::Figure& figure, const Json& changes) {
  if (const auto* plot = std::get_if<PlotData>(&figure)) return edited(*plot, kPlotKeys, changes);
  if (const auto* surface = std::get_if<SurfData>(&figure)) return edited(*surface, kSurfaceKeys, changes);
  throw alert("There is no figure");
}

}  // namespace kelo::session
