// The on-screen keyboard: its layouts, its state, and what a press does.
//
// A press changes the state and gives what goes into the text. Whether the text view takes that in
// does not matter to the keyboard: a single shift lasts for one character key in either case.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "keyboard/key_info.h"
#include "keyboard/layouts.h"

namespace kelo {

class KeyboardViewController {
 public:
  enum class KeyboardType : uint8_t { alpha, alphaCap, symbol };
  /// A double tap comes with its second tap; the first one came as a single tap.
  enum class Tap : uint8_t { single, double_, long_ };

  /// What a press means for the text: at most one of the two.
  struct Effect {
    std::optional<std::string> insert;
    std::optional<KeyAction> action;  ///< `deleteBackward` or `enter`
  };

  struct Key {
    KeyIdentifier id;
    Info info;
  };

  Effect press(KeyIdentifier key, Tap tap);

  /// The keys of a layout with their looks, row by row.
  static std::vector<std::vector<Key>> rows(KeyboardType type);

  KeyboardType keyboardType = KeyboardType::alpha;
  bool capLocked = false;

 private:
  void show(KeyboardType type);
  std::optional<KeyAction> perform(KeyAction action);
};

std::string_view nameOf(KeyboardViewController::KeyboardType type);
std::optional<KeyboardViewController::KeyboardType> keyboardTypeNamed(std::string_view name);
/// "single", "double", "long".
std::optional<KeyboardViewController::Tap> tapNamed(std::string_view name);

}  // namespace kelo
