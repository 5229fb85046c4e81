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
  const std::pair<antlr4::TokenSource*, antlr4::CharStream*> origin(nullptr, &source);
  const auto isVisible = [](const ScannedToken& token) { return !token.isHidden(); };
  tokens_.reserve(static_cast<size_t>(std::count_if(scanned.begin(), scanned.end(), isVisible)));
  for (const ScannedToken& token : scanned) {
    if (token.isHidden()) continue;
    antlr4::CommonToken& made = tokens_.emplace_back(origin, typeOf(token), antlr4::Token::DEFAULT_CHANNEL, token.start,
                                                     size_t{token.end} - 1);
    made.setLine(token.line);
    made.setCharPositionInLine(token.charPositionInLine);
    made.setTokenIndex(tokens_.size() - 1);
    // A comma that the separator pass put in place of a blank shows as what it is.
    if (token.type == KeloLexer::COMMA && source.text()[token.start] != U',') made.setText(",");
  }
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
