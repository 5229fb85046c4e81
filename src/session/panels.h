// What the methods of the session work on: the engine and the models of the panels.
//
// Thread: main. Values belong to the parser queue while a run is going on; a method touches them only while none is.
#pragma once

#include <optional>
#include <string>

#include "docs/doc_files.h"
#include "docs/doc_search.h"
#include "interpreter/app_controller.h"
#include "platform/locked_store.h"
#include "session/console_feed.h"
#include "session/method.h"
#include "session/settings.h"
#include "session/variables.h"

namespace kelo::session {

/// What a shell gives the session.
struct Setup {
  platform::Host host;
  const platform::FileSystem& resources;  ///< the program's own files: the help pages
  std::string workDir;                    ///< as the system names it
  std::string workDirDisplayText;         ///< as the user reads it
  /// Takes a notification, as one line of text.
  std::function<void(const std::string& message)> notify;
  /// Whether the front end is behind with its reading; absent: never.
  std::function<bool()> isCongested = {};
};

struct Panels {
  explicit Panels(const Setup& setup);

  bool isIdle() const { return app.control.status() == RunState::Status::idle; }
  /// The variables: of now, or of before the run that is going on.
  const std::vector<Variable>& variables();
  void notify(const std::string& method, const Json& params) const;
  /// Starts a run, whose end answers. throws Refusal, when one is going on
  void startRun(const Answer& answer, const std::function<void()>& start);
  /// From now on nobody answers a run that waits: it is stopped.
  void endOfInput();
  /// Takes new settings; those of the display wait for the end of a run.
  void change(const Json& changes);

  const Setup setup;
  platform::LockedStore store;  ///< settings are changed here while a run may save its own
  const platform::Host host;
  AppSettings settings;
  ConsoleFeed feed;
  AppController app;
  docs::DocFilesLoader docFiles;
  docs::DocSearch docSearch;

 private:
  void runStateChanged(RunState::Status status);
  void runEnded(const RunResult& result);
  void applySettings();

  std::vector<Variable> variables_;
  bool variablesAreStale_ = true;
  bool settingsAreStale_ = false;
  bool inputHasEnded_ = false;
  Answer runAnswer_;
  double runBegan_ = 0;  // monotonic seconds
};

/// "idle", "running", "paused", "waitInput".
const char* statusName(RunState::Status status);

}  // namespace kelo::session
