// Coordinates in hundredths of a point, as the shortest text; the same on every machine.
#pragma once

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace kelo::pictures {

inline int64_t hundredths(double points) { return std::llround(points * 100); }

/// "12.5", "-.25", "0": no zero before the point, none at the end.
inline void appendHundredths(std::string& text, int64_t value) {
  if (value < 0) text += '-';
  const int64_t magnitude = value < 0 ? -value : value;
  char digits[24];
  if (magnitude >= 100 || magnitude == 0) {
    text.append(digits, std::to_chars(digits, digits + sizeof digits, magnitude / 100).ptr);
  }
  const auto rest = static_cast<int>(magnitude % 100);
  if (rest == 0) return;
  text += '.';
  text += static_cast<char>('0' + rest / 10);
  if (rest % 10 != 0) text += static_cast<char>('0' + rest % 10);
}

inline std::string numberText(double points) {
  std::string text;
  appendHundredths(text, hundredths(points));
  return text;
}

}  // namespace kelo::pictures
