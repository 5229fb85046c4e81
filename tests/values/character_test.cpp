#include "values/character.h"

#include "expect_failure.h"
#include "values/numeric_array.h"

namespace kelo {
namespace {

Character only(std::string_view utf8) {
  const auto characters = charactersOf(utf8);
  EXPECT_EQ(characters.size(), 1u) << utf8;
  return characters.front();
}

constexpr const char* kFamily = "\U0001F468\u200D\U0001F469\u200D\U0001F467";

TEST(Character, splitsTextIntoClusters) {
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"", {}},
      {"a\r\nb", {"a", "\r\n", "b"}},
      {"e\u0301x", {"e\u0301", "x"}},
      {"\U0001F468\u200D\U0001F469\u200D\U0001F467!", {kFamily, "!"}},
      {"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7", {"\U0001F1E9\U0001F1EA", "\U0001F1EB\U0001F1F7"}},
      {"\u1112\u1161\u11AB", {"\u1112\u1161\u11AB"}},
      {"a\xFF\xE2\x82z", {"a", "\uFFFD", "\uFFFD", "\uFFFD", "z"}},
      {"\xED\xA0\x80", {"\uFFFD", "\uFFFD", "\uFFFD"}},
  };
  for (const auto& [text, expected] : rows) {
    std::vector<std::string> clusters;
    for (const Character c : charactersOf(text)) c.appendUtf8To(clusters.emplace_back());
    EXPECT_EQ(clusters, expected) << text;
  }
}

TEST(Character, comparesByCanonicalEquivalence) {
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"a", "a", true},
      {"e", "e\u0301", false},
      {"\u00E9", "e\u0301", true},
      {"a\u0323\u0302", "a\u0302\u0323", true},   // marks of two classes: the order does not count
      {"a\u0301\u0302", "a\u0302\u0301", false},  // marks of one class: it does
      {"\u1EAD", "a\u0302\u0323", true},
      {"\u212A", "K", true},
      {"\u1112\u1161\u11AB", "\uD55C", true},
      {"\uFB01", "\uFB02", false},
  };
  for (const auto& [a, b, equal] : rows) {
    EXPECT_EQ(only(a) == only(b), equal) << a << " " << b;
    EXPECT_EQ(only(b) == only(a), equal) << b << " " << a;
  }
}

TEST(Character, countsItsUnits) {
  EXPECT_EQ(only("\uFFFF").unitCount(), 1);
  EXPECT_EQ(only(kFamily).unitCount(), 8);
}

TEST(Character, keepsALoneSurrogate) {
  const Character lone = Character::fromUnit(0xD83D);
  EXPECT_EQ(lone.unitCount(), 1);
  EXPECT_EQ(lone.firstCodePoint(), 0xD83Du);
  EXPECT_FALSE(lone == Character(U'\uFFFD'));
  EXPECT_EQ(toUtf8(CharArray(lone)), "\uFFFD");
}

TEST(Character, internsEachSpellingOnce) {
  EXPECT_EQ(only("e\u0301").word(), only("e\u0301").word());
  EXPECT_NE(only("e\u0301").word(), only("e\u0300").word());
  EXPECT_EQ(only("e\u0301").firstCodePoint(), U'e');
}

TEST(CharArray, isReadFromAndWrittenAsUtf8) {
  EXPECT_EQ(charRow("").size(), SizeVector(0, 0));
  for (const char* text : {"abc", "\u00E4 e\u0301 \U0001F600", kFamily}) EXPECT_EQ(toUtf8(charRow(text)), text);
  EXPECT_EQ(charRow("\u00E4e\u0301").size(), SizeVector(1, 2));
}

}  // namespace
}  // namespace kelo
