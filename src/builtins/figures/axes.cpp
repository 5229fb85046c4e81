// Limits and ticks of the axes: asked for, set, or left to the data. Both have the same forms; they
// differ in what they take as values and in what they say where there is no such axis. Tested by
// tests/transcripts/figures/axes.txt.
#include <algorithm>
#include <cmath>

#include "builtins/figures/handlers.h"
#include "figures/figure_panel.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "messages/catalogue/plot_commands.h"

namespace kelo::builtins {
namespace {

using figures::Axis;
using figures::AxisReading;
using figures::Figure;
using figures::PlotData;
using figures::SurfData;

struct Request {
  enum class Form { query, mode, automatic, manual, values };
  Form form = Form::query;
  std::vector<double> values;

  bool isQuestion() const { return form == Form::query || form == Form::mode; }
};
using Form = Request::Form;

// ---- Reading of arguments

/// The form of a word; the case counts.
std::optional<Form> formNamed(const Storable& value) {
  if (!read::isText(value)) return std::nullopt;
  const std::string word = toUtf8(value.numeric()->asChar());
  if (word == "auto") return Form::automatic;
  if (word == "manual") return Form::manual;
  if (word == "mode") return Form::mode;
  return std::nullopt;
}

bool isCharacters(const Storable& value) { return value.isNumeric() && value.numeric()->is(Kind::Char); }

std::vector<double> listOf(const NumericArray& array) {
  const DoubleArray numbers = array.toDoubleArray();
  return {numbers.data(), numbers.data() + numbers.numElements()};
}

bool areFinite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

Request limitsRequest(const Call& call) {
  if (call.count() == 0) return {};
  const Storable& value = call.args[0];
  if (const auto form = formNamed(value)) return {*form, {}};
  const auto refuse = [&](const char* text) { return Wording::sentence(text).complaint(call); };
  if (isCharacters(value)) throw refuse(text::kLimitsWord);
  if (!value.isNumeric()) throw refuse(text::kLimitsKind);
  if (!value.numeric()->has(Property::allReals)) throw refuse(text::kLimitsReal);
  std::vector<double> limits = listOf(*value.numeric());
  if (limits.size() != 2 || !areFinite(limits)) throw refuse(text::kLimitsFinite);
  if (!(limits[0] < limits[1])) throw refuse(text::kLimitsOrder);
  return {Form::values, std::move(limits)};
}

Request ticksRequest(const Call& call) {
  if (call.count() == 0) return {};
  const Storable& value = call.args[0];
  if (const auto form = formNamed(value)) return {*form, {}};
  if (isCharacters(value)) throw problem(text::invalidArgument(1), text::kTicksWord);
  if (!value.isNumeric()) throw problem(text::invalidArgument(1), text::kTicksKind);
  const NumericArray& array = *value.numeric();
  std::vector<double> ticks = listOf(array);
  const bool isVector = array.size().isVector() || array.isEmpty();
  if (!isVector || !array.has(Property::allReals) || !areFinite(ticks)) {
    throw Wording{"ticks", "ticks", text::kTicksFinite}.complaint(call);
  }
  std::sort(ticks.begin(), ticks.end());
  return {Form::values, std::move(ticks)};
}

// ---- The axis

/// Calls f with the model that has such an axis. False: there is none.
template <class Figure, class F>
bool withAxis(Figure& figure, Axis axis, F&& f) {
  if (auto* plot = axis == Axis::z ? nullptr : std::get_if<PlotData>(&figure)) {
    f(*plot);
    return true;
  }
  if (auto* surface = std::get_if<SurfData>(&figure)) {
    f(*surface);
    return true;
  }
  return false;
}

/// What a question is answered from.
struct Answer {
  std::vector<double> values;
  bool isAuto = false;

  NodeValue value(const Request& request) const {
    if (request.form == Form::mode) return charRow(isAuto ? "auto" : "manual");
    return DoubleArray::row(values);
  }
};

/// Nothing: there is no such axis.
template <class Read>
std::optional<Answer> answerOf(const Call& call, Read&& read) {
  std::optional<Answer> answer;
  const auto axis = call.selector<Axis>();
  call.environment.figures.read([&](const Figure& figure) {
    return withAxis(figure, axis, [&](const auto& model) { answer = read(model.axis(axis)); });
  });
  return answer;
}

template <class Change>
bool changeAxis(const Call& call, Change&& change) {
  bool hasAxis = false;
  const auto axis = call.selector<Axis>();
  call.environment.figures.write([&](Figure& figure) {
    hasAxis = withAxis(figure, axis, [&](auto& model) { change(model, axis); });
  });
  return hasAxis;
}

NodeValue warned(const Call& call, const std::string& sentence) {
  call.warn(call.selector<Axis>() == Axis::z ? text::kNoSurface : sentence);
  return NodeValue::nothing();
}

}  // namespace

NodeValue axisLimits(Call& call) {
  const Request request = limitsRequest(call);
  if (request.isQuestion()) {
    const auto answer = answerOf(call, [](const AxisReading& axis) {
      return Answer{{axis.limits.lower, axis.limits.upper}, axis.autoLimits};
    });
    return answer ? answer->value(request) : warned(call, text::kNoPlot);
  }
  changeAxis(call, [&](auto& model, Axis axis) {
    if (request.form == Form::values)
      model.axis(axis).setLimits({request.values[0], request.values[1]});
    else
      model.setAutoLimits(axis, request.form == Form::automatic);
  });
  return NodeValue::nothing();
}

NodeValue axisTicks(Call& call) {
  const Request request = ticksRequest(call);
  const std::string withoutPlot = text::ticksWithoutPlot(call.name());
  if (request.isQuestion()) {
    const auto answer = answerOf(call, [](const AxisReading& axis) { return Answer{axis.ticks, axis.autoTicks}; });
    return answer ? answer->value(request) : warned(call, withoutPlot);
  }
  const bool hasAxis = changeAxis(call, [&](auto& model, Axis axis) {
    if (request.form == Form::values)
      model.axis(axis).setTicks(request.values);
    else
      model.axis(axis).setAutoTicks(request.form == Form::automatic);
  });
  return hasAxis ? NodeValue::nothing() : warned(call, withoutPlot);
}

}  // namespace kelo::builtins
