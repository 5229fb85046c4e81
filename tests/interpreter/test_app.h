// An AppController on twins in memory, whose view keeps the texts that it is shown.
#pragma once

#include <string>
#include <vector>

#include "interpreter/app_controller.h"
#include "interpreter/builtin_table.h"
#include "platform/memory/twins.h"
#include "platform/memory_file_system.h"

namespace kelo {

struct TestApp : ConsoleView {
  /// Without built-ins, or with a table of them.
  TestApp() : TestApp(noBuiltins()) {}
  explicit TestApp(const BuiltinTable& builtins)
      : app({parserQueue, mainQueue, synchronization, files, store, clock}, *this, builtins) {
    synchronization.whileAsleep = [this] { mainQueue.drain(); };
  }

  static const BuiltinTable& noBuiltins() {
    static const BuiltinTable table({});
    return table;
  }

  void item(const Display& display) override { shown.push_back(display.displayText()); }
  void runEnded(const RunResult& result) override { results.push_back(result); }

  RunState::Status status() {
    mainQueue.drain();
    return app.control.status();
  }
  /// Runs a block as a run.
  void duringRun(const platform::Block& block) {
    app.start([&] {
      block();
      return RunResult();
    });
  }

  std::vector<std::string> shown;
  std::vector<RunResult> results;  ///< of the runs that have ended
  platform::InlineQueue parserQueue;
  platform::ManualClock clock;
  platform::ManualMainQueue mainQueue{clock};
  platform::ScriptedSynchronization synchronization;
  platform::MemoryFileSystem files;
  platform::MemoryStore store;
  AppController app;
};

}  // namespace kelo
