#include "session/methods.h"

#include <algorithm>

namespace kelo::session {

const std::vector<Method>& methods() {
  static const auto* const all = [] {
    auto* joined = new std::vector<Method>;
    for (const auto group : {sessionMethods, consoleMethods, workspaceMethods, editorMethods, keyboardMethods,
                             filesMethods, figureMethods, docsMethods}) {
      const std::vector<Method> rows = group();
      joined->insert(joined->end(), rows.begin(), rows.end());
    }
    return joined;
  }();
  return *all;
}

const Method* findMethod(std::string_view name) {
  const auto found = std::find_if(methods().begin(), methods().end(), [&](const Method& m) { return name == m.name; });
  return found == methods().end() ? nullptr : &*found;
}

std::string methodReference() {
  std::string text = "| Method | Params | Result | |\n|---|---|---|---|\n";
  for (const Method& method : methods()) {
    std::string parameters;
    for (const Parameter& parameter : method.parameters) {
      if (!parameters.empty()) parameters += "; ";
      parameters +=
          "`" + std::string(parameter.name) + "`" + (parameter.isRequired ? "" : "?") + ": " + expectationOf(parameter);
    }
    text +=
        "| `" + std::string(method.name) + "` | " + parameters + " | `" + method.result + "` | " + method.help + " |\n";
  }
  return text;
}

}  // namespace kelo::session
