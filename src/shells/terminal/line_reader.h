// Lines of standard input, read without waiting, so that the main thread can serve its queue between them.
#pragma once

#include <optional>
#include <string>

namespace kelo::terminal {

class LineReader {
 public:
  static constexpr int kDescriptor = 0;

  /// A line is there, or the input has ended: nextLine will not wait for the terminal or the pipe.
  bool hasLine() const { return ended_ || buffer_.find('\n') != std::string::npos; }
  /// Takes what the descriptor has, waiting for something if need be. False when a signal interrupted it.
  bool fill();
  /// The next line without its line end; nothing at the end of the input. REQUIRES: hasLine()
  std::optional<std::string> nextLine();
  /// All that is left, waiting for the end. Nothing when reading failed or Ctrl-C was pressed meanwhile.
  std::optional<std::string> rest();
  /// Why reading failed; empty when it did not.
  const std::string& fault() const { return fault_; }

 private:
  std::string buffer_;
  std::string fault_;
  bool ended_ = false;
};

}  // namespace kelo::terminal
