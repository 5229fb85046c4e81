// A session over a folder of the disk, for tests; the rest of its outside is in memory.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/memory/twins.h"
#include "platform/memory_file_system.h"
#include "platform/native/disk.h"
#include "platform/native/disk_tree.h"
#include "session/session.h"

namespace kelo::session {

class TestSession {
 public:
  explicit TestSession(const std::string& folder) : disk_(folder), tree_(folder) {
    synchronization_.whileAsleep = [this] {
      mainQueue_.drain();
      if (session_.panels().app.control.wait()) session_.stop();
    };
  }

  /// Sends a message and gives all that came back: answers, then notifications.
  std::vector<std::string> send(const std::string& message) {
    answers_.clear();
    session_.receive(message, [this](const std::string& answer) { answers_.push_back(answer); });
    mainQueue_.drain();
    return answers_;
  }
  /// The answer to a call.
  Json call(const std::string& method, const Json& params) {
    const Json request = {{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}, {"params", params}};
    return Json::parse(send(request.dump()).at(0));
  }

  std::vector<std::string> notifications;

 private:
  platform::InlineQueue parserQueue_;
  platform::ManualClock clock_;
  platform::ManualMainQueue mainQueue_{clock_};
  platform::ScriptedSynchronization synchronization_;
  platform::MemoryStore store_;
  platform::MemoryFileSystem resources_, documents_;
  platform::native::Disk disk_;
  platform::native::DiskTree tree_;
  std::vector<std::string> answers_;
  Session session_{{{parserQueue_, mainQueue_, synchronization_, disk_, store_, clock_},
                    tree_,
                    resources_,
                    documents_,
                    "/work",
                    "work",
                    [this](const std::string& text) { notifications.push_back(text); }}};
};

}  // namespace kelo::session
