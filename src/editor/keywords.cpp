#include "editor/keywords.h"

#include <algorithm>

#include "editor/patterns.h"
#include "editor/regex.h"

namespace kelo {
namespace {

struct Range {
  size_t begin, end;
};

const Regex& patternOf(Keywords::SyntaxIgnored type) {
  static const Regex comment(pattern::kComment), text(pattern::kText);
  return type == Keywords::SyntaxIgnored::comment ? comment : text;
}

std::vector<Range> ignoredRanges(std::u16string_view line) {
  std::vector<Range> ranges;
  for (const auto type : {Keywords::SyntaxIgnored::comment, Keywords::SyntaxIgnored::characterArray}) {
    patternOf(type).forEachMatch(line, 0, [&](size_t begin, size_t end) { ranges.push_back({begin, end}); });
  }
  return ranges;
}

}  // namespace

std::vector<Keywords::Occurrence> Keywords::inLine(std::u16string_view line) {
  static const Regex anyWord(pattern::kAnyWord);
  std::vector<Occurrence> found;
  std::vector<Range> ignored;
  const size_t lastParenthesis = line.rfind(u')');
  anyWord.forEachMatch(line, 0, [&](size_t begin, size_t end) {
    const auto word = std::ranges::find(kWords, line.substr(begin, end - begin), &Word::text);
    if (word == kWords.end()) return;
    const bool isIndex = lastParenthesis != std::u16string_view::npos && lastParenthesis >= end;
    if (word->type == PrefixType::groupCloser && isIndex) return;
    if (ignored.empty()) ignored = ignoredRanges(line);
    const auto covers = [&](const Range& range) { return range.begin <= begin && begin < range.end; };
    if (std::ranges::none_of(ignored, covers)) found.push_back({word->type, static_cast<int64_t>(begin)});
  });
  return found;
}

bool Keywords::startsWith(std::u16string_view line, PrefixType group) {
  return std::ranges::any_of(kWords,
                             [&](const Word& word) { return word.type == group && line.starts_with(word.text); });
}

}  // namespace kelo
