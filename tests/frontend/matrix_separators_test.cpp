// Which signs inside square brackets start an element.
#include "frontend/matrix_separators.h"

#include <gtest/gtest.h>

#include "KeloLexer.h"
#include "frontend/source_text.h"

namespace kelo {
namespace {

// The text with its commas; comments are no tokens and are gone.
std::string separated(const std::string& text) {
  const std::u32string codePoints = decodeUtf8(text).value();
  std::vector<ScannedToken> tokens = scanTokens(codePoints);
  insertMatrixElementSeparators(tokens);
  std::string result;
  for (const ScannedToken& token : tokens) {
    const std::u32string_view piece = std::u32string_view(codePoints).substr(token.start, token.end - token.start);
    result += token.type == KeloLexer::COMMA ? "," : encodeUtf8(piece);
  }
  return result;
}

struct Case {
  const char* text;
  const char* separated;
};

const Case kCases[] = {
    // clang-format off
    // a blank before and none after, inside square brackets only
    {"[1 -2 +3]", "[1,-2,+3]"},             {"[a \t -b]", "[a,-b]"},                {"[1 .-2 .+3]", "[1,.-2,.+3]"},
    {"[1 - 2]", "[1 - 2]"},                 {"[1-2 ]", "[1-2 ]"},                   {"[1 -\n2]", "[1,-\n2]"},
    {"a -b", "a -b"},                       {"[1] -2", "[1] -2"},                   {"-[1] -[2 -3]", "-[1] -[2,-3]"},
    // what starts an element anyway
    {"[ -1; -2, -3\n -4]", "[ -1; -2, -3\n -4]"},                                   {"[1 % c\n -2]", "[1 \n -2]"},
    // an operator before the blank is no protection
    {"[2 * -3]", "[2 *,-3]"},               {"[1 - -2]", "[1 -,-2]"},               {"[@ -1]", "[@,-1]"},
    // round brackets inside the tightest square ones
    {"[f(1) -2]", "[f(1),-2]"},             {"[f(1 -2)]", "[f(1 -2)]"},
    {"[f([1 -2]) -3]", "[f([1,-2]),-3]"},   {"[([1] -2) -3]", "[([1] -2),-3]"},
    {"[(1 -[2 -3] -4) -5]", "[(1 -[2,-3] -4),-5]"},
    {"f([1 -2], 3 -4)", "f([1,-2], 3 -4)"}, {"[[1 -2] -3; 4 -5]", "[[1,-2],-3; 4,-5]"},
    // brackets without a partner
    {"[1 -2", "[1 -2"},                     {"] [1 -2] -3 [", "] [1,-2] -3 ["},     {"[(1 -2]", "[(1,-2]"},
    {"[1) -2]", "[1),-2]"},                 {"([) 1 -2]", "([) 1,-2]"},
    // brackets and signs that are text or comment
    {"['[(' -1]", "['[(',-1]"},             {"[a' -b' 'c -d']", "[a',-b' 'c -d']"}, {"[1 % ]\n2 -3]", "[1 \n2,-3]"},
    {"x = 'a -b' % [c -d]", "x = 'a -b' "}, {" -1", " -1"},
    // clang-format on
};

TEST(MatrixSeparators, StandBeforeSignsThatStartAnElement) {
  for (const Case& c : kCases) EXPECT_EQ(separated(c.text), c.separated);
}

}  // namespace
}  // namespace kelo
