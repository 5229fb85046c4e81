// The text of a parse as the recognisers read it: code points in one array.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "antlr4-runtime.h"

namespace kelo {

class ParsedText;

/// The code points of UTF-8 text without its byte order mark, or nothing when the bytes are no
/// valid UTF-8.
std::optional<std::u32string> decodeUtf8(std::string_view bytes);

/// The other way; REQUIRES: code points that decodeUtf8 gave.
std::string encodeUtf8(std::u32string_view text);

class SourceText final : public antlr4::CharStream {
 public:
  /// owner   the parse that the text belongs to
  SourceText(std::u32string text, const ParsedText* owner) : text_(std::move(text)), owner_(owner) {}

  const std::u32string& text() const { return text_; }
  const ParsedText& owner() const { return *owner_; }
  std::string slice(size_t first, size_t last) const;  ///< both inclusive, cut to the text

  void consume() override;
  size_t LA(ssize_t i) override;
  ssize_t mark() override { return -1; }
  void release(ssize_t) override {}
  size_t index() override { return position_; }
  void seek(size_t index) override { position_ = std::min(index, text_.size()); }
  size_t size() override { return text_.size(); }
  std::string getSourceName() const override { return "text"; }
  std::string getText(const antlr4::misc::Interval& interval) override;
  std::string toString() const override { return encodeUtf8(text_); }

 private:
  std::u32string text_;
  const ParsedText* owner_;
  size_t position_ = 0;
};

}  // namespace kelo
