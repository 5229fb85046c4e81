// OPTIMIZATION: the patterns of words differ in the word alone, so one pattern finds all words and
// a table tells their types. Only the index `end` can reach across line ends, and it is one word
// between two blank stretches; after an edit it is enough to look at the lines around it up to the
// second one above and below that is not blank.
#include "editor/syntax_highlighter.h"

#include <algorithm>
#include <array>
#include <map>

#include "editor/keywords.h"
#include "editor/patterns.h"
#include "editor/regex.h"
#include "messages/utf16.h"

namespace kelo {
namespace {

using SyntaxType = SyntaxHighlighter::SyntaxType;

struct Row {
  SyntaxType type;
  const char* name;
  const char* color;
};

constexpr std::array<Row, 11> kRows = {{
    {SyntaxType::number, "number", "system green"},
    {SyntaxType::url, "url", "link"},
    {SyntaxType::builtInFunction, "builtInFunction", "system orange"},
    {SyntaxType::keyword, "keyword", "system blue"},
    {SyntaxType::endIndex, "endIndex", "system teal"},
    {SyntaxType::returnKeyword, "returnKeyword", "system blue"},
    {SyntaxType::continueKeyword, "continueKeyword", "system blue"},
    {SyntaxType::breakKeyword, "breakKeyword", "system blue"},
    {SyntaxType::function, "function", "system blue"},
    {SyntaxType::characterArray, "characterArray", "system purple"},
    {SyntaxType::comments, "comments", "tertiary label"},
}};

const Row& rowOf(SyntaxType type) { return kRows[static_cast<size_t>(type)]; }

std::optional<std::vector<std::string>> wordPatterns(const std::optional<std::vector<std::string>>& names) {
  if (!names) return std::nullopt;
  std::vector<std::string> patterns;
  for (const std::string& name : *names) patterns.push_back(pattern::ofWord(name));
  return patterns;
}

bool isLineEnd(char16_t unit) { return unit == u'\n' || unit == u'\r'; }

bool isBlank(std::u16string_view line) {
  return line.find_first_not_of(
             u" \t\n\r\v\f\u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007"
             u"\u2008\u2009\u200A\u2028\u2029\u202F\u205F\u3000") == std::u16string_view::npos;
}

size_t lineBegin(std::u16string_view text, size_t at) {
  while (at > 0 && !isLineEnd(text[at - 1])) --at;
  return at;
}

size_t lineEnd(std::u16string_view text, size_t at) {
  while (at < text.size() && !isLineEnd(text[at])) ++at;
  return at;
}

/// The beginning of the second line above `at` that is not blank.
size_t above(std::u16string_view text, size_t at) {
  for (int seen = 0; at > 0 && seen < 2;) {
    const size_t begin = lineBegin(text, at - 1);
    seen += !isBlank(text.substr(begin, at - begin));
    at = begin;
  }
  return at;
}

/// The end of the second line below `at` that is not blank.
size_t below(std::u16string_view text, size_t at) {
  for (int seen = 0; at < text.size() && seen < 2;) {
    const size_t end = lineEnd(text, at + 1);
    seen += !isBlank(text.substr(at, end - at));
    at = end;
  }
  return at;
}

}  // namespace

/// The compiled patterns of each type, and the types of words.
struct SyntaxHighlighter::Rules {
  explicit Rules(const std::optional<std::vector<std::string>>& functionPatterns) {
    add(SyntaxType::number, pattern::kNumber);
    add(SyntaxType::url, pattern::kLink);
    for (const std::string& one : functionPatterns.value_or(std::vector<std::string>())) addFunction(one);
    add(SyntaxType::keyword, pattern::kEnd);
    for (const Keywords::Word& word : Keywords::kWords) {
      if (word.type != Keywords::PrefixType::groupCloser)
        words.insert_or_assign(std::u16string(word.text), SyntaxType::keyword);
    }
    add(SyntaxType::endIndex, pattern::kEndIndex);
    words.insert_or_assign(u"return", SyntaxType::returnKeyword);
    words.insert_or_assign(u"continue", SyntaxType::continueKeyword);
    words.insert_or_assign(u"break", SyntaxType::breakKeyword);
    words.insert_or_assign(u"function", SyntaxType::function);
    add(SyntaxType::characterArray, pattern::kText);
    add(SyntaxType::comments, pattern::kComment);
  }

  void add(SyntaxType type, std::string_view pattern) { patterns[static_cast<size_t>(type)].emplace_back(pattern); }

  void addFunction(const std::string& functionPattern) {
    std::string_view word = functionPattern;
    word.remove_prefix(pattern::kBeforeWord.size());
    word.remove_suffix(pattern::kBehindWord.size());
    const bool isPlain = !word.empty() && !(word[0] >= '0' && word[0] <= '9') && std::ranges::all_of(word, [](char c) {
      return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
    if (!isPlain) return add(SyntaxType::builtInFunction, functionPattern);
    words.insert_or_assign(toUtf16(word), SyntaxType::builtInFunction);
  }

  std::optional<SyntaxType> typeOf(std::u16string_view word) const {
    const auto found = words.find(word);
    if (found == words.end()) return std::nullopt;
    return found->second;
  }

  std::array<std::vector<Regex>, kRows.size()> patterns;
  std::map<std::u16string, SyntaxType, std::less<>> words;
  Regex anyWord{pattern::kAnyWord};
};

SyntaxHighlighter::SyntaxHighlighter(std::optional<std::vector<std::string>> functionNames)
    : functionRegexPatterns(wordPatterns(functionNames)), rules_(std::make_unique<Rules>(functionRegexPatterns)) {}

SyntaxHighlighter::~SyntaxHighlighter() = default;

const char* SyntaxHighlighter::nameOf(SyntaxType type) { return rowOf(type).name; }
const char* SyntaxHighlighter::colorOf(SyntaxType type) { return rowOf(type).color; }

std::vector<SyntaxHighlighter::Span> SyntaxHighlighter::highlightAll(std::string_view text) {
  std::u16string now = toUtf16(text);
  const size_t shorter = std::min(now.size(), text_.size());
  const size_t prefix = static_cast<size_t>(
      std::mismatch(now.begin(), now.begin() + static_cast<ptrdiff_t>(shorter), text_.begin()).first - now.begin());
  size_t suffix = 0;
  while (suffix < shorter - prefix && now[now.size() - 1 - suffix] == text_[text_.size() - 1 - suffix]) ++suffix;

  const auto at = painted_.begin() + static_cast<ptrdiff_t>(prefix);
  painted_.erase(at, painted_.end() - static_cast<ptrdiff_t>(suffix));
  painted_.insert(painted_.begin() + static_cast<ptrdiff_t>(prefix), now.size() - prefix - suffix, 0);
  const bool isChanged = now.size() != text_.size() || prefix < now.size();
  text_ = std::move(now);
  if (isChanged) repaint(lineBegin(text_, prefix), lineEnd(text_, text_.size() - suffix));
  return spans();
}

/// Paints again what an edit in the lines from `begin` to `end` can have changed.
void SyntaxHighlighter::repaint(size_t begin, size_t end) {
  begin = above(text_, begin);
  end = below(text_, end);
  std::fill(painted_.begin() + static_cast<ptrdiff_t>(begin), painted_.begin() + static_cast<ptrdiff_t>(end), 0);
  // A match that reaches into these lines begins, and ends, at most as far away as another edit
  // would reach.
  const size_t from = above(text_, begin);
  const std::u16string_view seen = std::u16string_view(text_).substr(0, below(text_, end));
  const auto paint = [&](SyntaxType type, size_t first, size_t last) {
    for (size_t k = std::max(first, begin); k < std::min(last, end); ++k) {
      painted_[k] = std::max<uint8_t>(painted_[k], 1 + static_cast<uint8_t>(type));
    }
  };
  for (const Row& row : kRows) highlight(row.type, seen, from, paint);
  rules_->anyWord.forEachMatch(seen, from, [&](size_t first, size_t last) {
    if (const auto type = rules_->typeOf(seen.substr(first, last - first))) paint(*type, first, last);
  });
}

/// All matches of the patterns of one type.
void SyntaxHighlighter::highlight(SyntaxType type, std::u16string_view text, size_t from, const Paint& paint) const {
  for (const Regex& pattern : rules_->patterns[static_cast<size_t>(type)]) {
    pattern.forEachMatch(text, from, [&](size_t first, size_t last) { paint(type, first, last); });
  }
}

std::vector<SyntaxHighlighter::Span> SyntaxHighlighter::spans() const {
  std::vector<Span> spans;
  for (size_t k = 0; k < painted_.size();) {
    size_t end = k + 1;
    while (end < painted_.size() && painted_[end] == painted_[k]) ++end;
    if (painted_[k] != 0) {
      spans.push_back({static_cast<int64_t>(k), static_cast<int64_t>(end - k), SyntaxType(painted_[k] - 1)});
    }
    k = end;
  }
  return spans;
}

}  // namespace kelo
