// The engine as a shell sees it: the console, the buttons, and a run from its start to its end.
// What programs run in is the Environment; how they sleep and stop is the RunControl. Whoever needs
// one of them is given it by reference; there is no global one.
//
// A shell of any kind serves the main queue, starts runs, and answers the waits that
// `control.wait()` gives; what comes back reaches its ConsoleView, the end of a run by runEnded.
#pragma once

#include <functional>
#include <string>

#include "figures/figure_panel.h"
#include "interpreter/console.h"
#include "interpreter/environment.h"
#include "interpreter/run_control.h"
#include "platform/host.h"

namespace kelo {

class AppController {
 public:
  /// REQUIRES: what is given outlives this
  AppController(const platform::Host& host, ConsoleView& view, const BuiltinTable& builtins);

  // ---- Thread: main

  /// The run button of the console: starts the text of the input, or answers what a run waits for.
  void pressRun();
  /// The run button of the editor: runs a file, unless something is running. `directory` is
  /// relative to the work directory.
  void pressRunFile(const std::string& directory, const std::string& fileName);
  /// The stop button, of either.
  void pressStop() { control.stop(); }
  /// Runs a text or a file without input field, history and echo. REQUIRES: no run is going on
  void startCommand(const std::string& text);
  void startFile(const std::string& directory, const std::string& fileName);
  /// Runs a block on the parser queue as a run, with its states and its end. REQUIRES: no run is
  /// going on
  void start(std::function<RunResult()> run);

  Console console;
  RunControl control;
  figures::FigurePanel figures;
  Environment environment;
  std::string panelDir;  ///< the directory that a console command runs in, relative to the work directory

 private:
  platform::KeyValueStore& store_;
  platform::WorkQueue& parserQueue_;
  platform::MainQueue& mainQueue_;
};

}  // namespace kelo
