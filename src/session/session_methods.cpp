// session/open and the settings.
#include "session/methods.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

constexpr int kProtocol = 1;

std::optional<Json> open(const Call& call) {
  const Setup& setup = call.panels.setup;
  return Json{{"version", KELO_VERSION},
              {"protocol", kProtocol},
              {"workDir", setup.workDir},
              {"workDirDisplayText", setup.workDirDisplayText},
              {"settings", call.panels.settings.toJson()},
              {"runState", statusName(call.panels.app.control.status())}};
}

std::optional<Json> getSettings(const Call& call) { return call.panels.settings.toJson(); }

std::optional<Json> setSettings(const Call& call) {
  call.panels.change(call.params);
  return call.panels.settings.toJson();
}

}  // namespace

std::vector<Method> sessionMethods() {
  return {
      {"session/open", {}, open, "{version, protocol, workDir, workDirDisplayText, settings, runState}", "Begin"},
      {"settings/get", {}, getSettings, "{numDigitIndex, showWarning, sortedBy, consoleCells, docTextSize, docStyle}",
       "All settings"},
      {"settings/set",
       {{"numDigitIndex", Kind::integer, false, "", 0, 3},
        {"showWarning", Kind::truth, false},
        {"sortedBy", Kind::integer, false, "", 0, 7},
        {"consoleCells", Kind::integer, false, "", kLeastCells, kMostCells},
        {"docTextSize", Kind::integer, false, "", kLeastTextSize, kMostTextSize},
        {"docStyle", Kind::text, false, "auto|dark|light"}},
       setSettings, "as settings/get", "Change settings and keep them; the display's take effect between runs"},
  };
}

}  // namespace kelo::session
