#include "platform/native/disk.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/native/whole_file.h"

namespace kelo::platform::native {
namespace {

bool hasMode(const std::optional<std::string>& path, mode_t mode) {
  struct stat status;
  return path && stat(path->c_str(), &status) == 0 && (status.st_mode & S_IFMT) == mode;
}

}  // namespace

/// The full path; nothing when it would lead out of the work directory.
std::optional<std::string> Disk::located(const std::string& path) const {
  if (path.find('\0') != std::string::npos || path.starts_with('/')) return std::nullopt;
  const std::filesystem::path inside = std::filesystem::path(path).lexically_normal();
  if (!inside.empty() && *inside.begin() == "..") return std::nullopt;
  return workDir_ + "/" + inside.string();
}

bool Disk::exists(const std::string& path) const {
  struct stat status;
  const std::optional<std::string> full = located(path);
  return full && stat(full->c_str(), &status) == 0;
}

bool Disk::isRegularFile(const std::string& path) const { return hasMode(located(path), S_IFREG); }
bool Disk::isDirectory(const std::string& path) const { return hasMode(located(path), S_IFDIR); }

std::optional<int64_t> Disk::fileSize(const std::string& path) const {
  struct stat status;
  const std::optional<std::string> full = located(path);
  if (!full || stat(full->c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return status.st_size;
}

std::optional<std::string> Disk::readFile(const std::string& path) const {
  const std::optional<std::string> full = located(path);
  return full ? readWholeFile(*full) : std::nullopt;
}

bool Disk::writeFile(const std::string& path, std::string_view bytes) {
  const std::optional<std::string> full = located(path);
  if (!full || (exists(path) && !isRegularFile(path))) return false;
  return !replaceWholeFile(*full, bytes);
}

bool Disk::makeDirectory(const std::string& path) {
  const std::optional<std::string> full = located(path);
  std::error_code fault;
  if (full) std::filesystem::create_directories(*full, fault);
  return isDirectory(path);
}

bool Disk::removeFile(const std::string& path) {
  const std::optional<std::string> full = located(path);
  return isRegularFile(path) && unlink(full->c_str()) == 0;
}

std::optional<std::vector<std::string>> Disk::listDirectory(const std::string& path) const {
  const std::optional<std::string> full = located(path);
  std::error_code fault;
  if (!full) return std::nullopt;
  std::vector<std::string> names;
  for (auto entry = std::filesystem::directory_iterator(*full, fault);
       !fault && entry != std::filesystem::directory_iterator(); entry.increment(fault)) {
    names.push_back(entry->path().filename().string());
  }
  if (fault) return std::nullopt;
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace kelo::platform::native
