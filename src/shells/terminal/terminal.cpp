#include "shells/terminal/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace kelo::terminal {

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
