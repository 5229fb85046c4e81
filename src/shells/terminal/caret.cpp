#include "shells/terminal/caret.h"

#include <utf8proc.h>

#include <cstdint>
#include <optional>

namespace kelo::terminal {
namespace {

std::optional<std::string> lineOf(const std::string& text, int lineNum) {
  size_t begin = 0;
  for (int k = 1; k < lineNum; ++k) {
    const size_t end = text.find('\n', begin);
    if (end == std::string::npos) return std::nullopt;
    begin = end + 1;
  }
  std::string line = text.substr(begin, text.find('\n', begin) - begin);
  while (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

/// What takes the place of one code point in the caret's line.
std::string blankFor(utf8proc_int32_t codePoint) {
  if (codePoint == '\t') return "\t";
  return std::string(static_cast<size_t>(utf8proc_charwidth(codePoint)), ' ');
}

}  // namespace

std::string caretExcerpt(const std::string& text, int lineNum, int charPos) {
  constexpr size_t kLongestLine = 500;  // bytes; a longer one would fill the screen
  const std::optional<std::string> line = lineOf(text, lineNum);
  if (!line || line->empty() || line->size() > kLongestLine) return "";
  std::string blanks;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(line->data());
  auto left = static_cast<utf8proc_ssize_t>(line->size());
  for (int k = 0; k < charPos && left > 0; ++k) {
    utf8proc_int32_t codePoint;
    const utf8proc_ssize_t length = utf8proc_iterate(bytes, left, &codePoint);
    if (length <= 0) return "";
    blanks += blankFor(codePoint);
    bytes += length;
    left -= length;
  }
  return "    " + *line + "\n    " + blanks + "^";
}

}  // namespace kelo::terminal
