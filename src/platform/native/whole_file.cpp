#include "platform/native/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "platform/native/descriptor.h"

namespace kelo::platform::native {
namespace {

namespace fs = std::filesystem;

/// The file that a link leads to, which need not exist yet.
fs::path behindLinks(fs::path path) {
  constexpr int kMostLinks = 40;
  std::error_code fault;
  for (int k = 0; k < kMostLinks && fs::is_symlink(path, fault); ++k) {
    path = path.parent_path() / fs::read_symlink(path, fault);
  }
  return path;
}

fs::path folderOf(const fs::path& path) { return path.has_parent_path() ? path.parent_path() : "."; }

/// One name for each file, so that what a killed program left behind goes with the next writing.
std::string temporaryFor(const fs::path& target) {
  return (folderOf(target) / ("." + target.filename().string() + ".kelo~")).string();
}

/// A file without a name where the system has that, else one with the temporary name.
Descriptor openUnseen(const fs::path& target, const std::string& temporary) {
  const int unnamed = open(folderOf(target).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  unlink(temporary.c_str());
  if (unnamed >= 0) return Descriptor(unnamed);
  return Descriptor(open(temporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600));
}

/// Gives the file its name. One that takes the place of another goes by the temporary name, for a
/// link cannot replace.
bool putInPlace(const Descriptor& file, const fs::path& target, const std::string& temporary) {
  struct stat status;
  if (fstat(file.number(), &status) == 0 && status.st_nlink == 0) {
    const std::string unnamed = "/proc/self/fd/" + std::to_string(file.number());
    const auto link = [&](const char* name) {
      return linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    };
    if (link(target.c_str())) return true;
    if (errno != EEXIST) return false;
    if (!link(temporary.c_str())) {  // another program is at the same file
      unlink(temporary.c_str());
      if (!link(temporary.c_str())) return false;
    }
  }
  return std::rename(temporary.c_str(), target.c_str()) == 0;
}

}  // namespace

bool writeAll(int descriptor, std::string_view bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t written = write(descriptor, bytes.data() + done, bytes.size() - done);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    done += static_cast<size_t>(written);
  }
  return true;
}

std::optional<std::string> readWholeFile(const std::string& path) {
  // Not to wait for a writer, should it be a pipe.
  return readWholeFile(Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)));
}

std::optional<std::string> readWholeFile(const Descriptor& file) {
  struct stat status;
  if (!file.isOpen() || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::string bytes(static_cast<size_t>(status.st_size) + 1, '\0');  // one more, to see the end in the same call
  size_t length = 0;
  while (true) {
    const ssize_t count = read(file.number(), bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    length += static_cast<size_t>(count);
    if (length == bytes.size()) bytes.resize(2 * bytes.size());
  }
  bytes.resize(length);
  return bytes;
}

std::optional<std::string> replaceWholeFile(const std::string& path, std::string_view bytes) {
  const fs::path target = behindLinks(path);
  const std::string temporary = temporaryFor(target);
  struct stat old;
  const bool existed = stat(target.c_str(), &old) == 0;
  const mode_t mask = umask(0);
  umask(mask);
  const Descriptor file = openUnseen(target, temporary);
  const bool good = file.isOpen() && writeAll(file.number(), bytes) &&
                    fchmod(file.number(), existed ? old.st_mode & 0777 : 0666 & ~mask) == 0 &&
                    fsync(file.number()) == 0;
  if (good && putInPlace(file, target, temporary)) return std::nullopt;
  const std::string fault = std::strerror(errno);
  unlink(temporary.c_str());
  return fault;
}

}  // namespace kelo::platform::native
