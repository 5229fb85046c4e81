// Two walks over the tokens: the first finds which brackets belong together, the second puts the
// commas. Both know tokens only, so a text that does not parse goes through them as well. Tested by
// tests/frontend/matrix_separators_test.cpp.
#include "frontend/matrix_separators.h"

#include <cstdint>

#include "KeloLexer.h"

namespace kelo {
namespace {

using Tokens = std::vector<ScannedToken>;

enum class Bracket : uint8_t { none, open, close };

// For each token, whether it is one half of a matched pair of brackets. Square brackets match among
// themselves over the whole text, round ones inside the tightest pair of square ones.
class MatchedBrackets {
 public:
  explicit MatchedBrackets(const Tokens& tokens) : halves_(tokens.size(), Bracket::none) {
    match(tokens, KeloLexer::LSQB, KeloLexer::RSQB);
    match(tokens, KeloLexer::LPAR, KeloLexer::RPAR);
  }

  Bracket operator[](size_t i) const { return halves_[i]; }

 private:
  void match(const Tokens& tokens, size_t openType, size_t closeType) {
    std::vector<size_t> open;
    std::vector<size_t> bases{0};  // in `open`, where the round brackets of each square pair begin
    for (size_t i = 0; i < tokens.size(); ++i) {
      const size_t type = tokens[i].type;
      if (type == openType) {
        open.push_back(i);
      } else if (type == closeType && open.size() > bases.back()) {
        halves_[open.back()] = Bracket::open;
        halves_[i] = Bracket::close;
        open.pop_back();
      } else if (halves_[i] == Bracket::open) {
        bases.push_back(open.size());
      } else if (halves_[i] == Bracket::close) {
        open.resize(bases.back());
        bases.pop_back();
      }
    }
  }

  std::vector<Bracket> halves_;
};

bool isSign(size_t type) { return type == KeloLexer::PLUS || type == KeloLexer::MINUS; }

bool startsElementAnyway(size_t typeBefore) {
  return typeBefore == KeloLexer::LSQB || typeBefore == KeloLexer::SEMICOLON || typeBefore == KeloLexer::NEWLINE ||
         typeBefore == KeloLexer::COMMA;
}

// A sign with a blank before it, none after it, and something before the blank that it could be
// subtracted from.
bool signAfterBlank(const Tokens& tokens, size_t i) {
  return isSign(tokens[i].type) && i >= 2 && i + 1 < tokens.size() && tokens[i - 1].isHidden() &&
         !tokens[i + 1].isHidden() && !startsElementAnyway(tokens[i - 2].type);
}

}  // namespace

void insertMatrixElementSeparators(Tokens& tokens) {
  const MatchedBrackets brackets(tokens);
  std::vector<size_t> enclosing;  // types of the open halves around the current token
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (brackets[i] == Bracket::open) enclosing.push_back(tokens[i].type);
    if (brackets[i] == Bracket::close) enclosing.pop_back();
    if (enclosing.empty() || enclosing.back() != KeloLexer::LSQB || !signAfterBlank(tokens, i)) continue;
    tokens[i - 1].type = KeloLexer::COMMA;
  }
}

}  // namespace kelo
