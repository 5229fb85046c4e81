// What the methods of the session work on: the engine and the models of the panels.
//
// Thread: main. Values belong to the parser queue while a run is going on; a method touches them
// only while none is.
#pragma once

#include <atomic>
#include <deque>
#include <optional>
#include <string>

#include "docs/doc_files.h"
#include "docs/doc_search.h"
#include "editor/syntax_highlighter.h"
#include "figures/drawing/line_index.h"
#include "figures/figure_documents.h"
#include "figures/pictures/renderer.h"
#include "figures/tip.h"
#include "files/file_panel.h"
#include "interpreter/app_controller.h"
#include "platform/file_tree.h"
#include "platform/folder_watcher.h"
#include "platform/locked_store.h"
#include "session/console_feed.h"
#include "session/method.h"
#include "session/settings.h"
#include "session/variables.h"

namespace kelo::session {

/// What a shell gives the session.
struct Setup {
  platform::Host host;
  platform::FileTree& tree;               ///< the work directory, for the files panel
  const platform::FileSystem& resources;  ///< the program's own files: help pages, names to colour
  platform::FileSystem& documents;        ///< the documents directory, for saved figures
  std::string workDir;                    ///< as the system names it
  std::string workDirDisplayText;         ///< as the user reads it
  /// Takes a notification, as one line of text.
  std::function<void(const std::string& message)> notify;
  /// Whether the front end is behind with its reading; absent: never.
  std::function<bool()> isCongested = {};
  /// Watches the folders that are listed; absent: changes from outside go unnoticed.
  platform::FolderWatcher* watcher = nullptr;
  /// Makes pictures of pixels; absent: there are none.
  pictures::Renderer* renderer = nullptr;
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
  /// Tells the front ends of changes in a folder, from now on; of the last few folders that were
  /// asked for.
  void watch(const std::string& folder);

  const Setup setup;
  platform::LockedStore store;  ///< settings are changed here while a run may save its own
  const platform::Host host;
  AppSettings settings;
  ConsoleFeed feed;
  AppController app;
  figures::FigureDocuments figureDocuments;
  std::vector<figures::FigureData> savedFigures;  ///< as they were last listed, and those saved since
  drawing::DrawingCache drawingCache;
  figures::TipFinder tipFinder;
  FilePanel files;
  int64_t lastSearch = 0;  ///< number of the latest search in files
  SyntaxHighlighter highlighter;
  docs::DocFilesLoader docFiles;
  docs::DocSearch docSearch;

 private:
  void runStateChanged(RunState::Status status);
  void figureChanged();
  void tellOfFigure();
  void runEnded(const RunResult& result);
  /// True when items are formatted otherwise from now on.
  bool applySettings();
  void showItemsAnew();

  std::vector<Variable> variables_;
  bool variablesAreStale_ = true;
  bool settingsAreStale_ = false;
  bool inputHasEnded_ = false;
  std::atomic<bool> figureHasChanged_ = false;  ///< and nobody knows yet
  std::deque<std::string> watched_;  // folders, the latest last
  Answer runAnswer_;
  double runBegan_ = 0;  // monotonic seconds
};

/// "idle", "running", "paused", "waitInput".
const char* statusName(RunState::Status status);

}  // namespace kelo::session
