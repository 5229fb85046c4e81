#include "keyboard/keyboard_view_controller.h"

#include <algorithm>
#include <array>

namespace kelo {
namespace {

constexpr std::array<std::string_view, 3> kTypeNames = {"alpha", "alphaCap", "symbol"};
constexpr std::array<std::string_view, 3> kTapNames = {"single", "double", "long"};

template <class Enum, size_t n>
std::optional<Enum> named(const std::array<std::string_view, n>& names, std::string_view name) {
  const auto found = std::ranges::find(names, name);
  if (found == names.end()) return std::nullopt;
  return static_cast<Enum>(found - names.begin());
}

const KeyRows& layoutOf(KeyboardViewController::KeyboardType type) {
  switch (type) {
    case KeyboardViewController::KeyboardType::alphaCap: return alphaCapKeyboard();
    case KeyboardViewController::KeyboardType::symbol: return symbolKeyboard();
    default: return alphaKeyboard();
  }
}

}  // namespace

KeyboardViewController::Effect KeyboardViewController::press(KeyIdentifier key, Tap tap) {
  const bool isCapital = keyboardType == KeyboardType::alphaCap;
  const Info info = infoOf(key, 0, isCapital);
  std::optional<KeyAction> action = info.action;
  if (tap == Tap::double_ && info.doubleTapAction) action = info.doubleTapAction;
  if (tap == Tap::long_ && info.longPressAction) action = info.longPressAction;
  if (action) return {std::nullopt, perform(*action)};
  if (!info.char_) return {};
  if (!capLocked && isCapital) keyboardType = KeyboardType::alpha;
  const bool isHeld = tap == Tap::long_ && !info.longPress.empty();
  return {isHeld ? info.longPress.front() : *info.char_, std::nullopt};
}

/// Gives the action back when it is the text's.
std::optional<KeyAction> KeyboardViewController::perform(KeyAction action) {
  switch (action) {
    case KeyAction::toggleShift:
      show(keyboardType == KeyboardType::alphaCap ? KeyboardType::alpha : KeyboardType::alphaCap);
      return std::nullopt;
    case KeyAction::lockCapitals:
      show(KeyboardType::alphaCap);
      capLocked = true;
      return std::nullopt;
    case KeyAction::showSymbols: show(KeyboardType::symbol); return std::nullopt;
    case KeyAction::showLetters: show(KeyboardType::alpha); return std::nullopt;
    default: return action;
  }
}

/// Every change of layout by a key ends the lock.
void KeyboardViewController::show(KeyboardType type) {
  keyboardType = type;
  capLocked = false;
}

std::vector<std::vector<KeyboardViewController::Key>> KeyboardViewController::rows(KeyboardType type) {
  const KeyRows& layout = layoutOf(type);
  const KeyWidthUnits units = keyWidthUnits(layout);
  std::vector<std::vector<Key>> rows;
  for (size_t row = 0; row < layout.size(); ++row) {
    rows.emplace_back();
    for (size_t k = 0; k < layout[row].size(); ++k) {
      const KeyIdentifier key = layout[row][k];
      rows.back().push_back({key, infoOf(key, units[row][k], type == KeyboardType::alphaCap)});
    }
  }
  return rows;
}

std::string_view nameOf(KeyboardViewController::KeyboardType type) { return kTypeNames[static_cast<size_t>(type)]; }

std::optional<KeyboardViewController::KeyboardType> keyboardTypeNamed(std::string_view name) {
  return named<KeyboardViewController::KeyboardType>(kTypeNames, name);
}

std::optional<KeyboardViewController::Tap> tapNamed(std::string_view name) {
  return named<KeyboardViewController::Tap>(kTapNames, name);
}

}  // namespace kelo
