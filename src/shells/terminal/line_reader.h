// Standard input as lines and bytes, read without waiting, so that the main thread can serve its
// queue between them. It is the only one that reads there.
#pragma once

#include <optional>
#include <string>

namespace kelo::terminal {

class LineReader {
 public:
  static constexpr int kDescriptor = 0;

  // ---- Lines: answers of `input`

  /// A line is there, or the input has ended: nextLine will not wait for the terminal or the pipe.
  bool hasLine() const { return ended_ || buffer_.find('\n') != std::string::npos; }
  /// Takes what the descriptor has, waiting for something if need be, but not after a signal.
  void fill();
  /// The next line without its line end; nothing at the end of the input, which at a terminal is no
  /// lasting one.
  /// REQUIRES: hasLine()
  std::optional<std::string> nextLine();
  /// All that is left, waiting for the end. Nothing when reading failed or `interrupt` became
  /// readable meanwhile.
  std::optional<std::string> rest(int interrupt);

  // ---- Keys: what ends a pause

  /// A pause begins: what has been typed so far at a terminal is meant for what comes after it.
  void keepTypedAhead();
  /// A line is there that has been typed since then, or the input has ended.
  bool hasKey() const { return ended_ || buffer_.find('\n', typedAhead_) != std::string::npos; }
  /// Takes that line; false at the end of the input. REQUIRES: hasKey()
  bool takeKey();

  // ---- Bytes: for the line editor

  bool hasByte() const { return !buffer_.empty(); }
  /// The next byte, waiting for it; nothing at the end of the input.
  std::optional<unsigned char> nextByte();

  /// Why reading failed; empty when it did not.
  const std::string& fault() const { return fault_; }

 private:
  void meetEnd();

  std::string buffer_;
  size_t typedAhead_ = 0;  // bytes of the buffer that end no pause
  std::string fault_;
  bool ended_ = false;
};

}  // namespace kelo::terminal
