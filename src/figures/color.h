// Colours of a figure: four channels and, for the named adaptive ones, the role by which a theme
// finds its own value.
//
// A role's channels here are those of the light theme; what draws asks the theme by role and takes
// the channels of a colour that has none.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kelo::figures {

enum class ColorRole : uint8_t {
  none, systemBlue, systemRed, systemOrange, systemPurple, systemPink, systemGreen, systemTeal, systemYellow,
  opaqueSeparator, systemBackground, black, white, clear,
};

/// Channels from 0 to 1. Two colours are equal when all channels are; the role does not count.
struct Color {
  double red = 0, green = 0, blue = 0, alpha = 1;
  ColorRole role = ColorRole::none;

  Color() = default;
  /// The adaptive colour of a role. REQUIRES: not `none`
  Color(ColorRole role);
  constexpr Color(double red, double green, double blue, double alpha = 1)
      : red(red), green(green), blue(blue), alpha(alpha) {}

  friend bool operator==(const Color& a, const Color& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha;
  }
  bool isClear() const { return *this == Color(0, 0, 0, 0); }
};

/// "system blue", "opaque separator", "clear"; "" for `none`.
std::string_view nameOf(ColorRole role);
/// The role of such a name; absent for any other text and for "".
std::optional<ColorRole> roleNamed(std::string_view name);

/// The default colour of the line with the running number n, from 0: eight colours in turn, blue
/// first.
Color nextCycleColor(int64_t n);

/// A colour that the settings of a line offer, with its text there.
struct DefaultColor {
  std::string_view text;
  ColorRole role;
};
/// Orange, red, black, purple, yellow, blue, green, cyan, magenta, white, clear.
extern const std::array<DefaultColor, 11> kDefaultColors;

}  // namespace kelo::figures
