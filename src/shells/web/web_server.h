// The web server: files by HTTP, messages by web sockets, on one thread together with the main
// queue.
//
// Only web_server.cpp sees the web library, which is slow to compile.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/native/queues.h"
#include "shells/web/access.h"
#include "shells/web/app_files.h"

namespace kelo::web {

/// What the server does with what comes in.
struct Service {
  using Reply = std::function<void(const std::string& message)>;

  /// Takes a message of a window. The reply may come at any later time, also when the window is
  /// gone.
  std::function<void(std::string_view message, const Reply& reply)> receive;
  /// Ctrl-C. False: the server ends.
  std::function<bool()> interrupted;
};

class WebServer {
 public:
  /// Of a server: connections, and windows among them; bytes of a request; messages of a window a
  /// second, beyond which they wait; unread bytes of a window, beyond which it is cut off (it comes
  /// back and asks for what it missed).
  static constexpr int kMostConnections = 128, kMostWindows = 32;
  static constexpr size_t kLongestHeader = 16 << 10, kLongestBody = 4 << 10;
  static constexpr int kMostMessagesASecond = 1000;
  static constexpr size_t kMostUnread = size_t{96} << 20, kCongestedFrom = size_t{1} << 20;

  WebServer();
  ~WebServer();

  /// Begins to listen. port: 0 takes any free one. Returns the system's words about a fault; empty:
  /// none.
  std::string listen(const std::string& address, int port);
  int port() const;

  /// Serves until the service says to end. REQUIRES: listens
  void serve(const Access& access, const AppFiles& files, platform::native::LoopQueue& mainQueue, Service service);

  /// Sends a notification to all windows. Thread: main, also before `serve`
  void notify(const std::string& message);
  /// Whether every window is behind with its reading.
  bool isCongested() const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};

}  // namespace kelo::web
