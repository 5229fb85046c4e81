#include "session/base64.h"

#include <cstdint>

namespace kelo::session {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string toBase64(std::string_view bytes) {
  std::string text;
  for (size_t k = 0; k < bytes.size(); k += 3) {
    const std::string_view group = bytes.substr(k, 3);
    uint32_t word = 0;
    for (size_t j = 0; j < 3; ++j) word = word << 8 | (j < group.size() ? static_cast<unsigned char>(group[j]) : 0U);
    for (size_t j = 0; j < 4; ++j) text += j <= group.size() ? kDigits[word >> (18 - 6 * j) & 63] : '=';
  }
  return text;
}

std::optional<std::string> fromBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  for (int k = 0; k < 2 && text.ends_with('='); ++k) text.remove_suffix(1);
  std::string bytes;
  uint32_t word = 0;
  for (size_t k = 0; k < text.size(); ++k) {
    const size_t digit = kDigits.find(text[k]);
    if (digit == std::string_view::npos) return std::nullopt;
    word = word << 6 | static_cast<uint32_t>(digit);
    if (k % 4 != 0) bytes += static_cast<char>(word >> (6 - 2 * (k % 4)) & 0xff);
  }
  return bytes;
}

}  // namespace kelo::session
