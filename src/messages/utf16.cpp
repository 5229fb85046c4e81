#include "messages/utf16.h"

#include <utf8proc.h>

namespace kelo {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t codePoint) {
  utf8proc_uint8_t bytes[4];
  const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(codePoint), bytes);
  out.append(reinterpret_cast<const char*>(bytes), static_cast<size_t>(length));
}

bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

}  // namespace

// Every byte that begins a code point gives a unit, and those that begin one above the basic plane
// give two.
int64_t utf16Length(std::string_view utf8) {
  int64_t units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    units += (byte & 0xC0) != 0x80;
    units += byte >= 0xF0;
  }
  return units;
}

std::u16string toUtf16(std::string_view utf8) {
  std::u16string units;
  units.reserve(utf8.size());
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(utf8.data());
  const auto* end = at + utf8.size();
  while (at < end) {
    if (*at < 0x80) {
      units.push_back(*at++);
      continue;
    }
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(at, end - at, &codePoint);
    at += length > 0 ? length : 1;
    if (length <= 0) codePoint = kReplacement;
    if (codePoint >= 0x10000) {
      units.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
    } else {
      units.push_back(static_cast<char16_t>(codePoint));
    }
  }
  return units;
}

std::string toUtf8(std::u16string_view units) {
  std::string bytes;
  bytes.reserve(units.size());
  for (size_t k = 0; k < units.size(); ++k) {
    const char16_t unit = units[k];
    if (unit < 0x80) {
      bytes.push_back(static_cast<char>(unit));
    } else if (isHighSurrogate(unit) && k + 1 < units.size() && isLowSurrogate(units[k + 1])) {
      appendUtf8(bytes, 0x10000 + ((unit - 0xD800u) << 10) + (units[++k] - 0xDC00u));
    } else {
      appendUtf8(bytes, isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit);
    }
  }
  return bytes;
}

}  // namespace kelo
