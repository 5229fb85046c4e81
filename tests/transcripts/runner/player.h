// The engine with its twins in memory, played by the steps of a transcript.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "interpreter/app_controller.h"
#include "platform/memory/twins.h"
#include "platform/memory_file_system.h"
#include "transcript.h"

namespace kelo::transcripts {

/// One case: a fresh console, 80 cells wide, with 5 digits.
class Player : private ConsoleView {
 public:
  Player();

  void set(const std::string& setting);
  void writeFile(const std::string& path, const std::string& content) { files_.writeFile(path, content); }
  /// Runs a command or a file and gives the lines that come back.
  std::vector<std::string> play(const Step& step);

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
  std::vector<std::string> answers_;
  std::vector<std::string> output_;
};

}  // namespace kelo::transcripts
