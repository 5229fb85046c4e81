// The keyboard as it is played: keys with their taps, and what comes of them.
#include <gtest/gtest.h>

#include <numeric>
#include <set>
#include <sstream>

#include "keyboard/keyboard_view_controller.h"

namespace kelo {
namespace {

using Type = KeyboardViewController::KeyboardType;
using Tap = KeyboardViewController::Tap;

/// Plays words such as "a", "shift", "shift:double"; gives the text, "<" for delete and "|" for
/// enter, then the state.
std::string played(const std::string& script) {
  KeyboardViewController keyboard;
  std::istringstream words(script);
  std::string out;
  for (std::string word; words >> word;) {
    const size_t colon = word.find(':');
    const Tap tap = colon == std::string::npos ? Tap::single : *tapNamed(word.substr(colon + 1));
    const auto effect = keyboard.press(*keyNamed(word.substr(0, colon)), tap);
    out += effect.insert.value_or("");
    if (effect.action) out += *effect.action == KeyAction::deleteBackward ? "<" : "|";
  }
  return out + " " + std::string(nameOf(keyboard.keyboardType)) + (keyboard.capLocked ? " locked" : "");
}

TEST(Keyboard, PressesGiveTextAndState) {
  const struct {
    const char *script, *expected;
  } kRows[] = {
      {"a space b", "a b alpha"},
      {"shift A b", "Ab alpha"},
      {"shift shift", " alpha"},
      {"shift space", "  alpha"},                                     // any character key ends a single shift
      {"shift enter deleteBackward", "|< alphaCap"},                  // these two do not
      {"shift shift:double A B enter", "AB| alphaCap locked"},
      {"shift shift:double A shift", "A alpha"},
      {"shift shift:double shift shift", " alphaCap"},
      {"shift:long A", "A alphaCap locked"},
      {"shift shift:double numKeyboard abc", " alpha"},               // the symbols clear the lock
      {"numKeyboard num1 dot num5 plus divide", "1.5+/ symbol"},
      {"a:double a:double", "aa alpha"},
      {"lpar:long lSqb:long or:long", ")]|| alpha"},
      {"shift Q:long b", "1b alpha"},
      {"num7:long exclaim:long", "7! alpha"},                         // nothing beside them: the key itself
      {"deleteBackward:long dismiss", "< alpha"},
  };
  for (const auto& row : kRows) EXPECT_EQ(played(row.script), row.expected) << row.script;
  EXPECT_FALSE(keyNamed("none"));
  EXPECT_FALSE(tapNamed("triple"));
  EXPECT_FALSE(keyboardTypeNamed("Alpha"));
}

TEST(Keyboard, LayoutsAreWholeAndFillTheirRows) {
  for (const Type type : {Type::alpha, Type::alphaCap, Type::symbol}) {
    for (const auto& row : KeyboardViewController::rows(type)) {
      int units = 0;
      for (const auto& key : row) {
        units += key.info.widthUnit;
        EXPECT_NE(key.info.textStates.has_value(), key.info.imageStates.has_value()) << nameOf(key.id);
        EXPECT_NE(key.info.char_.has_value(), key.info.action.has_value()) << nameOf(key.id);
        const std::set<std::string> different(key.info.longPress.begin(), key.info.longPress.end());
        EXPECT_EQ(different.size(), key.info.longPress.size()) << nameOf(key.id);
        EXPECT_FALSE(different.contains(charOf(key.id))) << nameOf(key.id);
      }
      EXPECT_EQ(units, kRowUnits);
    }
  }
  EXPECT_EQ(alphaCapKeyboard()[2].back(), KeyIdentifier::equal);
  EXPECT_EQ(alphaKeyboard()[2].back(), KeyIdentifier::semicolon);
  const auto image = [](Type type) {
    return KeyboardViewController::rows(type)[2][0].info.imageStates->normal.imageName;
  };
  EXPECT_EQ(image(Type::alpha), "shift");
  EXPECT_EQ(image(Type::alphaCap), "shift.fill");
}

TEST(Keyboard, EveryKeyHasItsNameAndLooks) {
  std::set<std::string_view> names;
  for (int k = 0; k <= static_cast<int>(KeyIdentifier::dismiss); ++k) {
    const auto key = static_cast<KeyIdentifier>(k);
    EXPECT_EQ(keyNamed(nameOf(key)), key);
    names.insert(nameOf(key));
    const Info info = infoOf(key, 1, false);
    EXPECT_TRUE(info.action || info.char_ != "" || key == KeyIdentifier::dismiss) << nameOf(key);
  }
  EXPECT_EQ(names.size(), 101u);
}

}  // namespace
}  // namespace kelo
