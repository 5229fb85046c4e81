// Regular expressions over UTF-16 text.
//
// Patterns are written as for the engine in which \w, \d and \s mean Unicode's word characters,
// decimal digits and white space; for the library they are spelled out, since its own classes leave
// out some marks and line ends.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace kelo {

class Regex {
 public:
  /// A pattern that is none matches nothing.
  explicit Regex(std::string_view pattern);
  ~Regex();
  Regex(Regex&&) noexcept;

  bool isValid() const { return code_ != nullptr; }

  /// Calls `found` with the ends of each match that begins at `start` or later, in order and
  /// without overlap. What stands before `start` is seen by look-behind. REQUIRES: text without
  /// lone surrogates
  void forEachMatch(std::u16string_view text, size_t start,
                    const std::function<void(size_t begin, size_t end)>& found) const;

 private:
  struct Code;
  std::unique_ptr<Code> code_;
};

}  // namespace kelo
