// Secrets of 256 bits: the token of the address and the value of the cookie.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace kelo::web {

class Secret {
 public:
  /// A new one from the system's random numbers. throws std::system_error, when there are none
  static Secret random();

  /// One that was kept; nothing for a text that is none.
  static std::optional<Secret> fromText(std::string text);

  /// 43 letters, digits, "-" and "_".
  const std::string& text() const { return text_; }
  /// In a time that does not tell how much of it agrees.
  bool matches(std::string_view candidate) const;

 private:
  explicit Secret(std::string text) : text_(std::move(text)) {}
  std::string text_;
};

/// Lets so many failed tries through in a while.
class TryLimit {
 public:
  static constexpr size_t kTries = 10;
  static constexpr double kSeconds = 60;

  /// now   monotonic seconds
  bool allows(double now);
  void failed(double now) { failures_.push_back(now); }

 private:
  std::deque<double> failures_;
};

}  // namespace kelo::web
