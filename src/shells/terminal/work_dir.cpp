#include "shells/terminal/work_dir.h"

#include <filesystem>

namespace kelo::terminal {
namespace {

namespace fs = std::filesystem;

/// The place of `file` seen from `directory`, when it lies inside.
std::optional<fs::path> relativeTo(const fs::path& directory, const fs::path& file) {
  const fs::path relative = file.lexically_relative(directory);
  if (relative.empty() || *relative.begin() == "..") return std::nullopt;
  return relative;
}

fs::path resolved(const fs::path& path) {
  std::error_code ignored;
  const fs::path parent = fs::weakly_canonical(fs::absolute(path, ignored).parent_path(), ignored);
  return parent / path.filename();  // a link keeps its own name
}

}  // namespace

std::optional<Place> findPlace(const Options& options, std::string* fault) {
  std::error_code missing;
  fs::path workDir = fs::canonical(options.workDir.value_or("."), missing);
  if (missing || !fs::is_directory(workDir, missing)) {
    *fault = "there is no directory \"" + options.workDir.value_or(".") + "\"";
    return std::nullopt;
  }
  if (!options.file || *options.file == "-") return Place{workDir.string(), "", ""};

  fs::path file = resolved(*options.file);
  if (options.workDir && !relativeTo(workDir, file)) {
    const fs::path inside = resolved(workDir / *options.file);
    if (fs::exists(inside, missing)) file = inside;
  }
  if (fs::is_directory(file, missing)) {
    *fault = "\"" + *options.file + "\" is a folder";
    return std::nullopt;
  }
  std::optional<fs::path> relative = relativeTo(workDir, file);
  if (!relative && options.workDir) {
    *fault = "\"" + *options.file + "\" does not lie in the work directory";
    return std::nullopt;
  }
  if (!relative) {
    workDir = file.parent_path();
    relative = file.filename();
  }
  return Place{workDir.string(), relative->parent_path().string(), relative->filename().string()};
}

}  // namespace kelo::terminal
