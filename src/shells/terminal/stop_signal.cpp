// The handler only writes a byte to a pipe; the main thread reads it and presses the button.
#include "shells/terminal/stop_signal.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace kelo::terminal {
namespace {

int g_pipe[2] = {-1, -1};

void onInterrupt(int) {
  const int saved = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(g_pipe[1], &byte, 1);
  errno = saved;
}

}  // namespace

StopSignal::StopSignal() {
  if (pipe2(g_pipe, O_NONBLOCK | O_CLOEXEC) != 0) return;  // Ctrl-C then ends the program
  struct sigaction action = {};
  action.sa_handler = onInterrupt;
  sigemptyset(&action.sa_mask);
  action.sa_flags = 0;  // a wait for standard input is to end
  sigaction(SIGINT, &action, nullptr);
}

StopSignal::~StopSignal() {
  signal(SIGINT, SIG_DFL);
  for (int& end : g_pipe) {
    if (end >= 0) close(end);
    end = -1;
  }
}

int StopSignal::descriptor() const { return g_pipe[0]; }

int StopSignal::take() {
  char bytes[64];
  int presses = 0;
  while (const ssize_t count = read(g_pipe[0], bytes, sizeof bytes)) {
    if (count < 0) break;
    presses += static_cast<int>(count);
  }
  return presses;
}

}  // namespace kelo::terminal
