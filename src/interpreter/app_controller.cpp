// The buttons, the run state, and the sleep of `input` and `pause`.
//
// A wake posts the state `running` before it signals, and the stop button sets its request before it signals: the run
// that wakes then posts its next state behind this one, and finds the request. A run that goes to sleep stores the
// semaphore first and looks at the request afterwards, so a press between the two is not lost.
#include "interpreter/app_controller.h"

#include <mutex>

#include "interpreter/run_block.h"

namespace kelo {
namespace {

constexpr int kDigits[] = {5, 8, 12, 16};

}  // namespace

AppController::AppController(platform::Host host, ConsoleView& view, const BuiltinTable& builtins)
    : host(host),
      builtins(builtins),
      console(view, host.store),
      parserQueue(host.parserQueue),
      files(host.files),
      clock(host.clock),
      lock_(host.synchronization.makeLock()) {
  settings.showWarning = host.store.read<bool>("showWarning").value_or(true);
  const int64_t index = host.store.read<int64_t>("numDigitsIndex").value_or(0);
  settings.numDigitIndex = index >= 0 && index < 4 ? static_cast<int>(index) : 0;
  randState.load(host.store);
  console.history.load();
}

// ---- Output

void AppController::show(const Message& message) {
  const bool isWarning = message.type == Message::MsgType::warning;
  if (isWarning && !settings.showWarning) return;
  ++messagesShown_;
  if (!isWarning) ++errorsShown_;
  console.output.append(Display(message, displayParameters()));
}

int AppController::nDigits() const { return kDigits[settings.numDigitIndex]; }

Display::Parameters AppController::displayParameters() const {
  Display::Parameters parameters;
  parameters.consoleViewWidth = settings.consoleCells * CellMeasure::kPointsPerCell;
  parameters.nDigits = nDigits();
  return parameters;
}

ParserSetting AppController::parserSetting() {
  return {parserBuffer, files, [this](const Message& message) { show(message); }};
}

// ---- Sleep and wake

std::optional<std::string> AppController::readInput(const std::string& prompt) {
  console.output.appendPrompt(Display::disp(prompt, displayParameters()));
  sleep(RunState::Status::waitInput, std::nullopt);
  if (shouldExitExecution) return std::nullopt;
  return std::exchange(console.input.text, std::nullopt).value_or("");
}

void AppController::pauseFor(std::optional<double> seconds) {
  if (allowPause == AllowingPause::on) sleep(RunState::Status::paused, seconds);
}

void AppController::sleep(RunState::Status status, std::optional<double> seconds) {
  const SemaphoreRef semaphore = host.synchronization.makeSemaphore();
  storeSemaphore(semaphore);
  setRunState(status);
  if (seconds) {
    host.mainQueue.after(*seconds, [this, semaphore] { timerFired(semaphore); });
  }
  if (shouldExitExecution) {
    takeSemaphore();
    return;
  }
  semaphore->wait();
}

/// A timer that outlived its pause, because the user woke the run first, wakes no other.
void AppController::timerFired(const SemaphoreRef& own) {
  if (allowPause == AllowingPause::off) return;
  {
    const std::lock_guard<platform::Lock> guard(*lock_);
    if (semaphore_ != own) return;
  }
  wakeRun();
}

void AppController::wakeRun() {
  const SemaphoreRef semaphore = takeSemaphore();
  if (!semaphore) return;
  setRunState(RunState::Status::running);
  semaphore->signal();
}

AppController::SemaphoreRef AppController::takeSemaphore() {
  const std::lock_guard<platform::Lock> guard(*lock_);
  return std::exchange(semaphore_, nullptr);
}

void AppController::storeSemaphore(SemaphoreRef semaphore) {
  const std::lock_guard<platform::Lock> guard(*lock_);
  semaphore_ = std::move(semaphore);
}

void AppController::setRunState(RunState::Status status) {
  host.mainQueue.async([this, status] {
    console.runState.status = status;
    console.output.view().runStateChanged(status);
  });
}

// ---- Buttons

void AppController::pressRun() {
  switch (console.runState.status) {
    case RunState::Status::idle: {
      const std::optional<std::string> text = std::exchange(console.input.text, std::nullopt);
      if (!text) return;
      console.history.add(*text);
      runInDir = panelDir;
      console.output.append(Display::inputText(*text, displayParameters()));
      startCommand(*text);
      return;
    }
    case RunState::Status::running: return;
    case RunState::Status::paused:
      if (allowPause == AllowingPause::on) wakeRun();
      return;
    case RunState::Status::waitInput:
      if (console.input.text) console.history.add(*console.input.text);
      wakeRun();
      return;
  }
}

void AppController::pressRunFile(const std::string& directory, const std::string& fileName) {
  if (console.runState.status == RunState::Status::idle) startFile(directory, fileName);
}

void AppController::pressStop() {
  shouldExitExecution = true;
  if (const SemaphoreRef semaphore = takeSemaphore()) semaphore->signal();
}

void AppController::startCommand(const std::string& text) {
  parserQueue.async([this, text] { runCommand(*this, text); });
}

void AppController::startFile(const std::string& directory, const std::string& fileName) {
  parserQueue.async([this, directory, fileName] { runFile(*this, directory, fileName); });
}

}  // namespace kelo
