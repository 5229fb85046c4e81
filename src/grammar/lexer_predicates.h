// The three questions that the token rules ask about the text around the point that was reached.
// Characters are code points; the end of the text is kEndOfText, and counts as the other case of
// each question.
#pragma once

#include <cstddef>
#include <cstdint>

namespace antlr4 {
class CharStream;
}

namespace kelo {

inline constexpr size_t kEndOfText = SIZE_MAX;

/// Whether the point of "1." belongs to the number, and not to an operator such as "./". `next`
/// stands after it.
bool pointIsDecimal(size_t next);

/// Whether a quote opens a text; otherwise it is a transpose. `before` stands before the quote.
///
/// NOTE: intended: after an underscore or a blank it opens one, whatever stands before that.
bool quoteOpensText(size_t before);

/// Line feed, carriage return and the other line ends of Unicode.
bool isEndOfLine(size_t c);

/// Tells the "end" of a block, which has no ")" further on its line, from the "end" of an index.
///
/// NOTE: intended: neither "(" nor brackets are looked at, and a ")" in a comment or a string
/// counts.
class BlockEnds {
 public:
  /// here        position right after "end"; asked for in rising order
  /// characterAt gives the character at a position, kEndOfText after the last
  template <class CharacterAt>
  bool endsBlock(size_t here, const CharacterAt& characterAt) {
    if (here < scanBegin_ || here > scanEnd_) {
      size_t at = here;
      size_t c = characterAt(at);
      while (c != kEndOfText && c != ')' && !isEndOfLine(c)) c = characterAt(++at);
      scanBegin_ = here;
      scanEnd_ = at;
      foundNone_ = c != ')';
    }
    return foundNone_;
  }

 private:
  // From scanBegin_ on, the first ")" or line end stands at scanEnd_. This spares a long line with
  // many "end" from being read anew for each.
  size_t scanBegin_ = 1;
  size_t scanEnd_ = 0;
  bool foundNone_ = false;
};

/// The same questions as the generated lexer asks them, at the point that its stream has reached.
class LexerPredicates {
 public:
  bool endsBlock(antlr4::CharStream* text);             ///< after "end"
  static bool pointIsDecimal(antlr4::CharStream* text);  ///< after the point
  static bool quoteOpensText(antlr4::CharStream* text);  ///< after the quote

 private:
  BlockEnds blockEnds_;
};

}  // namespace kelo
