// Cuts a text into tokens, by the token rules of the grammar but by hand.
//
// OPTIMIZATION: the generated lexer walks the same rules as a state machine, at some 400 ns a
// token, thirty times what this takes, and without remembering anything for characters beyond
// ASCII. Both give the same tokens for every text; a test compares them on random ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kelo {

struct ScannedToken {
  uint32_t type;   ///< as in KeloLexer
  uint32_t start;  ///< first code point
  uint32_t end;    ///< one after the last code point
  uint32_t line;
  uint32_t charPositionInLine;

  bool isHidden() const;
};

/// The tokens of a text but the comments, the hidden ones included, with the end of the file after
/// them. The end stands after the last character, or where the text was given up.
///
/// text                       fewer than 2^32 code points
/// atMost                     tokens after which it is given up
/// line, charPositionInLine   of the first character, counted from 1 and from 0
std::vector<ScannedToken> scanTokens(std::u32string_view text, size_t atMost = SIZE_MAX, size_t line = 1,
                                     size_t charPositionInLine = 0);

}  // namespace kelo
