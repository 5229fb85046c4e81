// The list is made in one pass over the scanned tokens; partners of brackets are found once, for
// all jumps of the fast prediction. Tested by tests/frontend/parse_test.cpp.
#include "frontend/token_list.h"

#include <algorithm>

#include "KeloLexer.h"

namespace kelo {
namespace {

size_t typeOf(const ScannedToken& token) {
  return token.type == static_cast<uint32_t>(antlr4::Token::EOF) ? antlr4::Token::EOF : token.type;
}

}  // namespace

TokenList::TokenList(SourceText& source, const std::vector<ScannedToken>& scanned) : source_(source) {
  const auto isVisible = [](const ScannedToken& token) { return !token.isHidden(); };
  const auto count = static_cast<size_t>(std::count_if(scanned.begin(), scanned.end(), isVisible));
  tokens_.reserve(count);
  types_.reserve(count);
  for (const ScannedToken& token : scanned) {
    if (!token.isHidden()) add(token);
  }
  matchBrackets();
}

void TokenList::add(const ScannedToken& token) {
  const std::pair<antlr4::TokenSource*, antlr4::CharStream*> origin(nullptr, &source_);
  const size_t type = typeOf(token);
  antlr4::CommonToken& made =
      tokens_.emplace_back(origin, type, antlr4::Token::DEFAULT_CHANNEL, token.start, size_t{token.end} - 1);
  made.setLine(token.line);
  made.setCharPositionInLine(token.charPositionInLine);
  made.setTokenIndex(tokens_.size() - 1);
  // A comma that the separator pass put in place of a blank shows as what it is.
  if (type == KeloLexer::COMMA && source_.text()[token.start] != U',') made.setText(",");
  types_.push_back(static_cast<uint8_t>(type == antlr4::Token::EOF ? kEndOfFile : type));
}

// A bracket of the other kind in between leaves both without a partner; such a text does not parse.
void TokenList::matchBrackets() {
  partners_.assign(types_.size(), static_cast<uint32_t>(types_.size() - 1));
  inSquare_.resize(types_.size());
  std::vector<uint32_t> open;
  for (uint32_t i = 0; i < types_.size(); ++i) {
    const uint8_t type = types_[i];
    inSquare_[i] = !open.empty() && types_[open.back()] == KeloLexer::LSQB;
    if (type == KeloLexer::LPAR || type == KeloLexer::LSQB) open.push_back(i);
    if (open.empty() || (type != KeloLexer::RPAR && type != KeloLexer::RSQB)) continue;
    if ((type == KeloLexer::RPAR) == (types_[open.back()] == KeloLexer::LPAR)) partners_[open.back()] = i;
    open.pop_back();
  }
}

size_t TokenList::startOfLines(size_t index, size_t lines, size_t atMost) const {
  const size_t line = tokens_[index].getLine();
  const size_t lowest = index - std::min(index, atMost);
  while (index > lowest && tokens_[index - 1].getLine() + lines >= line) --index;
  return index;
}

antlr4::Token* TokenList::LT(ssize_t k) {
  if (k > 0) return &tokens_[std::min(position_ + static_cast<size_t>(k) - 1, tokens_.size() - 1)];
  const auto back = static_cast<size_t>(-k);
  return back == 0 || back > position_ ? nullptr : &tokens_[position_ - back];
}

void TokenList::consume() {
  if (tokens_[position_].getType() == antlr4::Token::EOF) throw antlr4::IllegalStateException("cannot consume EOF");
  ++position_;
}

std::string TokenList::getText(const antlr4::misc::Interval& interval) {
  if (interval.a < 0 || interval.b < interval.a || interval.b >= static_cast<ssize_t>(tokens_.size())) return {};
  return getText(&tokens_[static_cast<size_t>(interval.a)], &tokens_[static_cast<size_t>(interval.b)]);
}

std::string TokenList::getText(antlr4::Token* start, antlr4::Token* stop) {
  return source_.slice(start->getStartIndex(), stop->getStopIndex());
}

}  // namespace kelo
