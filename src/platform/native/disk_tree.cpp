#include "platform/native/disk_tree.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <random>

#include "platform/native/whole_file.h"

namespace kelo::platform::native {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int kFileFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
constexpr int kMostNested = 256;  ///< folders within folders, for a removal

/// Status of a file or folder; nothing for anything else, such as a link or a pipe.
std::optional<FileTree::Status> toStatus(const struct stat& status) {
  if (!S_ISDIR(status.st_mode) && !S_ISREG(status.st_mode)) return std::nullopt;
  const double modified =
      static_cast<double>(status.st_mtim.tv_sec) + 1e-9 * static_cast<double>(status.st_mtim.tv_nsec);
  const bool isFolder = S_ISDIR(status.st_mode);
  return FileTree::Status{isFolder, isFolder ? 0 : static_cast<int64_t>(status.st_size), modified};
}

/// Names of all entries of an open folder, sorted.
std::optional<std::vector<std::string>> namesIn(const Descriptor& folder) {
  Descriptor own(openat(folder.number(), ".", kFolderFlags));
  DIR* stream = own.isOpen() ? fdopendir(own.number()) : nullptr;
  if (stream == nullptr) return std::nullopt;
  own.release();
  std::vector<std::string> names;
  while (const dirent* entry = readdir(stream)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") names.push_back(name);
  }
  closedir(stream);
  std::ranges::sort(names);
  return names;
}

/// A file under construction, beside the one that it will be. Unless it takes that place it goes
/// away.
class NewFile {
 public:
  NewFile(const Descriptor& folder, std::string_view bytes, mode_t mode) : folder_(folder) {
    std::random_device random;
    for (int attempt = 0; attempt < 16 && !file_.isOpen(); ++attempt) {
      name_ = ".kelo-new-" + std::to_string(random());
      file_ = Descriptor(openat(folder.number(), name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
      if (!file_.isOpen() && errno != EEXIST) return;
    }
    isGood_ = file_.isOpen() && writeAll(file_.number(), bytes) && fsync(file_.number()) == 0;
  }
  ~NewFile() {
    if (file_.isOpen()) unlinkat(folder_.number(), name_.c_str(), 0);  // fails when it has moved, as it should
  }

  void setMode(mode_t mode) { isGood_ = isGood_ && fchmod(file_.number(), mode) == 0; }
  bool takePlaceOf(const std::string& name) {
    return isGood_ && renameat(folder_.number(), name_.c_str(), folder_.number(), name.c_str()) == 0;
  }
  bool takeFreePlace(const std::string& name) {
    // A second name rather than a rename, which would replace what stands there.
    return isGood_ && linkat(folder_.number(), name_.c_str(), folder_.number(), name.c_str(), 0) == 0;
  }

 private:
  const Descriptor& folder_;
  std::string name_;
  Descriptor file_;
  bool isGood_ = false;
};

bool removeAt(const Descriptor& folder, const std::string& name, int depth) {
  if (unlinkat(folder.number(), name.c_str(), 0) == 0) return true;
  if (errno != EISDIR && errno != EPERM) return false;
  if (depth > 0) {
    const Descriptor inner(openat(folder.number(), name.c_str(), kFolderFlags));
    const auto names = inner.isOpen() ? namesIn(inner) : std::nullopt;
    if (!names) return false;
    for (const std::string& one : *names) {
      if (!removeAt(inner, one, depth - 1)) return false;
    }
  }
  return unlinkat(folder.number(), name.c_str(), AT_REMOVEDIR) == 0;
}

}  // namespace

Descriptor DiskTree::folder(const std::string& path) const {
  const auto components = componentsOf(path);
  if (!components) return Descriptor();
  Descriptor at(open(root_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (const std::string& name : *components) {
    if (!at.isOpen()) break;
    at = Descriptor(openat(at.number(), name.c_str(), kFolderFlags));
  }
  return at;
}

DiskTree::Place DiskTree::placeOf(const std::string& path) const {
  if (path.empty() || !componentsOf(path)) return {};
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return {folder(""), path};
  return {folder(path.substr(0, slash)), path.substr(slash + 1)};
}

std::optional<std::vector<FileTree::Entry>> DiskTree::list(const std::string& path) const {
  const Descriptor opened = folder(path);
  const auto names = opened.isOpen() ? namesIn(opened) : std::nullopt;
  if (!names) return std::nullopt;
  std::vector<Entry> entries;
  for (const std::string& name : *names) {
    struct stat found;
    if (fstatat(opened.number(), name.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0) {
      if (errno != ENOENT) entries.push_back({name, std::nullopt});  // otherwise it went away meanwhile
    } else if (const auto status = toStatus(found)) {
      entries.push_back({name, status});
    }
  }
  return entries;
}

std::optional<FileTree::Status> DiskTree::status(const std::string& path) const {
  struct stat found;
  if (path.empty()) {
    const Descriptor root = folder("");
    return root.isOpen() && fstat(root.number(), &found) == 0 ? toStatus(found) : std::nullopt;
  }
  const Place place = placeOf(path);
  if (!place.isFound()) return std::nullopt;
  if (fstatat(place.folder.number(), place.name.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
  return toStatus(found);
}

std::optional<std::string> DiskTree::read(const std::string& path) const {
  const Place place = placeOf(path);
  if (!place.isFound()) return std::nullopt;
  return readWholeFile(Descriptor(openat(place.folder.number(), place.name.c_str(), kFileFlags)));
}

bool DiskTree::create(const std::string& path, std::string_view bytes) {
  const Place place = placeOf(path);
  return place.isFound() && NewFile(place.folder, bytes, 0666).takeFreePlace(place.name);
}

bool DiskTree::replace(const std::string& path, std::string_view bytes,
                       const std::function<bool(std::string_view present)>& agrees) {
  const Place place = placeOf(path);
  // The lock on the folder keeps two replacements apart; it ends with the descriptor.
  if (!place.isFound() || flock(place.folder.number(), LOCK_EX) != 0) return false;
  const Descriptor old(openat(place.folder.number(), place.name.c_str(), kFileFlags));
  struct stat status;
  if (!old.isOpen() || fstat(old.number(), &status) != 0) return false;
  if (faccessat(place.folder.number(), place.name.c_str(), W_OK, AT_EACCESS) != 0) return false;
  const std::optional<std::string> present = readWholeFile(old);
  if (!present || !agrees(*present)) return false;
  NewFile file(place.folder, bytes, 0600);
  file.setMode(status.st_mode & 0777);
  return file.takePlaceOf(place.name);
}

bool DiskTree::makeFolder(const std::string& path) {
  const Place place = placeOf(path);
  return place.isFound() && mkdirat(place.folder.number(), place.name.c_str(), 0777) == 0;
}

bool DiskTree::move(const std::string& from, const std::string& to) {
  const Place source = placeOf(from), target = placeOf(to);
  if (!source.isFound() || !target.isFound() || !status(from)) return false;
  return renameat2(source.folder.number(), source.name.c_str(), target.folder.number(), target.name.c_str(),
                   RENAME_NOREPLACE) == 0;
}

bool DiskTree::remove(const std::string& path) {
  const Place place = placeOf(path);
  return place.isFound() && status(path) && removeAt(place.folder, place.name, kMostNested);
}

}  // namespace kelo::platform::native
