#include "grammar/scanner.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "KeloLexer.h"
#include "grammar/builtin_names.h"
#include "grammar/lexer_predicates.h"

namespace kelo {
namespace {

bool isDigit(size_t c) { return c >= '0' && c <= '9'; }
bool isBlank(size_t c) { return c == ' ' || c == '\t'; }
bool startsWord(size_t c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

struct Keyword {
  std::string_view text;
  uint32_t type;
};
constexpr Keyword kKeywords[] = {
    {"else", KeloLexer::ELSE},         {"elseif", KeloLexer::ELSEIF},       {"switch", KeloLexer::SWITCH},
    {"case", KeloLexer::CASE},         {"otherwise", KeloLexer::OTHERWISE}, {"if", KeloLexer::IF},
    {"for", KeloLexer::FOR},           {"while", KeloLexer::WHILE},         {"end", KeloLexer::END},
    {"break", KeloLexer::BREAK},       {"continue", KeloLexer::CONTINUE},   {"return", KeloLexer::RETURN},
    {"function", KeloLexer::FUNC},
};

constexpr size_t lengthOfLongestWord() {
  size_t longest = 0;
  for (const Keyword& keyword : kKeywords) longest = std::max(longest, keyword.text.size());
  for (const std::string_view name : kBuiltinNames) longest = std::max(longest, name.size());
  return longest;
}
constexpr size_t kLongestWord = lengthOfLongestWord();

using Words = std::unordered_map<std::string_view, uint32_t>;

Words makeReservedWords() {
  Words words;
  for (const Keyword& keyword : kKeywords) words.emplace(keyword.text, keyword.type);
  for (const std::string_view name : kBuiltinNames) words.emplace(name, KeloLexer::BUILT_IN_FUNC);
  return words;
}

const Words& reservedWords() {
  static const Words words = makeReservedWords();
  return words;
}

class Scanner {
 public:
  explicit Scanner(std::u32string_view text) : text_(text) {}

  // The token that starts at `start`: its type and the position after it.
  struct Match {
    uint32_t type;
    size_t end;
  };
  Match match(size_t start);

 private:
  size_t at(size_t position) const { return position < text_.size() ? text_[position] : kEndOfText; }
  template <class Test>
  size_t skip(size_t position, Test test) const {
    while (test(at(position))) ++position;
    return position;
  }

  Match word(size_t start);
  Match number(size_t start) const;
  Match quote(size_t start) const;
  Match dotted(size_t start) const;
  Match symbol(size_t start) const;
  Match imaginaryOr(uint32_t type, size_t end) const;
  size_t exponent(size_t position) const;

  std::u32string_view text_;
  BlockEnds blockEnds_;
};

Scanner::Match Scanner::match(size_t start) {
  const size_t c = at(start);
  if (startsWord(c)) return word(start);
  if (isBlank(c)) return {KeloLexer::WS, skip(start, isBlank)};
  if (isDigit(c)) return number(start);
  if (c == '.') return dotted(start);
  if (c == '\'') return quote(start);
  if (c == '%') return {KeloLexer::COMMENT, skip(start, [](size_t d) { return d != '\n' && d != kEndOfText; })};
  return symbol(start);
}

Scanner::Match Scanner::word(size_t start) {
  const size_t end = skip(start, [](size_t c) { return startsWord(c) || isDigit(c); });
  if (end - start > kLongestWord) return {KeloLexer::ID, end};
  char letters[kLongestWord];
  std::copy(text_.begin() + static_cast<ptrdiff_t>(start), text_.begin() + static_cast<ptrdiff_t>(end), letters);
  const auto found = reservedWords().find(std::string_view(letters, end - start));
  if (found == reservedWords().end()) return {KeloLexer::ID, end};
  const bool endsBlock =
      found->second == KeloLexer::END && blockEnds_.endsBlock(end, [this](size_t position) { return at(position); });
  return {endsBlock ? static_cast<uint32_t>(KeloLexer::GP_TERM) : found->second, end};
}

// The position after an exponent, or the same position when there is none.
size_t Scanner::exponent(size_t position) const {
  if (at(position) != 'e' && at(position) != 'E') return position;
  const size_t sign = at(position + 1);
  const size_t digits = position + (sign == '+' || sign == '-' ? 2 : 1);
  const size_t end = skip(digits, isDigit);
  return end == digits ? position : end;
}

Scanner::Match Scanner::imaginaryOr(uint32_t type, size_t end) const {
  if (at(end) == 'i' || at(end) == 'j') return {KeloLexer::I, end + 1};
  return {type, end};
}

Scanner::Match Scanner::number(size_t start) const {
  const size_t point = skip(start, isDigit);
  if (at(point) != '.') {
    const size_t end = exponent(point);
    return imaginaryOr(end == point ? KeloLexer::INT : KeloLexer::DOUBLE, end);
  }
  const size_t fraction = skip(point + 1, isDigit);
  const size_t end = exponent(fraction);
  const Match match = imaginaryOr(KeloLexer::DOUBLE, end);
  if (match.type == KeloLexer::I || fraction > point + 1) return match;
  if (end == fraction) return pointIsDecimal(at(end)) ? match : Match{KeloLexer::INT, point};
  // "1.e2e3": without a fraction, exponents may follow one another.
  size_t last = end;
  for (size_t next = exponent(last); next != last; next = exponent(last)) last = next;
  return {KeloLexer::DOUBLE, last};
}

Scanner::Match Scanner::dotted(size_t start) const {
  switch (at(start + 1)) {
    case '+': return {KeloLexer::PLUS, start + 2};
    case '-': return {KeloLexer::MINUS, start + 2};
    case '*': return {KeloLexer::DMULT, start + 2};
    case '/': return {KeloLexer::RDIVIDE, start + 2};
    case '\\': return {KeloLexer::LDIVIDE, start + 2};
    case '^': return {KeloLexer::DPOWER, start + 2};
    case '\'': return {KeloLexer::TPD, start + 2};
    default: break;
  }
  const size_t digits = skip(start + 1, isDigit);
  if (digits == start + 1) return {KeloLexer::T__0, digits};
  return imaginaryOr(KeloLexer::DOUBLE, exponent(digits));
}

// A text ends at its last possible closing quote: "''" goes on unless nothing closes after it.
Scanner::Match Scanner::quote(size_t start) const {
  const Match transpose{KeloLexer::TP, start + 1};
  if (!quoteOpensText(start == 0 ? kEndOfText : at(start - 1))) return transpose;
  size_t closed = 0;
  for (size_t position = start + 1;; ++position) {
    const size_t c = at(position);
    if (c == kEndOfText || c == '\n' || c == '\r') break;
    if (c != '\'') continue;
    closed = position + 1;
    if (at(closed) != '\'') break;
    position = closed;
  }
  return closed == 0 ? transpose : Match{KeloLexer::CHAR, closed};
}

Scanner::Match Scanner::symbol(size_t start) const {
  const size_t next = at(start + 1);
  const auto oneOrTwo = [&](uint32_t one, char second, uint32_t two) {
    return next == static_cast<size_t>(second) ? Match{two, start + 2} : Match{one, start + 1};
  };
  switch (at(start)) {
    case '@': return {KeloLexer::AT, start + 1};
    case '+': return {KeloLexer::PLUS, start + 1};
    case '-': return {KeloLexer::MINUS, start + 1};
    case '*': return {KeloLexer::MULT, start + 1};
    case '^': return {KeloLexer::POWER, start + 1};
    case '/': return {KeloLexer::MRDIVIDE, start + 1};
    case '\\': return {KeloLexer::MLDIVIDE, start + 1};
    case '=': return oneOrTwo(KeloLexer::EQ, '=', KeloLexer::EQEQ);
    case '<': return oneOrTwo(KeloLexer::LT, '=', KeloLexer::LE);
    case '>': return oneOrTwo(KeloLexer::GT, '=', KeloLexer::GE);
    case '~': return oneOrTwo(KeloLexer::NOT, '=', KeloLexer::NEQ);
    case '!': return oneOrTwo(KeloLexer::NOT, '=', KeloLexer::NEQ);
    case '&': return oneOrTwo(KeloLexer::AND, '&', KeloLexer::AND);
    case '|': return oneOrTwo(KeloLexer::OR, '|', KeloLexer::OR);
    case '[': return {KeloLexer::LSQB, start + 1};
    case ']': return {KeloLexer::RSQB, start + 1};
    case '(': return {KeloLexer::LPAR, start + 1};
    case ')': return {KeloLexer::RPAR, start + 1};
    case ',': return {KeloLexer::COMMA, start + 1};
    case ';': return {KeloLexer::SEMICOLON, start + 1};
    case ':': return {KeloLexer::COLON, start + 1};
    case '\n': return {KeloLexer::NEWLINE, start + 1};
    case '\r': return oneOrTwo(KeloLexer::UNKNOWN, '\n', KeloLexer::NEWLINE);
    default: return {KeloLexer::UNKNOWN, start + 1};
  }
}

}  // namespace

bool ScannedToken::isHidden() const { return type == KeloLexer::WS; }

std::vector<ScannedToken> scanTokens(std::u32string_view text, size_t atMost, size_t line,
                                     size_t charPositionInLine) {
  std::vector<ScannedToken> tokens;
  tokens.reserve(std::min(text.size() / 2, atMost) + 2);
  Scanner scanner(text);
  size_t start = 0;
  const auto add = [&](uint32_t type, size_t end) {
    tokens.push_back({type, static_cast<uint32_t>(start), static_cast<uint32_t>(end), static_cast<uint32_t>(line),
                      static_cast<uint32_t>(charPositionInLine)});
  };
  while (start < text.size() && tokens.size() < atMost) {
    const auto [type, end] = scanner.match(start);
    if (type != KeloLexer::COMMENT) add(type, end);
    charPositionInLine += end - start;
    start = end;
    if (type == KeloLexer::NEWLINE) {
      ++line;
      charPositionInLine = 0;
    }
  }
  add(static_cast<uint32_t>(antlr4::Token::EOF), start);
  return tokens;
}

}  // namespace kelo
