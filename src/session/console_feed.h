// The console's output on its way to a front end: bounded, in batches of at most 60 a second.
//
// The parser queue puts in what arises; the main thread sends what has gathered. Only as many items
// are kept as the console keeps, so a loop that shows a million items costs the memory of the last
// thousand lines and never waits for the front end. Items are numbered from 0 since the console was
// last cleared; one that was dropped before it could be sent leaves a gap.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "interpreter/console.h"
#include "platform/host.h"
#include "session/json_rpc.h"

namespace kelo::session {

class ConsoleFeed final : public ConsoleView {
 public:
  struct Hooks {
    std::function<void(const std::string& method, const Json& params)> notify;
    std::function<void(RunState::Status status)> runStateChanged;
    std::function<void(const RunResult& result)> runEnded;
    /// Whether the front end is behind with its reading: batches wait, the oldest are dropped.
    std::function<bool()> isCongested;
  };

  ConsoleFeed(const platform::Host& host, Hooks hooks);

  // ---- The console's side: see ConsoleView
  void item(const Display& display) override;
  void prompt(const Display& display) override;
  void cleared() override;
  void progress(const std::string& line) override;
  void runStateChanged(RunState::Status status) override;
  void runEnded(const RunResult& result) override;

  // ---- Thread: main
  /// What the console holds, as the front end knows it.
  Json items();
  /// Takes the texts of displays that were formatted anew, the newest last. REQUIRES: no run is
  /// going on
  void reformat(const std::vector<Display>& displays);
  /// Sends what has gathered.
  void flush();

 private:
  struct Item {
    int64_t index;
    Json json;
    int64_t numOfLines;
  };
  /// Something to send, in order: an item by its index, or another notification.
  struct Event {
    std::string method;
    Json params;
    int64_t numOfLines = 0;
  };

  void append(const Display& display, const char* method);
  void push(Event event);
  void trim();
  void schedule();
  void sendLot();

  platform::MainQueue& mainQueue_;
  Hooks hooks_;
  std::unique_ptr<platform::Lock> lock_;
  // Under lock_:
  std::deque<Item> items_;
  int64_t itemLines_ = 0;
  int64_t nextIndex_ = 0;
  std::deque<Event> events_;
  int64_t eventLines_ = 0;
  bool isScheduled_ = false;
};

}  // namespace kelo::session
