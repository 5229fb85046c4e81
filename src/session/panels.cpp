#include "session/panels.h"

#include <algorithm>
#include <utility>

#include "builtins/library.h"
#include "editor/function_names.h"

namespace kelo::session {

const char* statusName(RunState::Status status) {
  constexpr const char* kNames[] = {"idle", "running", "paused", "waitInput"};
  return kNames[static_cast<int>(status)];
}

Panels::Panels(const Setup& given)
    : setup(given),
      store(given.host.store, given.host.synchronization),
      host{given.host.parserQueue, given.host.mainQueue, given.host.synchronization,
           given.host.files,       store,                given.host.clock},
      settings(AppSettings::read(store)),
      feed(host,
           {[this](const std::string& method, const Json& params) { notify(method, params); },
            [this](RunState::Status status) { runStateChanged(status); },
            [this](const RunResult& result) { runEnded(result); },
            [this] { return setup.isCongested && setup.isCongested(); }}),
      app(host, feed, builtins::library()),
      figureDocuments(setup.documents, host.clock, {KELO_VERSION, "", ""}, [](const std::string&) {}),
      files(setup.tree, store, setup.workDir),
      highlighter(readFunctionNames(setup.resources.readFile("functions.plist").value_or(""))),
      docFiles(setup.resources),
      docSearch(setup.resources) {
  app.figures.changed = [this] { figureChanged(); };
  applySettings();
}

/// Thread: any. Many changes in a row give one notification.
void Panels::figureChanged() {
  constexpr double kSecondsBetweenFrames = 1.0 / 60;
  if (!figureHasChanged_.exchange(true)) host.mainQueue.after(kSecondsBetweenFrames, [this] { tellOfFigure(); });
}

void Panels::tellOfFigure() {
  if (!figureHasChanged_.exchange(false)) return;
  constexpr const char* kKinds[] = {"none", "plot", "surface"};
  const size_t kind = app.figures.read([](const figures::Figure& figure) { return figure.index(); });
  notify("figure/changed", {{"kind", kKinds[kind]}, {"revision", app.figures.revision()}});
}

void Panels::notify(const std::string& method, const Json& params) const {
  setup.notify(notificationText(method, params));
}

const std::vector<Variable>& Panels::variables() {
  if (isIdle() && variablesAreStale_) {
    variables_ = variablesOf(app.environment.baseWorkspace, app.environment.displayParameters());
    variablesAreStale_ = false;
  }
  return variables_;
}

void Panels::startRun(const Answer& answer, const std::function<void()>& start) {
  if (!isIdle()) throw Refusal{kRunIsGoingOn, "A run is going on"};
  variables();
  runAnswer_ = answer;
  runBegan_ = host.clock.monotonicSeconds();
  start();
}

void Panels::runStateChanged(RunState::Status status) {
  notify("run/state", {{"status", statusName(status)}});
  if (inputHasEnded_) endOfInput();
}

void Panels::endOfInput() {
  inputHasEnded_ = true;
  if (const auto wait = app.control.wait(); wait && !wait->isTimed) app.pressStop();
}

void Panels::runEnded(const RunResult& result) {
  variablesAreStale_ = true;
  tellOfFigure();
  if (std::exchange(settingsAreStale_, false) && applySettings()) showItemsAnew();
  notify("workspace/changed", Json::object());
  const char* status = result.fatalFault ? "fault" : result.failed ? "failed" : "done";
  const double seconds = host.clock.monotonicSeconds() - runBegan_;
  if (const Answer answer = std::exchange(runAnswer_, nullptr)) answer({{"status", status}, {"seconds", seconds}});
}

void Panels::change(const Json& changes) {
  const AppSettings before = settings;
  settings.change(changes);
  settings.write(store, before);
  settingsAreStale_ = !isIdle();
  if (isIdle() && applySettings()) showItemsAnew();
}

void Panels::watch(const std::string& folder) {
  constexpr size_t kMostFolders = 16;
  if (setup.watcher == nullptr || std::find(watched_.begin(), watched_.end(), folder) != watched_.end()) return;
  if (!setup.watcher->watch(folder)) return;
  watched_.push_back(folder);
  if (watched_.size() <= kMostFolders) return;
  setup.watcher->unwatch(watched_.front());
  watched_.pop_front();
}

bool Panels::applySettings() {
  Environment::Settings& display = app.environment.settings;
  const bool isReformatted =
      display.numDigitIndex != settings.numDigitIndex || display.consoleCells != settings.consoleCells;
  display.showWarning = settings.showWarning;
  display.numDigitIndex = static_cast<int>(settings.numDigitIndex);
  display.consoleCells = static_cast<int>(settings.consoleCells);
  return isReformatted;
}

void Panels::showItemsAnew() {
  variablesAreStale_ = true;
  app.console.output.setParameters(app.environment.displayParameters());
  feed.flush();
  feed.reformat(app.console.output.items());
  notify("console/replaced", feed.items());
}

}  // namespace kelo::session
