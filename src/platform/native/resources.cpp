#include "platform/native/resources.h"

#include <filesystem>

namespace kelo::platform::native {

std::string resourceDirectory() {
  namespace fs = std::filesystem;
  std::error_code fault;
  const fs::path folder = fs::read_symlink("/proc/self/exe", fault).parent_path();
  for (const fs::path& path : {folder / "resources", folder / ".." / "share" / "kelo"}) {
    if (!folder.empty() && fs::is_directory(path, fault)) return fs::weakly_canonical(path, fault).string();
  }
  return "";
}

}  // namespace kelo::platform::native
