// The words that open, divide and close groups of statements, and where they stand in a line.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kelo {

struct Keywords {
  enum class PrefixType : uint8_t { groupOpener, groupCloser, groupDivider, selfClosingGroupOpener };
  /// Ranges in which keywords do not count.
  enum class SyntaxIgnored : uint8_t { comment, characterArray };

  struct Word {
    std::u16string_view text;
    PrefixType type;
  };
  static constexpr std::array<Word, 10> kWords = {{
      {u"do", PrefixType::groupOpener},
      {u"for", PrefixType::groupOpener},
      {u"if", PrefixType::groupOpener},
      {u"while", PrefixType::groupOpener},
      {u"switch", PrefixType::groupOpener},
      {u"end", PrefixType::groupCloser},
      {u"else", PrefixType::groupDivider},
      {u"elseif", PrefixType::groupDivider},
      {u"case", PrefixType::selfClosingGroupOpener},
      {u"otherwise", PrefixType::selfClosingGroupOpener},
  }};

  struct Occurrence {
    PrefixType type;
    int64_t column;  ///< in UTF-16 units
  };

  /// The keywords of one line, from left to right, without those in comments and texts. An `end`
  /// with a ")" after it on the line is taken for an index (NOTE: intended, as the grammar does).
  static std::vector<Occurrence> inLine(std::u16string_view line);

  /// Whether a line, without its leading blanks, starts with a word of the group. NOTE: intended:
  /// no word boundary is asked for, so "format" starts with "for".
  static bool startsWith(std::u16string_view line, PrefixType group);
};

}  // namespace kelo
