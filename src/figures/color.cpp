// The roles and their light values. Each value of a line stands off white by at least 3:1.
#include "figures/color.h"

#include <algorithm>

namespace kelo::figures {
namespace {

struct Role {
  std::string_view name;
  Color light;
};

constexpr Color rgb(int code) {
  return {(code >> 16 & 255) / 255.0, (code >> 8 & 255) / 255.0, (code & 255) / 255.0};
}

// In the order of ColorRole.
constexpr std::array<Role, 14> kRoles = {{
    {"", rgb(0)},
    {"system blue", rgb(0x1f6fd6)},
    {"system red", rgb(0xd1343f)},
    {"system orange", rgb(0xc66a00)},
    {"system purple", rgb(0x8449c8)},
    {"system pink", rgb(0xd0388c)},
    {"system green", rgb(0x23863c)},
    {"system teal", rgb(0x0d8591)},
    {"system yellow", rgb(0xa68400)},
    {"opaque separator", rgb(0xc8c8cc)},
    {"system background", rgb(0xffffff)},
    {"black", rgb(0)},
    {"white", rgb(0xffffff)},
    {"clear", {0, 0, 0, 0}},
}};

constexpr std::array<ColorRole, 8> kCycle = {
    ColorRole::systemBlue, ColorRole::systemRed,   ColorRole::systemOrange, ColorRole::systemPurple,
    ColorRole::systemPink, ColorRole::systemGreen, ColorRole::systemTeal,   ColorRole::systemYellow,
};

}  // namespace

Color::Color(ColorRole role) : Color(kRoles[static_cast<size_t>(role)].light) { this->role = role; }

std::string_view nameOf(ColorRole role) { return kRoles[static_cast<size_t>(role)].name; }

std::optional<ColorRole> roleNamed(std::string_view name) {
  const auto found = std::find_if(kRoles.begin(), kRoles.end(), [&](const Role& role) { return role.name == name; });
  if (name.empty() || found == kRoles.end()) return std::nullopt;
  return static_cast<ColorRole>(found - kRoles.begin());
}

Color nextCycleColor(int64_t n) { return kCycle[static_cast<size_t>(n) % kCycle.size()]; }

const std::array<DefaultColor, 11> kDefaultColors = {{
    {"Orange", ColorRole::systemOrange},
    {"Red", ColorRole::systemRed},
    {"Black", ColorRole::black},
    {"Purple", ColorRole::systemPurple},
    {"Yellow", ColorRole::systemYellow},
    {"Blue", ColorRole::systemBlue},
    {"Green", ColorRole::systemGreen},
    {"Cyan", ColorRole::systemTeal},
    {"Magenta", ColorRole::systemPink},
    {"White", ColorRole::white},
    {"Clear", ColorRole::clear},
}};

}  // namespace kelo::figures
