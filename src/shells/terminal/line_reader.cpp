#include "shells/terminal/line_reader.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace kelo::terminal {

bool LineReader::fill() {
  char bytes[1 << 16];
  const ssize_t count = read(kDescriptor, bytes, sizeof bytes);
  if (count > 0) buffer_.append(bytes, static_cast<size_t>(count));
  const bool interrupted = count < 0 && errno == EINTR;
  const bool failed = count < 0 && !interrupted && errno != EAGAIN;
  if (failed) fault_ = std::strerror(errno);
  if (count == 0 || failed) ended_ = true;
  return !interrupted;
}

std::optional<std::string> LineReader::nextLine() {
  size_t end = buffer_.find('\n');
  if (end == std::string::npos) {
    if (buffer_.empty()) return std::nullopt;
    end = buffer_.size();
  }
  std::string line = buffer_.substr(0, end);
  buffer_.erase(0, end + 1);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::optional<std::string> LineReader::rest() {
  while (!ended_) {
    if (!fill()) return std::nullopt;
  }
  if (!fault_.empty()) return std::nullopt;
  return std::exchange(buffer_, std::string());
}

}  // namespace kelo::terminal
