// The engine's main queue, served by the loop that serves the sockets. Part of web_server.cpp.
#pragma once

#include <unistd.h>

#include <boost/asio/posix/stream_descriptor.hpp>
#include <cmath>

#include "shells/web/server_state.h"

namespace kelo::web {

/// Runs what waits in a queue whenever the queue asks for it or one of its timers is due.
class QueueDriver {
 public:
  QueueDriver(asio::io_context& context, platform::native::LoopQueue& queue)
      : queue_(queue), wake_(context, dup(queue.wakeDescriptor())), timer_(context) {
    waitForWake();
    setTimer();
  }

 private:
  void waitForWake() {
    wake_.async_wait(asio::posix::stream_descriptor::wait_read, [this](error_code fault) {
      if (fault) return;
      run();
      waitForWake();
    });
  }

  void run() {
    queue_.runReady();
    setTimer();
  }

  void setTimer() {
    const std::optional<double> seconds = queue_.secondsToNextTimer();
    if (!seconds) return void(timer_.cancel());
    const double milliseconds = std::fmin(std::fmax(std::ceil(*seconds * 1000), 0), 3600e3);
    timer_.expires_after(std::chrono::milliseconds(static_cast<int>(milliseconds)));
    timer_.async_wait([this](error_code fault) {
      if (!fault) run();
    });
  }

  platform::native::LoopQueue& queue_;
  asio::posix::stream_descriptor wake_;
  asio::steady_timer timer_;
};

}  // namespace kelo::web
