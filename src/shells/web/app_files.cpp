#include "shells/web/app_files.h"

#include <fmt/format.h>

#include <filesystem>

#include "platform/native/whole_file.h"

namespace kelo::web {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, std::string, std::less<>> kTypes = {
    {".html", "text/html; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".json", "application/json"},
    {".webmanifest", "application/manifest+json"},
    {".svg", "image/svg+xml"},
    {".png", "image/png"},
    {".ico", "image/x-icon"},
    {".woff2", "font/woff2"},
    {".wasm", "application/wasm"},
    {".txt", "text/plain; charset=utf-8"},
};

std::string tagOf(std::string_view bytes) {
  return fmt::format("\"{:x}-{:x}\"", std::hash<std::string_view>()(bytes), bytes.size());
}

}  // namespace

AppFiles AppFiles::read(const std::string& folder) {
  AppFiles all;
  std::error_code fault;
  for (auto entry = fs::recursive_directory_iterator(folder, fault);
       !fault && entry != fs::recursive_directory_iterator(); entry.increment(fault)) {
    const std::string path = entry->path().string();
    const auto type = kTypes.find(entry->path().extension().string());
    if (type == kTypes.end() || !entry->is_regular_file()) continue;
    auto content = platform::native::readWholeFile(path);
    if (!content) continue;
    const std::string name = "/" + entry->path().lexically_relative(folder).generic_string();
    const std::string tag = tagOf(*content);
    all.files_[name] = {std::move(*content),
                        platform::native::readWholeFile(path + ".br"),
                        platform::native::readWholeFile(path + ".gz"),
                        type->second,
                        tag,
                        name.starts_with("/assets/") || (name.starts_with("/frame/") && !name.ends_with(".html"))};
  }
  return all;
}

const AppFile* AppFiles::find(std::string_view path) const {
  const auto found = files_.find(path == "/" ? std::string_view("/index.html") : path);
  return found == files_.end() ? nullptr : &found->second;
}

}  // namespace kelo::web
