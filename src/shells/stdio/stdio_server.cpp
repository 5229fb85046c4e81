// One loop serves the main queue, standard input and standard output. Output waits in a buffer
// until the reader takes it, so a reader that is slow, or that writes before it reads, never keeps
// a request from being carried out.
#include "shells/stdio/stdio_server.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>

#include "session/json_rpc.h"
#include "shells/stdio/output_buffer.h"

namespace kelo::serve {
namespace {

// With more than this unread, the console's output is held back, and with more than that no request
// is read.
constexpr size_t kHeldBackFrom = size_t{1} << 20;
constexpr size_t kReadUpTo = size_t{64} << 20;

class StdioServer {
 public:
  explicit StdioServer(const ServeOptions& options)
      : machine_(options, {[this](const std::string& message) { send(message); },
                           [this] { return output_.size() > kHeldBackFrom; }}) {}

  int serve() {
    while (!isDone()) {
      step();
      machine_.mainQueue.runReady();
    }
    return output_.hasReader() ? 0 : 1;
  }

 private:
  bool isDone() const { return !output_.hasReader() || (hasEnded_ && pending_ == 0 && output_.size() == 0); }

  void send(const std::string& message) { output_.add(message + "\n"); }

  void take(const std::string& line) {
    if (line.find_first_not_of(" \t\r") == std::string::npos) return;
    ++pending_;
    machine_.session.receive(line, [this](const std::string& answer) {
      --pending_;
      send(answer);
    });
  }

  void step() {
    const std::optional<double> seconds = machine_.mainQueue.secondsToNextTimer();
    const int milliseconds = seconds ? static_cast<int>(std::fmin(std::ceil(*seconds * 1000), 3600e3)) : -1;
    const bool reads = !hasEnded_ && output_.size() < kReadUpTo;
    // Standard output is looked at even with nothing to write: its reader may go away.
    pollfd events[] = {{machine_.mainQueue.wakeDescriptor(), POLLIN, 0},
                       {STDOUT_FILENO, static_cast<short>(output_.size() > 0 ? POLLOUT : 0), 0},
                       {reads ? STDIN_FILENO : -1, POLLIN, 0}};
    if (poll(events, 3, milliseconds) <= 0) return;
    if (events[1].revents != 0) output_.write(events[1].revents);
    if (events[2].revents != 0) read();
  }

  void read() {
    static char bytes[1 << 16];
    const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count < 0 && errno == EINTR) return;
    if (count > 0) {
      return lines_.add({bytes, static_cast<size_t>(count)}, [this](const std::string& line) { take(line); });
    }
    take(lines_.rest());
    hasEnded_ = true;
    machine_.session.endOfInput();
  }

  OutputBuffer output_;
  LineSplitter lines_;
  bool hasEnded_ = false;
  int64_t pending_ = 0;  // requests without an answer
  Machine machine_;
};

}  // namespace

void LineSplitter::keep(std::string_view bytes) {
  const size_t room = session::kMaxMessageBytes + 1 - std::min(line_.size(), session::kMaxMessageBytes + 1);
  line_.append(bytes.substr(0, room));
}

int serveStdio(const ServeOptions& options) {
  std::signal(SIGPIPE, SIG_IGN);
  return StdioServer(options).serve();
}

}  // namespace kelo::serve
