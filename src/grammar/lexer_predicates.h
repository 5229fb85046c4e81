// The three questions that the lexer asks about the text around the point it has reached. All of them count in code
// points.
#pragma once

#include <cstddef>

namespace antlr4 {
class CharStream;
}

namespace kelo {

class LexerPredicates {
 public:
  /// Behind "end": whether it ends a block, which is so when no ")" stands further on its line.
  ///
  /// NOTE: intended: neither "(" nor brackets are looked at, and a ")" in a comment or a string counts.
  bool endsBlock(antlr4::CharStream* text);

  /// Behind the point of "1.": whether the point belongs to the number and not to an operator such as "./".
  static bool pointIsDecimal(antlr4::CharStream* text);

  /// Behind a quote: whether it opens a text; otherwise it is a transpose.
  static bool quoteOpensText(antlr4::CharStream* text);

 private:
  // What the last scan of endsBlock found: from scanBegin_ on, the first ")" or end of line stands at scanEnd_. It
  // spares a long line with many "end" from being scanned anew for each.
  size_t scanBegin_ = 1;
  size_t scanEnd_ = 0;
  bool scanFoundNone_ = false;
};

}  // namespace kelo
