// The tokens of one text as the parser reads them: all at hand from the start, without the hidden
// ones.
//
// OPTIMIZATION: the runtime's own stream keeps each token in a block of its own and looks for the
// next visible one at each step.
#pragma once

#include <string>
#include <vector>

#include "antlr4-runtime.h"
#include "frontend/source_text.h"
#include "grammar/scanner.h"

namespace kelo {

class TokenList final : public antlr4::TokenStream {
 public:
  /// scanned   tokens of the whole text, the end of the file last
  TokenList(SourceText& source, const std::vector<ScannedToken>& scanned);

  antlr4::Token* LT(ssize_t k) override;
  size_t LA(ssize_t i) override { return i == 0 ? 0 : LT(i)->getType(); }
  void consume() override;
  size_t index() override { return position_; }
  void seek(size_t index) override { position_ = std::min(index, tokens_.size() - 1); }
  ssize_t mark() override { return 0; }
  void release(ssize_t) override {}
  size_t size() override { return tokens_.size(); }
  antlr4::Token* get(size_t index) const override { return &tokens_.at(index); }

  /// For looking ahead at no cost. Positions after the last token count as the last, the end of
  /// the file.
  size_t position() const { return position_; }
  size_t typeAt(size_t index) const { return types_[std::min(index, types_.size() - 1)]; }
  static constexpr size_t kEndOfFile = 0;  ///< what typeAt gives for the last token
  /// The bracket that closes the one at a position; the last token when none does.
  size_t partnerOf(size_t open) const { return partners_[open]; }
  /// Whether the innermost bracket that is open at a position is a square one.
  bool isInSquare(size_t index) const { return inSquare_[index]; }
  /// The first token of the line that lies so many lines before a token, but at most so many tokens
  /// before it.
  size_t startOfLines(size_t index, size_t lines, size_t atMost) const;

  antlr4::TokenSource* getTokenSource() const override { return nullptr; }  // no more tokens come
  std::string getSourceName() const override { return source_.getSourceName(); }
  std::string getText() override { return source_.toString(); }
  std::string getText(const antlr4::misc::Interval& interval) override;
  std::string getText(antlr4::RuleContext* node) override { return getText(node->getSourceInterval()); }
  std::string getText(antlr4::Token* start, antlr4::Token* stop) override;

 private:
  void add(const ScannedToken& token);
  void matchBrackets();

  SourceText& source_;
  mutable std::vector<antlr4::CommonToken> tokens_;  // fixed once made: nodes point into it
  std::vector<uint8_t> types_;
  std::vector<uint32_t> partners_;
  std::vector<bool> inSquare_;
  size_t position_ = 0;
};

}  // namespace kelo
