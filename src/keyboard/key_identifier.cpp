#include "keyboard/key_identifier.h"

#include <algorithm>
#include <array>

namespace kelo {
namespace {

// In the order of the enumeration.
constexpr std::array<std::string_view, 101> kNames = {
    // clang-format off
    "a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m",
    "n", "o", "p", "q", "r", "s", "t", "u", "v", "w", "x", "y", "z",
    "A", "B", "C", "D", "E", "F", "G", "H", "I", "J", "K", "L", "M",
    "N", "O", "P", "Q", "R", "S", "T", "U", "V", "W", "X", "Y", "Z",
    "num0", "num1", "num2", "num3", "num4", "num5", "num6", "num7", "num8", "num9",
    "dot", "deleteBackward", "shift", "space", "multiply", "plus", "minus", "divide", "enter", "lSqb", "rSqb", "lpar",
    "rpar", "colon", "semicolon", "equal", "comma", "power", "lt", "gt", "tilde", "exclaim", "underScore", "at",
    "singleQuote", "percent", "or", "and", "question", "forwardSlash", "backwardSlash", "lCurlBracket",
    "rCurlBracket", "dollar", "doubleQuote", "hash", "abc", "numKeyboard", "dismiss"
    // clang-format on
};
static_assert(kNames.size() == static_cast<size_t>(KeyIdentifier::dismiss) + 1);

}  // namespace

std::string_view nameOf(KeyIdentifier key) { return kNames[static_cast<size_t>(key)]; }

std::optional<KeyIdentifier> keyNamed(std::string_view name) {
  const auto found = std::ranges::find(kNames, name);
  if (found == kNames.end()) return std::nullopt;
  return static_cast<KeyIdentifier>(found - kNames.begin());
}

}  // namespace kelo
