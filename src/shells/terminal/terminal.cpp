#include "shells/terminal/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <utf8proc.h>

#include <cstdlib>
#include <cstring>

namespace kelo::terminal {

bool wantsColour(int descriptor) {
  const char* noColour = std::getenv("NO_COLOR");
  if (noColour != nullptr && noColour[0] != '\0') return false;
  const char* terminal = std::getenv("TERM");
  return isatty(descriptor) && terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}

int terminalWidth() {
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

bool isUtf8(const std::string& text) {
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  auto left = static_cast<utf8proc_ssize_t>(text.size());
  while (left > 0) {
    utf8proc_int32_t codePoint;
    const utf8proc_ssize_t length = utf8proc_iterate(bytes, left, &codePoint);
    if (length <= 0) return false;
    bytes += length;
    left -= length;
  }
  return true;
}

}  // namespace kelo::terminal
