#include "shells/terminal/line_reader.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace kelo::terminal {
namespace {

/// Takes a part of a text away, the line end after it with it.
std::string cut(std::string& text, size_t begin, size_t end) {
  std::string part = text.substr(begin, end - begin);
  text.erase(begin, end - begin + 1);
  return part;
}

}  // namespace

void LineReader::fill() {
  char bytes[1 << 16];
  const ssize_t count = read(kDescriptor, bytes, sizeof bytes);
  if (count > 0) buffer_.append(bytes, static_cast<size_t>(count));
  const bool interrupted = count < 0 && errno == EINTR;
  const bool failed = count < 0 && !interrupted && errno != EAGAIN;
  if (failed) fault_ = std::strerror(errno);
  if (count == 0 || failed) ended_ = true;
}

/// A terminal goes on after its end.
void LineReader::meetEnd() {
  if (isatty(kDescriptor)) ended_ = false;
}

std::optional<std::string> LineReader::nextLine() {
  if (buffer_.empty()) {
    meetEnd();
    return std::nullopt;
  }
  const size_t end = std::min(buffer_.find('\n'), buffer_.size());
  std::string line = cut(buffer_, 0, end);
  typedAhead_ -= std::min(typedAhead_, end + 1);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::optional<std::string> LineReader::rest(int interrupt) {
  while (!ended_) {
    pollfd events[] = {{kDescriptor, POLLIN, 0}, {interrupt, POLLIN, 0}};
    poll(events, 2, -1);
    if (events[1].revents != 0) return std::nullopt;
    if (events[0].revents != 0) fill();
  }
  if (!fault_.empty()) return std::nullopt;
  return std::exchange(buffer_, std::string());
}

void LineReader::keepTypedAhead() {
  if (!isatty(kDescriptor)) return;
  pollfd waiting{kDescriptor, POLLIN, 0};
  while (!ended_ && poll(&waiting, 1, 0) > 0) fill();
  typedAhead_ = buffer_.size();
}

bool LineReader::takeKey() {
  if (buffer_.size() == typedAhead_) {
    meetEnd();
    return false;
  }
  cut(buffer_, typedAhead_, std::min(buffer_.find('\n', typedAhead_), buffer_.size()));
  return true;
}

std::optional<unsigned char> LineReader::nextByte() {
  if (buffer_.empty()) {
    unsigned char byte = 0;
    if (read(kDescriptor, &byte, 1) != 1) return std::nullopt;
    return byte;
  }
  const auto byte = static_cast<unsigned char>(buffer_.front());
  buffer_.erase(0, 1);
  typedAhead_ -= std::min<size_t>(typedAhead_, 1);
  return byte;
}

}  // namespace kelo::terminal
