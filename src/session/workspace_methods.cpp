// The variables. While a run is going on the list is that of before it, and values cannot be shown.
#include <algorithm>

#include "display/display.h"
#include "session/methods.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

std::optional<Json> list(const Call& call) {
  Json list = Json::array();
  for (const Variable& variable : call.panels.variables()) list.push_back(variable.toJson());
  return Json{{"variables", std::move(list)}};
}

std::optional<Json> show(const Call& call) {
  if (!call.panels.isIdle()) throw Refusal{kRunIsGoingOn, "A run is going on"};
  const std::string name = call.text("name");
  const Environment& environment = call.panels.app.environment;
  const std::vector<Variable>& variables = call.panels.variables();
  const auto isMeant = [&](const Variable& variable) { return variable.name == name; };
  if (std::none_of(variables.begin(), variables.end(), isMeant)) throw wrongParameter("name", "the name of a variable");
  const Storable* value = call.panels.app.environment.baseWorkspace.find(Name::intern(name));
  return Json{{"text", Display(*value, name, environment.displayParameters()).displayText()}};
}

}  // namespace

std::vector<Method> workspaceMethods() {
  return {
      {"workspace/list", {}, list, "{variables: [{name, class, size, bytes, preview}]}", "The variables, by name"},
      {"workspace/show", {{"name", Kind::text}}, show, "{text}", "A variable as the console shows it"},
  };
}

}  // namespace kelo::session
