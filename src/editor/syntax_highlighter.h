// The colours of program text.
//
// Each syntax type has patterns, and the types are painted in their order, a later one over an
// earlier one. That order is the masking: a keyword inside a text or a comment ends in the colour
// of the text or comment, and a "%" inside a text begins a comment (NOTE: intended). What is
// finally seen at a unit is therefore the last type that matches there.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo {

class SyntaxHighlighter {
 public:
  enum class SyntaxType : uint8_t {
    number,
    url,
    builtInFunction,
    keyword,
    endIndex,
    returnKeyword,
    continueKeyword,
    breakKeyword,
    function,
    characterArray,
    comments
  };

  /// A range of one type, in UTF-16 units.
  struct Span {
    int64_t start, length;
    SyntaxType type;
    friend bool operator==(const Span&, const Span&) = default;
  };

  /// functionNames   of the built-in functions; absent: `builtInFunction` colours nothing
  explicit SyntaxHighlighter(std::optional<std::vector<std::string>> functionNames);
  ~SyntaxHighlighter();

  /// What is finally seen, in order: neighbouring matches of one type are one span, the default
  /// colour is left out. The text of the last call is remembered, and only what can have changed
  /// since is looked at again.
  std::vector<Span> highlightAll(std::string_view text);

  static const char* nameOf(SyntaxType type);
  /// The colour's role, such as "system blue".
  static const char* colorOf(SyntaxType type);

  /// A word pattern for each built-in function.
  const std::optional<std::vector<std::string>> functionRegexPatterns;

 private:
  struct Rules;

  using Paint = std::function<void(SyntaxType type, size_t first, size_t last)>;

  void repaint(size_t begin, size_t end);
  void highlight(SyntaxType type, std::u16string_view text, size_t from, const Paint& paint) const;
  std::vector<Span> spans() const;

  std::unique_ptr<Rules> rules_;
  std::u16string text_;
  std::vector<uint8_t> painted_;  // for each unit of text_: 0, or 1 + the type
};

}  // namespace kelo
