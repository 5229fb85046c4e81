#include "grammar/lexer_predicates.h"

#include <utf8proc.h>

#include "antlr4-runtime.h"

namespace kelo {
namespace {

static_assert(kEndOfText == antlr4::IntStream::EOF);

// Letters, marks and numbers of any script.
bool isAlphanumeric(size_t c) {
  if (c < 0x80) return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(c));
  return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_NO;
}

}  // namespace

bool isEndOfLine(size_t c) { return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029; }

bool pointIsDecimal(size_t next) { return next != '*' && next != '/' && next != '^' && next != '\\'; }

bool quoteOpensText(size_t before) {
  if (before == kEndOfText) return true;
  return before != ')' && before != ']' && before != '\'' && before != '.' && !isAlphanumeric(before);
}

bool LexerPredicates::endsBlock(antlr4::CharStream* text) {
  const size_t here = text->index();
  return blockEnds_.endsBlock(here, [&](size_t at) { return text->LA(static_cast<ssize_t>(at - here) + 1); });
}

bool LexerPredicates::pointIsDecimal(antlr4::CharStream* text) { return kelo::pointIsDecimal(text->LA(1)); }

bool LexerPredicates::quoteOpensText(antlr4::CharStream* text) {
  return kelo::quoteOpensText(text->index() < 2 ? kEndOfText : text->LA(-2));
}

}  // namespace kelo
