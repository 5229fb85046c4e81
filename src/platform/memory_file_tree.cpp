#include "platform/memory_file_tree.h"

namespace kelo::platform {
namespace {

std::string parentOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string joined(const std::string& folder, const std::string& name) {
  return folder.empty() ? name : folder + "/" + name;
}

}  // namespace

std::optional<FileTree::Status> MemoryFileTree::status(const std::string& path) const {
  if (!componentsOf(path) || !files_.exists(path)) return std::nullopt;
  Status status;
  status.isFolder = files_.isDirectory(path);
  if (!status.isFolder) status.size = static_cast<int64_t>(files_.readFile(path)->size());
  if (const auto date = modified.find(path); date != modified.end()) status.modified = date->second;
  return status;
}

std::optional<std::vector<FileTree::Entry>> MemoryFileTree::list(const std::string& path) const {
  if (!componentsOf(path)) return std::nullopt;
  const auto names = files_.listDirectory(path);
  if (!names) return std::nullopt;
  std::vector<Entry> entries;
  for (const std::string& name : *names) entries.push_back({name, status(joined(path, name))});
  return entries;
}

std::optional<std::string> MemoryFileTree::read(const std::string& path) const {
  return componentsOf(path) ? files_.readFile(path) : std::nullopt;
}

bool MemoryFileTree::canMake(const std::string& path) const {
  return !isReadOnly && !path.empty() && componentsOf(path) && !files_.exists(path) &&
         files_.isDirectory(parentOf(path));
}

bool MemoryFileTree::create(const std::string& path, std::string_view bytes) {
  return canMake(path) && files_.writeFile(path, bytes);
}

bool MemoryFileTree::replace(const std::string& path, std::string_view bytes,
                             const std::function<bool(std::string_view present)>& agrees) {
  const std::optional<std::string> present = read(path);
  return present && !isReadOnly && agrees(*present) && files_.writeFile(path, bytes);
}

bool MemoryFileTree::makeFolder(const std::string& path) {
  if (!canMake(path)) return false;
  files_.makeDirectory(path);
  return true;
}

bool MemoryFileTree::move(const std::string& from, const std::string& to) {
  if (!status(from) || !canMake(to) || (to + "/").starts_with(from + "/")) return false;
  if (files_.isDirectory(from)) {
    files_.makeDirectory(to);
    const std::vector<Entry> entries = *list(from);
    for (const Entry& entry : entries) move(joined(from, entry.name), joined(to, entry.name));
    files_.removeDirectory(from);
  } else {
    files_.writeFile(to, *files_.readFile(from));
    files_.removeFile(from);
  }
  return true;
}

bool MemoryFileTree::remove(const std::string& path) {
  if (isReadOnly || path.empty() || !status(path)) return false;
  if (!files_.isDirectory(path)) {
    files_.removeFile(path);
    return true;
  }
  const std::vector<Entry> entries = *list(path);
  for (const Entry& entry : entries) remove(joined(path, entry.name));
  files_.removeDirectory(path);
  return true;
}

}  // namespace kelo::platform
