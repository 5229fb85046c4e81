// Three lists are the whole vocabulary; their order is that of the search in a specification
// string. Tested by tests/figures/attribute_test.cpp.
#include "figures/attribute.h"

#include <algorithm>
#include <cmath>

#include "messages/catalogue/plot_commands.h"
#include "messages/catalogue/values.h"
#include "messages/message.h"

namespace kelo::figures {
namespace {

template <class T>
struct Word {
  std::string_view text;
  T meaning;
};

constexpr Word<ColorRole> kColors[] = {
    {"red", ColorRole::systemRed},     {"r", ColorRole::systemRed},    {"green", ColorRole::systemGreen},
    {"g", ColorRole::systemGreen},     {"black", ColorRole::black},    {"k", ColorRole::black},
    {"blue", ColorRole::systemBlue},   {"b", ColorRole::systemBlue},   {"cyan", ColorRole::systemTeal},
    {"c", ColorRole::systemTeal},      {"magenta", ColorRole::systemPink}, {"m", ColorRole::systemPink},
    {"yellow", ColorRole::systemYellow}, {"y", ColorRole::systemYellow}, {"white", ColorRole::white},
    {"w", ColorRole::white},           {"none", ColorRole::clear},
};

constexpr Word<Line::Style> kLineStyles[] = {
    {"-.", Line::Style::dotDashed}, {"--", Line::Style::dashed},  {"-", Line::Style::solid},
    {":", Line::Style::dot},        {"none", Line::Style::hidden},
};

constexpr Word<Marker::Style> kMarkerStyles[] = {
    {"+", Marker::Style::plus},          {"o", Marker::Style::circle},
    {"*", Marker::Style::asterisk},      {".", Marker::Style::point},
    {"square", Marker::Style::square},   {"s", Marker::Style::square},
    {"diamond", Marker::Style::diamond}, {"d", Marker::Style::diamond},
    {"^", Marker::Style::upTriangle},    {"v", Marker::Style::downTriangle},
    {">", Marker::Style::rightTriangle}, {"<", Marker::Style::leftTriangle},
    {"x", Marker::Style::cross},         {"p", Marker::Style::fivePointedStar},
    {"pentagram", Marker::Style::fivePointedStar}, {"h", Marker::Style::sixPointedStar},
    {"hexagram", Marker::Style::sixPointedStar},   {"none", Marker::Style::none},
};

std::string lowered(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

template <class T, size_t kCount>
std::optional<T> wholeWord(const Word<T> (&words)[kCount], const std::string& text) {
  const std::string wanted = lowered(text);
  const auto found = std::find_if(words, words + kCount, [&](const auto& word) { return word.text == wanted; });
  return found == words + kCount ? std::nullopt : std::optional(found->meaning);
}

/// The first word that the text begins with, which is taken off.
template <class T, size_t kCount>
std::optional<T> takenWord(const Word<T> (&words)[kCount], std::string_view& text) {
  const auto found = std::find_if(words, words + kCount, [&](const auto& word) { return text.starts_with(word.text); });
  if (found == words + kCount) return std::nullopt;
  text.remove_prefix(found->text.size());
  return found->meaning;
}

const CharArray* charArray(const Storable& value) {
  const NumericArray* array = value.numeric();
  return array && array->is(Kind::Char) ? &array->asChar() : nullptr;
}

/// The text of a character vector.
std::optional<std::string> vectorText(const Storable& value) {
  const CharArray* text = charArray(value);
  if (!text || !(text->size().isVector() || text->isEmpty())) return std::nullopt;
  return toUtf8(*text);
}

// ---- Attributes

/// A value with the place at which it stands, from 1.
struct Given {
  const Storable& value;
  int64_t ordinal;
};

double positive(const Given& given, std::string (*reason)(int64_t)) {
  const NumericArray* array = given.value.numeric();
  if (array && !array->is(Kind::Char) && !array->isEmpty() && array->has(Property::allReals)) {
    const double x = array->toDoubleArray()[0];
    if (x > 0 && std::isfinite(x)) return x;
  }
  throw problem(reason(given.ordinal), text::kPositiveSize);
}

template <class T>
T named(const Given& given, std::optional<T> (*meaningOf)(const std::string&), const char* reason) {
  const std::optional<std::string> text = vectorText(given.value);
  if (!text) throw problem(reason, text::kStyleWord);
  if (const std::optional<T> meaning = meaningOf(*text)) return *meaning;
  throw problem(reason);
}

using Attributes = Line::Attributes;

template <class Value>
void setAll(std::span<Line> lines, Value Attributes::* member, const Value& value) {
  for (Line& line : lines) line.attribute.*member = value;
}

void lineWidth(const Given& given, std::span<Line> lines) {
  setAll(lines, &Attributes::lineWidth, positive(given, text::invalidLineWidth));
}
void color(const Given& given, std::span<Line> lines) {
  const Color color = colorValue(given.value);
  for (Line& line : lines) {
    line.attribute.lineColor = color;
    if (line.attribute.markerEdgeColor.isClear()) line.attribute.markerEdgeColor = color;
  }
}
void lineStyle(const Given& given, std::span<Line> lines) {
  setAll(lines, &Attributes::lineStyle, named(given, attribute::lineStyleNamed, text::kInvalidLineStyle));
}
void marker(const Given& given, std::span<Line> lines) {
  setAll(lines, &Attributes::markerStyle, named(given, attribute::markerStyleNamed, text::kInvalidMarkerStyle));
}
void markerEdgeColor(const Given& given, std::span<Line> lines) {
  setAll(lines, &Attributes::markerEdgeColor, colorValue(given.value));
}
void markerFaceColor(const Given& given, std::span<Line> lines) {
  setAll(lines, &Attributes::markerFaceColor, colorValue(given.value));
}
void markerSize(const Given& given, std::span<Line> lines) {
  setAll(lines, &Attributes::markerSize, positive(given, text::invalidMarkerSize));
}
void displayName(const Given& given, std::span<Line> lines) {
  const std::optional<std::string> name = vectorText(given.value);
  if (!name) throw problem(text::kInvalidDisplayName, text::kDisplayNameExpected);
  setAll(lines, &Attributes::name, name);
}

using Apply = void (*)(const Given& given, std::span<Line> lines);

constexpr Word<Apply> kAttributes[] = {
    {"linewidth", lineWidth},
    {"color", color},
    {"linestyle", lineStyle},
    {"marker", marker},
    {"markeredgecolor", markerEdgeColor},
    {"markerfacecolor", markerFaceColor},
    {"markersize", markerSize},
    {"displayname", displayName},
};

Apply attributeNamed(const Given& given) {
  const std::string name = vectorText(given.value).value_or("");
  if (const auto apply = wholeWord(kAttributes, name)) return *apply;
  throw problem(text::unknownAttribute(given.ordinal, name));
}

}  // namespace

namespace attribute {

std::optional<Color> colorNamed(const std::string& text) {
  const auto role = wholeWord(kColors, text);
  return role ? std::optional(Color(*role)) : std::nullopt;
}
std::optional<Line::Style> lineStyleNamed(const std::string& text) { return wholeWord(kLineStyles, text); }
std::optional<Marker::Style> markerStyleNamed(const std::string& text) { return wholeWord(kMarkerStyles, text); }

bool isName(const Storable& value) {
  const CharArray* text = charArray(value);
  return text && wholeWord(kAttributes, toUtf8(*text));
}

}  // namespace attribute

bool parseLineSpec(const std::string& text, std::span<Line> lines) {
  bool lineStyleSeen = false;
  for (std::string_view rest = text; !rest.empty();) {
    if (const auto role = takenWord(kColors, rest)) {
      for (Line& line : lines) line.attribute.setColor(*role);
    } else if (const auto style = takenWord(kLineStyles, rest)) {
      for (Line& line : lines) line.attribute.lineStyle = *style;
      lineStyleSeen = true;
    } else if (const auto marker = takenWord(kMarkerStyles, rest)) {
      for (Line& line : lines) {
        line.attribute.markerStyle = *marker;
        if (!lineStyleSeen) line.attribute.lineStyle = Line::Style::hidden;
      }
    } else {
      return false;
    }
  }
  return true;
}

Color colorValue(const Storable& value) {
  const NumericArray* array = value.numeric();
  if (!array || array->is(Kind::Char)) {
    const std::optional<std::string> name = vectorText(value);
    if (!name) throw problem(text::kInvalidColor, text::kColorExpected);
    if (const std::optional<Color> color = attribute::colorNamed(*name)) return *color;
    throw problem(text::kInvalidColor);
  }
  const auto isChannel = [](double x) { return x >= 0 && x <= 1; };
  if (array->numElements() == 3 && array->has(Property::allReals)) {
    const DoubleArray rgb = array->toDoubleArray();
    if (std::all_of(rgb.data(), rgb.data() + 3, isChannel)) return Color(rgb[0], rgb[1], rgb[2]);
  }
  throw problem(text::kInvalidRgb, text::kRgbExpected);
}

void applyAttributes(std::span<const Storable> arguments, size_t first, std::span<Line> lines) {
  size_t i = first;
  for (; i + 1 < arguments.size(); i += 2) {
    const Apply apply = attributeNamed({arguments[i], static_cast<int64_t>(i) + 1});
    apply({arguments[i + 1], static_cast<int64_t>(i) + 2}, lines);
  }
  if (i < arguments.size()) throw problem(text::invalidArgument(static_cast<int64_t>(i) + 1), text::kValueMissing);
}

}  // namespace kelo::figures
