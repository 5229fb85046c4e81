#include "platform/memory_file_system.h"

namespace kelo::platform {
namespace {

// One spelling for each path: no "." components, no empty ones, no slash at either end, ".." taken
// back.
std::string normalized(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const size_t slash = std::min(path.find('/'), path.size());
    const std::string_view part = path.substr(0, slash);
    if (part == "..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != ".") {
      parts.push_back(part);
    }
    path.remove_prefix(std::min(slash + 1, path.size()));
  }
  std::string joined;
  for (const std::string_view part : parts) joined.append(joined.empty() ? "" : "/").append(part);
  return joined;
}

std::string parentOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

bool MemoryFileSystem::makeDirectory(const std::string& path) {
  if (isRegularFile(path)) return false;
  for (std::string at = normalized(path); directories_.insert(at).second; at = parentOf(at)) {
  }
  return true;
}

bool MemoryFileSystem::removeFile(const std::string& path) { return files_.erase(normalized(path)) > 0; }

void MemoryFileSystem::removeDirectory(const std::string& path) { directories_.erase(normalized(path)); }

bool MemoryFileSystem::exists(const std::string& path) const { return isRegularFile(path) || isDirectory(path); }

bool MemoryFileSystem::isRegularFile(const std::string& path) const { return files_.contains(normalized(path)); }

bool MemoryFileSystem::isDirectory(const std::string& path) const { return directories_.contains(normalized(path)); }

std::optional<int64_t> MemoryFileSystem::fileSize(const std::string& path) const {
  const auto found = files_.find(normalized(path));
  if (found == files_.end()) return std::nullopt;
  return static_cast<int64_t>(found->second.size());
}

std::optional<std::string> MemoryFileSystem::readFile(const std::string& path) const {
  const auto found = files_.find(normalized(path));
  if (found == files_.end()) return std::nullopt;
  return found->second;
}

bool MemoryFileSystem::writeFile(const std::string& path, std::string_view bytes) {
  const std::string at = normalized(path);
  if (directories_.contains(at)) return false;
  makeDirectory(parentOf(at));
  files_.insert_or_assign(at, std::string(bytes));
  return true;
}

std::optional<std::vector<std::string>> MemoryFileSystem::listDirectory(const std::string& path) const {
  const std::string at = normalized(path);
  if (!directories_.contains(at)) return std::nullopt;
  std::set<std::string> names;
  for (const auto& [file, bytes] : files_) {
    if (parentOf(file) == at) names.insert(nameOf(file));
  }
  for (const std::string& directory : directories_) {
    if (!directory.empty() && parentOf(directory) == at) names.insert(nameOf(directory));
  }
  return std::vector<std::string>(names.begin(), names.end());
}

}  // namespace kelo::platform
