// UTF-8 to code points and back, and the stream of code points that the runtime's tokens refer to.
// Tested by tests/frontend/matlab_parser_test.cpp.
#include "frontend/source_text.h"

#include <utf8proc.h>

#include <algorithm>

namespace kelo {

std::optional<std::u32string> decodeUtf8(std::string_view bytes) {
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  std::u32string text;
  text.reserve(bytes.size() + 1);
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(bytes.data());
  const auto* end = at + bytes.size();
  while (at < end) {
    if (*at < 0x80) {
      text.push_back(*at++);
      continue;
    }
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(at, end - at, &codePoint);
    if (length <= 0) return std::nullopt;
    text.push_back(static_cast<char32_t>(codePoint));
    at += length;
  }
  return text;
}

std::string encodeUtf8(std::u32string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char32_t c : text) {
    if (c < 0x80) {
      bytes.push_back(static_cast<char>(c));
      continue;
    }
    utf8proc_uint8_t unit[4];
    const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(c), unit);
    bytes.append(reinterpret_cast<const char*>(unit), static_cast<size_t>(length));
  }
  return bytes;
}

std::string SourceText::slice(size_t first, size_t last) const {
  if (first >= text_.size() || last < first || last == antlr4::IntStream::EOF) return {};
  return encodeUtf8(std::u32string_view(text_).substr(first, last - first + 1));
}

void SourceText::consume() {
  if (position_ >= text_.size()) throw antlr4::IllegalStateException("cannot consume EOF");
  ++position_;
}

size_t SourceText::LA(ssize_t i) {
  if (i == 0) return 0;
  const ssize_t at = static_cast<ssize_t>(position_) + (i > 0 ? i - 1 : i);
  if (at < 0 || at >= static_cast<ssize_t>(text_.size())) return antlr4::IntStream::EOF;
  return text_[static_cast<size_t>(at)];
}

std::string SourceText::getText(const antlr4::misc::Interval& interval) {
  if (interval.a < 0 || interval.b < 0) return {};
  return slice(static_cast<size_t>(interval.a), static_cast<size_t>(interval.b));
}

}  // namespace kelo
