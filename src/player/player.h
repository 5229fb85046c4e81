// The engine with its twins in memory, played by the steps of a transcript.
#pragma once

#include <string>
#include <vector>

#include "interpreter/app_controller.h"
#include "platform/memory/twins.h"
#include "platform/memory_file_system.h"

namespace kelo::player {

using Lines = std::vector<std::string>;

/// One case: a fresh console, 80 cells wide, with 5 digits.
class Player : private ConsoleView {
 public:
  Player();

  /// "width 40", "digits 8".
  void set(const std::string& setting);
  void writeFile(const std::string& path, const std::string& content) { files_.writeFile(path, content); }
  AppController& app() { return app_; }
  /// Runs a command or the file of a path, with answers for `input` and `pause`, and gives the
  /// items that come back.
  Lines play(const std::string& text, bool isFile, const Lines& answers);

 private:
  void item(const Display& display) override;
  void runEnded(const RunResult& result) override;
  void whileAsleep();

  platform::InlineQueue parserQueue_;
  platform::ManualClock clock_;
  platform::ManualMainQueue mainQueue_{clock_};
  platform::ScriptedSynchronization synchronization_;
  platform::MemoryFileSystem files_;
  platform::MemoryStore store_;
  AppController app_;
  Lines answers_;
  Lines output_;
};

}  // namespace kelo::player
