// The main thread's loop: one poll on the main queue, Ctrl-C and, while a run waits for it,
// standard input.
#include "shells/terminal/session.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "builtins/library.h"
#include "platform/native/machine.h"
#include "platform/native/native_code.h"

namespace kelo::terminal {
namespace {

bool isAbsolute(const char* path) { return path != nullptr && path[0] == '/'; }

/// "kelo" in the directory that the variable names, or else in one below the home directory. Empty,
/// so that nothing is kept, where there is no home.
std::string ownDirectory(const char* variable, const char* belowHome) {
  const char* directory = std::getenv(variable);
  if (isAbsolute(directory)) return std::string(directory) + "/kelo";
  const char* home = std::getenv("HOME");
  return isAbsolute(home) ? std::string(home) + belowHome + "/kelo" : "";
}

std::string stateDirectory(const Options& options) {
  return options.stateDir ? *options.stateDir : ownDirectory("XDG_STATE_HOME", "/.local/state");
}

std::string documentsDirectory(const Options& options) {
  if (options.documentsDir) return *options.documentsDir;
  const std::string own = options.stateDir ? *options.stateDir : ownDirectory("XDG_DATA_HOME", "/.local/share");
  return own.empty() ? "." : own;
}

void tell(const std::string& fault) { std::fprintf(stderr, "kelo: %s\n", fault.c_str()); }

figures::FigureOrigin figureOrigin() {
  const auto [name, version] = platform::native::systemVersion();
  return {KELO_VERSION, version, name};
}

}  // namespace

Session::Session(const Options& options, const std::string& workDir, ItemWriter::Style style)
    : store(stateDirectory(options), tell),
      files(workDir),
      documentFiles(documentsDirectory(options)),
      figureDocuments(documentFiles, clock, figureOrigin(), tell),
      writer(style, files),
      app({parserQueue, mainQueue, synchronization, files, store, clock}, writer, builtins::library()) {
  platform::native::adaptToMachine();
  if (options.noNative) platform::native::forbidNativeCode();
  platform::setParallelFor(&pool);
  if (options.numDigitIndex) app.environment.settings.numDigitIndex = *options.numDigitIndex;
  if (options.width) app.environment.settings.consoleCells = *options.width;
}

// The queue's thread is a member that goes last, so a run that is left behind is stopped here.
Session::~Session() {
  app.pressStop();
  mainQueue.serveWhileRunning(parserQueue, [] { platform::setParallelFor(nullptr); });
}

void Session::run(const std::function<void(AppController&)>& start, const Answerer& answer) {
  stopped_ = false;
  writer.beginRun();
  start(app);
  while (!writer.runHasEnded()) {
    waitForEvent();
    servePresses();
    mainQueue.runReady();
    serveInput(answer);
  }
  worst_ = std::max(worst_, lastStatus());
}

ExitStatus Session::lastStatus() const {
  const RunResult& result = writer.lastResult();
  if (result.fatalFault) return kFatalFault;
  return result.failed ? kCommandFailed : kAllRan;
}

/// A pause with a time limit takes no line of a pipe: there the lines are answers.
bool Session::listensTo(const std::optional<RunControl::Wait>& wait) {
  return wait && (!wait->isTimed || isatty(LineReader::kDescriptor));
}

bool Session::isAnswered(const RunControl::Wait& wait) const {
  return wait.status == RunState::Status::paused ? input.hasKey() : input.hasLine();
}

void Session::waitForEvent() {
  const std::optional<RunControl::Wait> wait = app.control.wait();
  const bool listens = listensTo(wait);
  pollfd events[] = {{mainQueue.wakeDescriptor(), POLLIN, 0},
                     {stopSignal.descriptor(), POLLIN, 0},
                     {LineReader::kDescriptor, POLLIN, 0}};
  // A timer that is due a little later is waited for to the next millisecond, not looked at again
  // and again.
  const std::optional<double> seconds = mainQueue.secondsToNextTimer();
  int milliseconds = seconds ? static_cast<int>(std::fmin(std::ceil(*seconds * 1000), 3600e3)) : -1;
  if (listens && isAnswered(*wait)) milliseconds = 0;
  const int ready = poll(events, listens ? 3 : 2, milliseconds);
  if (ready > 0 && listens && events[2].revents != 0 && !isAnswered(*wait)) input.fill();
}

void Session::servePresses() {
  const int presses = stopSignal.take();
  if (presses == 0) return;
  const double now = clock.monotonicSeconds();
  const bool isSecond = presses > 1 || (stopped_ && now - lastPress_ < 1);
  if (isSecond && endsAtSecondPress_) std::_Exit(kInterrupted);
  lastPress_ = now;
  stopped_ = true;
  if (isatty(STDERR_FILENO)) std::fputs("\n", stderr);  // after the echo of the key
  app.pressStop();
}

void Session::serveInput(const Answerer& answer) {
  const std::optional<RunControl::Wait> wait = app.control.wait();
  if (!listensTo(wait)) return;
  if (wait->number != lastWait_ && wait->status == RunState::Status::paused) input.keepTypedAhead();
  lastWait_ = wait->number;
  const bool asks = answer && wait->status == RunState::Status::waitInput;
  if (!asks && !isAnswered(*wait)) return;
  if (this->answer(*wait, answer)) return app.pressRun();
  if (!asks) std::fputs("kelo: the run waits for standard input, which has ended\n", stderr);
  stopped_ = true;
  app.pressStop();
}

/// Takes what answers the wait; false when there is nothing any more.
bool Session::answer(const RunControl::Wait& wait, const Answerer& answer) {
  if (wait.status == RunState::Status::paused) return input.takeKey();
  std::optional<std::string> line = answer ? answer() : input.nextLine();
  if (line) app.console.input.text = std::move(line);
  return app.console.input.text.has_value();
}

}  // namespace kelo::terminal
