#include "platform/native/state_directory.h"

#include <cstdlib>

namespace kelo::platform::native {

std::string stateDirectory(const std::optional<std::string>& wanted) {
  if (wanted) return *wanted;
  if (const char* state = std::getenv("XDG_STATE_HOME"); state != nullptr && state[0] == '/') {
    return std::string(state) + "/kelo";
  }
  const char* home = std::getenv("HOME");
  return std::string(home != nullptr ? home : ".") + "/.local/state/kelo";
}

}  // namespace kelo::platform::native
