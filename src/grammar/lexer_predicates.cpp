#include "grammar/lexer_predicates.h"

#include <utf8proc.h>

#include "antlr4-runtime.h"

namespace kelo {
namespace {

constexpr size_t kEndOfText = antlr4::IntStream::EOF;

bool isEndOfLine(size_t c) { return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029; }

// Letters, marks and numbers of any script.
bool isAlphanumeric(size_t c) {
  if (c < 0x80) return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(c));
  return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_NO;
}

}  // namespace

bool LexerPredicates::endsBlock(antlr4::CharStream* text) {
  const size_t here = text->index();
  if (here < scanBegin_ || here > scanEnd_) {
    ssize_t ahead = 1;
    size_t c = text->LA(ahead);
    while (c != kEndOfText && c != ')' && !isEndOfLine(c)) c = text->LA(++ahead);
    scanBegin_ = here;
    scanEnd_ = here + static_cast<size_t>(ahead) - 1;
    scanFoundNone_ = c != ')';
  }
  return scanFoundNone_;
}

bool LexerPredicates::pointIsDecimal(antlr4::CharStream* text) {
  const size_t next = text->LA(1);
  return next != '*' && next != '/' && next != '^' && next != '\\';
}

bool LexerPredicates::quoteOpensText(antlr4::CharStream* text) {
  const size_t before = text->index() < 2 ? kEndOfText : text->LA(-2);
  if (before == kEndOfText) return true;
  return before != ')' && before != ']' && before != '\'' && before != '.' && !isAlphanumeric(before);
}

}  // namespace kelo
