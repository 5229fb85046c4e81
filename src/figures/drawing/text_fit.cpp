#include "figures/drawing/text_fit.h"

#include <utf8proc.h>

namespace kelo::drawing {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
/// No label shows more; a text of a page is cut before it is measured.
constexpr size_t kMostCodePoints = 4000;

bool isControl(char32_t c) {
  if (c < 0x20 || (c >= 0x7f && c < 0xa0)) return true;
  return c == 0x2028 || c == 0x2029 || c == 0xFFFE || c == 0xFFFF;
}

std::string encoded(std::u32string_view text) {
  std::string bytes;
  utf8proc_uint8_t buffer[4];
  for (const char32_t c : text) {
    const utf8proc_ssize_t length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(c), buffer);
    bytes.append(reinterpret_cast<const char*>(buffer), static_cast<size_t>(length));
  }
  return bytes;
}

std::u32string trimmed(std::u32string text) {
  const size_t first = text.find_first_not_of(U' ');
  if (first == std::u32string::npos) return {};
  return text.substr(first, text.find_last_not_of(U' ') + 1 - first);
}

std::u32string cleaned(std::u32string text) {
  for (char32_t& c : text) {
    if (isControl(c)) c = U' ';
  }
  return trimmed(std::move(text));
}

/// The longest beginning, in code points, that is no wider.
size_t longestFit(const std::u32string& text, const platform::FontMeasure& measure, double size, double maxWidth) {
  size_t low = 0, high = text.size();
  while (low < high) {
    const size_t middle = (low + high + 1) / 2;
    const bool fits = measure.width(encoded(text.substr(0, middle)), size) <= maxWidth;
    (fits ? low : high) = fits ? middle : middle - 1;
  }
  return low;
}

std::string cut(const std::u32string& text, const platform::FontMeasure& measure, double size, double maxWidth) {
  if (measure.width(encoded(text), size) <= maxWidth) return encoded(text);
  const double room = maxWidth - measure.width("…", size);
  const size_t length = room < 0 ? 0 : longestFit(text, measure, size, room);
  return length == 0 ? "" : encoded(trimmed(text.substr(0, length))) + "…";
}

}  // namespace

std::u32string codePoints(std::string_view utf8) {
  std::u32string result;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(utf8.data());
  size_t at = 0;
  while (at < utf8.size() && result.size() < kMostCodePoints) {
    utf8proc_int32_t c = 0;
    const utf8proc_ssize_t length = utf8proc_iterate(bytes + at, static_cast<utf8proc_ssize_t>(utf8.size() - at), &c);
    result.push_back(length > 0 ? static_cast<char32_t>(c) : kReplacement);
    at += length > 0 ? static_cast<size_t>(length) : 1;
  }
  return result;
}

std::string cleanLine(std::string_view utf8) { return encoded(cleaned(codePoints(utf8))); }

std::string fitted(std::string_view utf8, const platform::FontMeasure& measure, double size, double maxWidth) {
  return cut(cleaned(codePoints(utf8)), measure, size, maxWidth);
}

std::vector<std::string> wrapped(std::string_view utf8, const platform::FontMeasure& measure, double size,
                                 double maxWidth, size_t maxLines) {
  std::vector<std::string> lines;
  std::u32string rest = codePoints(utf8);
  while (!rest.empty() && lines.size() < maxLines) {
    const size_t lineEnd = rest.find(U'\n');
    std::u32string line = cleaned(rest.substr(0, lineEnd));
    std::u32string behind = lineEnd == std::u32string::npos ? U"" : rest.substr(lineEnd + 1);
    const size_t fits = longestFit(line, measure, size, maxWidth);
    if (fits < line.size() && lines.size() + 1 < maxLines) {
      const size_t blank = line.rfind(U' ', fits);
      const size_t end = blank == std::u32string::npos || blank == 0 ? std::max<size_t>(fits, 1) : blank;
      behind = line.substr(end) + (behind.empty() ? U"" : U"\n" + behind);
      line.resize(end);
    }
    std::string text = cut(line, measure, size, maxWidth);
    if (!text.empty()) lines.push_back(std::move(text));
    rest = trimmed(std::move(behind));
  }
  return lines;
}

}  // namespace kelo::drawing
