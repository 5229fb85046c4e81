#include "figures/drawing/theme.h"

#include <cmath>

namespace kelo::drawing {
namespace {

constexpr Rgba rgb(uint32_t code) {
  return {static_cast<uint8_t>(code >> 16), static_cast<uint8_t>(code >> 8), static_cast<uint8_t>(code), 255};
}

uint8_t channel(double value) { return static_cast<uint8_t>(std::lround(std::fmin(std::fmax(value, 0), 1) * 255)); }

Rgba resolved(const figures::Color& color) {
  return {channel(color.red), channel(color.green), channel(color.blue), channel(color.alpha)};
}

/// The models carry the light values.
std::array<Rgba, 14> lightRoles() {
  std::array<Rgba, 14> roles{};
  for (size_t i = 1; i < roles.size(); ++i) roles[i] = resolved(figures::Color(static_cast<figures::ColorRole>(i)));
  return roles;
}

double luminance(Rgba color) {
  const auto linear = [](uint8_t channel) {
    const double c = channel / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

}  // namespace

Rgba Theme::operator()(const figures::Color& color) const {
  return color.role == figures::ColorRole::none ? resolved(color) : roles[static_cast<size_t>(color.role)];
}

const Theme& Theme::light() {
  static const Theme theme = {"light",       rgb(0xffffff), rgb(0xffffff), rgb(0x85878c), rgb(0x4c4e54),
                              rgb(0x1d1e21), rgb(0xd3d4d8), rgb(0xf7f7f9), lightRoles()};
  return theme;
}

// Black is the ink here: a line drawn in it must be seen.
const Theme& Theme::dark() {
  static const Theme theme = {
      "dark",        rgb(0x18191b), rgb(0x18191b), rgb(0x85888f), rgb(0xb9bbc1),
      rgb(0xececef), rgb(0x3b3d42), rgb(0x1f2023),
      {Rgba{}, rgb(0x5aa0ff), rgb(0xff6464), rgb(0xffa24a), rgb(0xb48cf2), rgb(0xff86c8), rgb(0x46c96b), rgb(0x3cc6d6),
       rgb(0xf0d34e), rgb(0x3d3f44), rgb(0x18191b), rgb(0xececef), rgb(0xffffff), Rgba{}}};
  return theme;
}

const Theme* Theme::named(std::string_view name) {
  if (name == light().name) return &light();
  return name == dark().name ? &dark() : nullptr;
}

double contrast(Rgba a, Rgba b) {
  const double la = luminance(a) + 0.05, lb = luminance(b) + 0.05;
  return la > lb ? la / lb : lb / la;
}

Rgba mixed(Rgba a, Rgba b, double share) {
  const auto mix = [&](uint8_t from, uint8_t to) {
    return static_cast<uint8_t>(std::lround(from + (to - from) * share));
  };
  return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), 255};
}

}  // namespace kelo::drawing
