// The object that ties the interpreter to its user: it owns the state of the run, the request to stop it, what a run
// sleeps on, the console, the workspaces and the trees of the run. Whoever needs it is given it by reference; there is
// no global one.
//
// Two threads: the main thread presses buttons; the serial parser queue parses, evaluates and reads files. What both
// touch is the request to stop (atomic), the permission to pause (atomic) and the semaphore (under one lock, which is
// never held while waiting). Everything else belongs to the queue, or to the main thread while no run is going on.
#pragma once

#include <atomic>
#include <optional>
#include <string>

#include "frontend/matlab_parser.h"
#include "interpreter/console.h"
#include "interpreter/random_state.h"
#include "messages/message.h"
#include "platform/host.h"
#include "values/workspace.h"

namespace kelo {

class BuiltinTable;

class AppController {
 public:
  enum class AllowingPause { on, off };

  /// What the user can set.
  struct Settings {
    bool showWarning = true;
    int numDigitIndex = 0;  ///< into the list 5, 8, 12, 16
    int consoleCells = 80;  ///< the console's width in character cells
  };

  /// Reads the stored settings and the state of the random numbers. REQUIRES: what is given outlives this.
  AppController(platform::Host host, ConsoleView& view, const BuiltinTable& builtins);

  // ---- For the evaluator and the built-ins. Thread: the parser queue.

  /// Shows an error or a warning; a warning only if the user wants them. Remembers that an error occurred in this run.
  void show(const Message& message);
  /// Shows a value or a text.
  void show(Display display) { console.output.append(std::move(display)); }
  /// How values are to be shown at present: console width, digits.
  Display::Parameters displayParameters() const;
  int nDigits() const;

  /// True once after the stop button: the request is taken away by asking.
  bool takeStopRequest() {
    return shouldExitExecution.load(std::memory_order_relaxed) && shouldExitExecution.exchange(false);
  }

  /// `input`: shows the prompt and sleeps until a line comes. Nothing when the run is being stopped: return
  /// `failure` and let the statement loop report it.
  std::optional<std::string> readInput(const std::string& prompt);
  /// `pause`: sleeps until the run button, or until `seconds` have passed. Returns at once when pausing is off.
  void pauseFor(std::optional<double> seconds);

  /// The errors shown since the run began, and all messages, warnings included.
  int64_t errorsShown() const { return errorsShown_; }
  int64_t messagesShown() const { return messagesShown_; }

  // ---- For a shell. Thread: main.

  /// The run button of the console.
  void pressRun();
  /// The run button of the editor: runs a file, unless something is running. `directory` is relative to the work
  /// directory.
  void pressRunFile(const std::string& directory, const std::string& fileName);
  /// The stop button, of either.
  void pressStop();
  /// Runs a text or a file without input field, history and echo.
  void startCommand(const std::string& text);
  void startFile(const std::string& directory, const std::string& fileName);

  // ---- For the run block.

  /// Thread: any.
  void setRunState(RunState::Status status);
  void beginCount() { errorsShown_ = messagesShown_ = 0; }

  /// What parsers of this run work with.
  ParserSetting parserSetting();

  platform::Host host;
  const BuiltinTable& builtins;
  Settings settings;
  RandState randState;
  std::atomic<AllowingPause> allowPause = AllowingPause::on;
  std::optional<double> ticTime;  ///< monotonic seconds of the last `tic`
  std::atomic<bool> shouldExitExecution = false;
  std::string runInDir;  ///< where names of files are looked up, relative to the work directory; "" is that directory
  std::string panelDir;  ///< the directory that a console command runs in
  Console console;
  platform::WorkQueue& parserQueue;
  platform::FileSystem& files;
  platform::Clock& clock;
  WorkspaceStack workspaces;
  ParserBuffer parserBuffer;

 private:
  using SemaphoreRef = std::shared_ptr<platform::Semaphore>;

  void sleep(RunState::Status status, std::optional<double> seconds);
  void timerFired(const SemaphoreRef& own);
  void wakeRun();
  SemaphoreRef takeSemaphore();
  void storeSemaphore(SemaphoreRef semaphore);

  std::unique_ptr<platform::Lock> lock_;
  SemaphoreRef semaphore_;  // present only while the run is asleep in `pause` or `input`; under lock_
  int64_t errorsShown_ = 0;
  int64_t messagesShown_ = 0;
};

}  // namespace kelo
