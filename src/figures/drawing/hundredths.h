// Coordinates in hundredths of a point as short texts, the same on every machine.
#pragma once

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace kelo::drawing {

inline int64_t hundredths(double points) { return std::llround(points * 100); }

/// "12.5", "-.25", "0": no zero at the end, and none before the point unless `leadingZero`.
inline void appendHundredths(std::string& text, int64_t value, bool leadingZero = false) {
  if (value < 0) text += '-';
  const int64_t magnitude = value < 0 ? -value : value;
  char digits[24];
  if (leadingZero || magnitude >= 100 || magnitude == 0) {
    text.append(digits, std::to_chars(digits, digits + sizeof digits, magnitude / 100).ptr);
  }
  const auto rest = static_cast<int>(magnitude % 100);
  if (rest == 0) return;
  text += '.';
  text += static_cast<char>('0' + rest / 10);
  if (rest % 10 != 0) text += static_cast<char>('0' + rest % 10);
}

inline std::string hundredthsText(double points) {
  std::string text;
  appendHundredths(text, hundredths(points));
  return text;
}

}  // namespace kelo::drawing
