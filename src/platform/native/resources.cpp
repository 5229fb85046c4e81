#include "platform/native/resources.h"

#include <filesystem>

namespace kelo::platform::native {

std::optional<std::string> resourcePath(const std::string& name) {
  namespace fs = std::filesystem;
  std::error_code fault;
  // A build folder's programs stand at its top, its tests one level below.
  const fs::path folder = fs::read_symlink("/proc/self/exe", fault).parent_path();
  for (const char* place : {"share/kelo", "../share/kelo"}) {
    const fs::path path = folder / place / name;
    if (!fault && fs::exists(path, fault)) return path.lexically_normal().string();
    fault.clear();
  }
  return std::nullopt;
}

}  // namespace kelo::platform::native
