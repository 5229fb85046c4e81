#include "shells/stdio/output_buffer.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kelo::serve {
namespace {

constexpr size_t kPiece = 4096;  // a pipe that is ready takes as much without blocking
constexpr size_t kSpareBytes = size_t{1} << 20;

}  // namespace

void OutputBuffer::write(short events) {
  if ((events & (POLLERR | POLLNVAL)) != 0) hasReader_ = false;
  if ((events & POLLOUT) == 0 || size() == 0) return;
  const ssize_t count = ::write(STDOUT_FILENO, bytes_.data() + written_, std::min(size(), kPiece));
  if (count < 0 && errno != EINTR && errno != EAGAIN) hasReader_ = false;
  if (count > 0) written_ += static_cast<size_t>(count);
  if (size() > 0 && written_ < kSpareBytes) return;
  bytes_.erase(0, written_);
  written_ = 0;
}

}  // namespace kelo::serve
