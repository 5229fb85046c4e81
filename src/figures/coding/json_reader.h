// Reads JSON text as it goes along, without a tree: the caller says what it expects next, and
// anything else is a CodingError. A file of a million points is read at the speed of its numbers
// that way, and takes no more memory than the points.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "figures/coding/coding_error.h"

namespace kelo::figures {

class JsonReader {
 public:
  /// REQUIRES: the text outlives this
  explicit JsonReader(std::string_view text) : next_(text.data()), end_(text.data() + text.size()), begin_(next_) {}

  /// Always finite; out of the range of the type is an error.
  double number();
  float numberAsFloat();
  int64_t integer();
  bool boolean();
  std::string string();  ///< valid UTF-8
  /// Takes a null, when it is one that comes next.
  bool takeNull();
  bool nextIsString() { return peek() == '"'; }

  /// Calls member(key) for each member; it must read the value.
  template <class F>
  void object(F&& member) {
    list('{', '}', [&] {
      const std::string key = string();
      take(':');
      member(std::string_view(key));
    });
  }
  /// Calls element() for each element; it must read it.
  template <class F>
  void array(F&& element) {
    list('[', ']', element);
  }
  /// Reads any value and drops it.
  void skip();
  /// Nothing may follow.
  void finish();

  [[noreturn]] void fail(const char* what) const;

 private:
  /// The first character of what comes next, after blanks; 0 at the end.
  char peek() {
    while (next_ != end_ && (*next_ == ' ' || *next_ == '\n' || *next_ == '\t' || *next_ == '\r')) ++next_;
    return next_ == end_ ? '\0' : *next_;
  }
  void take(char c) {
    if (peek() != c) fail(c == '"' ? "a text is expected" : "another sign is expected");
    ++next_;
  }
  template <class F>
  void list(char open, char close, F&& item) {
    take(open);
    if (peek() == close) {
      ++next_;
      return;
    }
    while (true) {
      item();
      if (peek() != ',') break;
      ++next_;
    }
    take(close);
  }
  template <class T> T numberOf();
  bool takeWord(std::string_view word);
  void appendEscape(std::string& out);
  char32_t hexUnit();

  const char* next_;
  const char* end_;
  const char* begin_;
  int depth_ = 0;  // of what is skipped
};

}  // namespace kelo::figures
