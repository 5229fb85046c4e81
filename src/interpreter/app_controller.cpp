#include "interpreter/app_controller.h"

#include <utility>

#include "interpreter/run_block.h"

namespace kelo {

AppController::AppController(const platform::Host& host, ConsoleView& view, const BuiltinTable& builtins)
    : console(view, host.store),
      control(host, console),
      figures(host.synchronization),
      environment(host, console, control, figures, builtins),
      store_(host.store),
      parserQueue_(host.parserQueue),
      mainQueue_(host.mainQueue) {
  console.history.load();
}

void AppController::pressRun() {
  switch (control.status()) {
    case RunState::Status::idle: {
      const std::optional<std::string> text = std::exchange(console.input.text, std::nullopt);
      if (!text) return;
      console.history.add(*text);
      store_.save();  // a run that never ends keeps its text too
      environment.runInDir = panelDir;
      environment.show(Display::inputText(*text, environment.displayParameters()));
      startCommand(*text);
      return;
    }
    case RunState::Status::running: return;
    case RunState::Status::paused:
      if (control.allowPause == AllowingPause::on) control.wake();
      return;
    case RunState::Status::waitInput:
      if (console.input.text) console.history.add(*console.input.text);
      control.wake();
      return;
  }
}

void AppController::pressRunFile(const std::string& directory, const std::string& fileName) {
  if (control.status() == RunState::Status::idle) startFile(directory, fileName);
}

void AppController::startCommand(const std::string& text) {
  start([this, text] { return runCommand(environment, text); });
}

void AppController::startFile(const std::string& directory, const std::string& fileName) {
  start([this, directory, fileName] { return runFile(environment, directory, fileName); });
}

void AppController::start(std::function<RunResult()> run) {
  control.begin();
  parserQueue_.async([this, run = std::move(run)] {
    const RunResult result = run();
    mainQueue_.async([this, result] { control.end(result); });
  });
}

}  // namespace kelo
