#include "keyboard/key_info.h"

#include <algorithm>
#include <array>

namespace kelo {
namespace {

using enum KeyIdentifier;

/// A key of the symbols: what it inserts, the image on it (otherwise its text), and what holding it
/// offers. Brackets offer their partner and the pair, operators their element-wise and comparing
/// relatives.
struct SymbolRow {
  KeyIdentifier key;
  const char *text, *image;
  std::vector<std::string> longPress;
};

const SymbolRow kSymbols[] = {
    {dot, ".", nullptr, {"...", ".*", "./", ".^", ".'"}},
    {space, " ", nullptr, {}},
    {multiply, "*", "multiply", {".*"}},
    {plus, "+", "plus", {}},
    {minus, "-", "minus", {}},
    {divide, "/", "divide", {"./"}},
    {lSqb, "[", nullptr, {"]", "[]", "{", "}"}},
    {rSqb, "]", nullptr, {"[", "}", "{"}},
    {lpar, "(", nullptr, {")", "()", "(:)"}},
    {rpar, ")", nullptr, {"(", ");"}},
    {colon, ":", nullptr, {"(:)", ":end"}},
    {semicolon, ";", nullptr, {":"}},
    {equal, "=", nullptr, {"==", "~=", "<=", ">="}},
    {comma, ",", nullptr, {".", "'"}},
    {power, "^", nullptr, {".^", "^2", "^-1"}},
    {lt, "<", nullptr, {"<="}},
    {gt, ">", nullptr, {">="}},
    {tilde, "~", nullptr, {"~="}},
    {exclaim, "!", nullptr, {}},
    {underScore, "_", nullptr, {}},
    {at, "@", nullptr, {"@(x) ", "@(x, y) "}},
    {singleQuote, "'", nullptr, {"''", ".'", "\""}},
    {percent, "%", nullptr, {"%% ", "#", "$"}},
    {or_, "|", nullptr, {"||"}},
    {and_, "&", nullptr, {"&&"}},
    {question, "?", nullptr, {}},
    {forwardSlash, "/", nullptr, {"./"}},
    {backwardSlash, "\\", nullptr, {".\\", "\\n"}},
    {lCurlBracket, "{", nullptr, {"}"}},
    {rCurlBracket, "}", nullptr, {"{"}},
    {dollar, "$", nullptr, {}},
    {doubleQuote, "\"", nullptr, {}},
    {hash, "#", nullptr, {}},
};

/// What holding a letter offers first: digits on the top row, then what is needed most without
/// leaving the letters.
constexpr std::string_view kLetters = "qwertyuiopasdfghjklzxcvbnm";
constexpr std::string_view kBesides = "1234567890@&+-*/^<>~|.'_%!";
static_assert(kLetters.size() == kBesides.size());

/// A key that does something rather than insert. Its text, or its images while it rests and while
/// it is pressed.
struct FunctionRow {
  KeyIdentifier key;
  const char *text, *image, *pressedImage;
  std::optional<KeyAction> action, doubleTapAction, longPressAction;
};

const FunctionRow kFunctions[] = {
    {shift, nullptr, "shift", "shift.fill", KeyAction::toggleShift, KeyAction::lockCapitals, KeyAction::lockCapitals},
    {deleteBackward, nullptr, "delete.left", "delete.left.fill", KeyAction::deleteBackward, {},
     KeyAction::deleteBackward},
    {enter, "return", nullptr, nullptr, KeyAction::enter, {}, {}},
    {abc, "abc", nullptr, nullptr, KeyAction::showLetters, {}, {}},
    {numKeyboard, "123", nullptr, nullptr, KeyAction::showSymbols, {}, {}},
    {dismiss, nullptr, "keyboard.chevron.compact.down", "keyboard.chevron.compact.down", {}, {}, {}},
};

constexpr const char* kLabel = "label";
constexpr const char* kBackground = "KeyBackground";
constexpr const char* kPressedBackground = "PressedBackground";
constexpr const char* kFunctionBackground = "FunctionKeyBackground";
constexpr const char* kPressedFunctionBackground = "PressedFunctionKeyBackground";

bool isLower(KeyIdentifier key) { return key <= z; }
bool isUpper(KeyIdentifier key) { return key >= A && key <= Z; }
bool isDigit(KeyIdentifier key) { return key >= num0 && key <= num9; }

char characterBehind(char first, KeyIdentifier key, KeyIdentifier firstKey) {
  return static_cast<char>(first + static_cast<int>(key) - static_cast<int>(firstKey));
}

const SymbolRow* symbolRow(KeyIdentifier key) {
  const auto* row = std::ranges::find(kSymbols, key, &SymbolRow::key);
  return row == std::end(kSymbols) ? nullptr : row;
}

/// Besides a letter: its symbol, then the letter in the other case.
std::vector<std::string> besidesLetter(KeyIdentifier key) {
  const char lower = characterBehind('a', key, isLower(key) ? a : A);
  const char other = isLower(key) ? static_cast<char>(lower - 'a' + 'A') : lower;
  return {std::string(1, kBesides[kLetters.find(lower)]), std::string(1, other)};
}

std::vector<std::string> besides(KeyIdentifier key) {
  if (isLower(key) || isUpper(key)) return besidesLetter(key);
  const SymbolRow* row = symbolRow(key);
  return row != nullptr ? row->longPress : std::vector<std::string>();
}

Info functionInfo(const FunctionRow& row, bool isCapital) {
  Info info;
  if (row.text != nullptr) {
    info.textStates = {{row.text, kLabel, kFunctionBackground}, {row.text, kLabel, kPressedFunctionBackground}};
  } else {
    const bool isFilled = row.key == shift && isCapital;
    const char* resting = isFilled ? row.pressedImage : row.image;
    const char* pressed = row.key == shift ? resting : row.pressedImage;
    info.imageStates = {{resting, kLabel, kFunctionBackground}, {pressed, kLabel, kPressedFunctionBackground}};
  }
  info.action = row.action;
  info.doubleTapAction = row.doubleTapAction;
  info.longPressAction = row.longPressAction;
  return info;
}

Info characterInfo(KeyIdentifier key) {
  Info info;
  const SymbolRow* row = symbolRow(key);
  if (row != nullptr && row->image != nullptr) {
    info.imageStates = {{row->image, kLabel, kBackground}, {row->image, kLabel, kPressedBackground}};
  } else {
    const std::string shown = key == space ? "space" : charOf(key);
    info.textStates = {{shown, kLabel, kBackground}, {shown, kLabel, kPressedBackground}};
  }
  info.char_ = charOf(key);
  info.longPress = besides(key);
  return info;
}

}  // namespace

std::string charOf(KeyIdentifier key) {
  if (isLower(key)) return std::string(1, characterBehind('a', key, a));
  if (isUpper(key)) return std::string(1, characterBehind('A', key, A));
  if (isDigit(key)) return std::string(1, characterBehind('0', key, num0));
  const SymbolRow* row = symbolRow(key);
  return row != nullptr ? row->text : "";
}

Info infoOf(KeyIdentifier key, int widthUnit, bool isCapital) {
  const auto* row = std::ranges::find(kFunctions, key, &FunctionRow::key);
  Info info = row != std::end(kFunctions) ? functionInfo(*row, isCapital) : characterInfo(key);
  info.widthUnit = widthUnit;
  return info;
}

}  // namespace kelo
