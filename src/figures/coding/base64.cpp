#include "figures/coding/base64.h"

#include <array>
#include <cstdint>

namespace kelo::figures {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr uint8_t kNoDigit = 64;

constexpr std::array<uint8_t, 256> valuesOfDigits() {
  std::array<uint8_t, 256> values{};
  values.fill(kNoDigit);
  for (size_t k = 0; k < kDigits.size(); ++k) values[static_cast<uint8_t>(kDigits[k])] = static_cast<uint8_t>(k);
  return values;
}
constexpr std::array<uint8_t, 256> kValues = valuesOfDigits();

}  // namespace

std::string base64Of(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) {
    uint32_t group = 0;
    for (size_t k = i; k < i + 3; ++k) group = group << 8 | (k < bytes.size() ? static_cast<uint8_t>(bytes[k]) : 0);
    for (int shift = 18; shift >= 0; shift -= 6) text += kDigits[group >> shift & 63];
  }
  const size_t missing = (3 - bytes.size() % 3) % 3;
  text.replace(text.size() - missing, missing, missing, '=');
  return text;
}

std::optional<std::string> bytesOfBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  size_t padding = 0;
  while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == '=') ++padding;
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  uint32_t group = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isPadding = i >= text.size() - padding;
    const uint8_t value = isPadding ? 0 : kValues[static_cast<uint8_t>(text[i])];
    if (value == kNoDigit) return std::nullopt;
    group = group << 6 | value;
    if (i % 4 != 3) continue;
    for (int shift = 16; shift >= 0; shift -= 8) bytes += static_cast<char>(group >> shift & 255);
  }
  for (; padding > 0; --padding) {
    if (bytes.back() != 0) return std::nullopt;
    bytes.pop_back();
  }
  return bytes;
}

}  // namespace kelo::figures
