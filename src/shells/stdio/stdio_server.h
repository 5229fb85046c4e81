// The session over standard input and output: one message a line.
#pragma once

#include <string>

#include "shells/serve/machine.h"

namespace kelo::serve {

/// Serves until standard input ends and what was asked is done, or nobody reads standard output any
/// more. Returns the status to end with.
int serveStdio(const ServeOptions& options);

/// Cuts bytes into lines. A line beyond the limit of a message is cut: enough of it stays to be
/// refused.
class LineSplitter {
 public:
  template <class TakeLine>
  void add(std::string_view bytes, const TakeLine& takeLine) {
    for (size_t end = 0; (end = bytes.find('\n')) != std::string_view::npos; bytes.remove_prefix(end + 1)) {
      keep(bytes.substr(0, end));
      takeLine(line_);
      line_.clear();
    }
    keep(bytes);
  }
  /// What stands after the last line feed.
  const std::string& rest() const { return line_; }

 private:
  void keep(std::string_view bytes);

  std::string line_;
};

}  // namespace kelo::serve
