#include "session/method.h"

#include <algorithm>
#include <cmath>

namespace kelo::session {
namespace {

bool isChoice(const std::string& choices, const std::string& text) {
  return choices.empty() || ("|" + choices + "|").find("|" + text + "|") != std::string::npos;
}

bool isInteger(const Json& value, const Parameter& parameter) {
  if (!value.is_number_integer()) return false;
  if (value.is_number_unsigned() && value.get<uint64_t>() > static_cast<uint64_t>(INT64_MAX)) return false;
  return value.get<int64_t>() >= parameter.least && value.get<int64_t>() <= parameter.most;
}

bool fits(const Json& value, const Parameter& parameter) {
  switch (parameter.kind) {
    case Kind::text: return value.is_string() && isChoice(parameter.choices, value.get<std::string>());
    case Kind::texts:
      return value.is_array() && std::all_of(value.begin(), value.end(), [](const Json& v) { return v.is_string(); });
    case Kind::integer: return isInteger(value, parameter);
    case Kind::number: return value.is_number() && std::isfinite(value.get<double>());
    case Kind::truth: return value.is_boolean();
    case Kind::object: return value.is_object();
  }
  return false;
}

std::string choiceText(std::string choices) {
  for (size_t at = 0; (at = choices.find('|', at)) != std::string::npos; at += 4) choices.replace(at, 1, "\", \"");
  return "one of \"" + choices + "\"";
}

}  // namespace

std::string expectationOf(const Parameter& parameter) {
  switch (parameter.kind) {
    case Kind::text: return *parameter.choices == '\0' ? "a text" : choiceText(parameter.choices);
    case Kind::texts: return "a list of texts";
    case Kind::integer: break;
    case Kind::number: return "a number";
    case Kind::truth: return "true or false";
    case Kind::object: return "an object";
  }
  if (parameter.least == INT64_MIN) return "an integer";
  const std::string least = std::to_string(parameter.least);
  return parameter.most == INT64_MAX ? "an integer of at least " + least
                                     : "an integer from " + least + " to " + std::to_string(parameter.most);
}

Refusal wrongParameter(const std::string& name, const std::string& expected) {
  return {kWrongParameters, "Parameter \"" + name + "\" should be " + expected};
}

void checkParameters(const Method& method, const Json& params) {
  const auto named = [&](const std::string& name) {
    return std::find_if(method.parameters.begin(), method.parameters.end(), [&](auto& p) { return name == p.name; });
  };
  for (const auto& [name, value] : params.items()) {
    if (named(name) == method.parameters.end()) {
      throw Refusal{kWrongParameters, "Parameter \"" + name + "\" is unknown to " + method.name};
    }
  }
  for (const Parameter& parameter : method.parameters) {
    const auto value = params.find(parameter.name);
    if (value == params.end() && !parameter.isRequired) continue;
    if (value == params.end() || !fits(*value, parameter)) {
      throw wrongParameter(parameter.name, expectationOf(parameter));
    }
  }
}

}  // namespace kelo::session
