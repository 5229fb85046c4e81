#include "shells/terminal/terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace kelo::terminal {

void holdStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) != -1) continue;
    const int opposite = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (open("/dev/null", opposite) == -1) std::abort();  // takes the lowest number that is free, which is this one
  }
}

bool isScreen(int descriptor) {
  const char* terminal = std::getenv("TERM");
  return isatty(descriptor) && terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}

bool wantsColour(int descriptor) {
  const char* noColour = std::getenv("NO_COLOR");
  return (noColour == nullptr || noColour[0] == '\0') && isScreen(descriptor);
}

int terminalWidth() {
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

}  // namespace kelo::terminal
