#include "platform/native/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/native/descriptor.h"

namespace kelo::platform::native {

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
  struct stat old;
  const bool existed = stat(path.c_str(), &old) == 0;
  std::string temporary = path + ".XXXXXX";
  bool good = false;
  {
    const Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.isOpen()) return std::strerror(errno);
    const mode_t mask = umask(0);
    umask(mask);
    good = writeAll(file.number(), bytes) && fchmod(file.number(), existed ? old.st_mode & 0777 : 0666 & ~mask) == 0 &&
           fsync(file.number()) == 0;
  }
  if (good && std::rename(temporary.c_str(), path.c_str()) == 0) return std::nullopt;
  const std::string fault = std::strerror(errno);
  unlink(temporary.c_str());
  return fault;
}

}  // namespace kelo::platform::native
