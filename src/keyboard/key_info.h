// What is known of a key: how it looks, what it inserts, what it does.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "keyboard/key_identifier.h"

namespace kelo {

/// What a key does besides inserting its text.
enum class KeyAction : uint8_t { toggleShift, lockCapitals, showSymbols, showLetters, deleteBackward, enter };

/// The description of one key. Colours are roles, such as "label" and "KeyBackground".
struct Info {
  struct TextState {
    std::string displayText, textColor, bgColor;
  };
  struct TextStates {
    TextState normal, pressed;
  };
  struct ImageState {
    std::string imageName, tintColor, bgColor;
  };
  struct ImageStates {
    ImageState normal, pressed;
  };

  std::optional<TextStates> textStates;
  std::optional<ImageStates> imageStates;
  std::optional<std::string> char_;  ///< the text inserted
  int widthUnit = 0;                 ///< its share of the row is this by the sum of the row's units
  std::optional<KeyAction> action, doubleTapAction, longPressAction;
  std::vector<std::string> longPress;  ///< texts to choose from when the key is held; the first is the nearest at hand
};

/// isCapital   shown on the capital layout
Info infoOf(KeyIdentifier key, int widthUnit, bool isCapital);

/// The text that a key inserts; empty for a key that inserts none.
std::string charOf(KeyIdentifier key);

}  // namespace kelo
