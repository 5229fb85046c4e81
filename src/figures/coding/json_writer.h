// Writes JSON text, compactly, straight into a string. Numbers have as many digits as they need to
// come back the same.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelo::figures {

/// What becomes of a number that is NaN or infinite, which JSON does not know: the coding fails, or
/// null is written.
enum class NonFinite { refused, asNull };

class JsonWriter {
 public:
  explicit JsonWriter(NonFinite nonFinite) : nonFinite_(nonFinite) {}

  /// throws CodingError for a number that is refused
  void number(double x);
  void number(float x);
  void integer(int64_t n);
  void boolean(bool b) { text_ += b ? "true" : "false"; }
  void null() { text_ += "null"; }
  void string(std::string_view utf8);
  /// Brackets, commas and colons are the caller's: '{', ',', ...
  void mark(char c) { text_ += c; }
  void reserve(size_t bytes) { text_.reserve(text_.size() + bytes); }

  std::string take() { return std::move(text_); }

 private:
  template <class T> void shortest(T x);

  std::string text_;
  NonFinite nonFinite_;
};

}  // namespace kelo::figures
