// The scanner against the token rules, and against the lexer that the tool generates from them.
#include "grammar/scanner.h"

#include <ANTLRInputStream.h>
#include <gtest/gtest.h>
#include <support/StringUtils.h>

#include <array>

#include "KeloLexer.h"
#include "grammar/builtin_names.h"
#include "grammar/corpus.h"
#include "places.h"

namespace kelo {
namespace {

std::u32string codePointsOf(const std::string& text) {
  return antlrcpp::utf8_to_utf32(text.data(), text.data() + text.size());
}

// Type, first code point, one after the last, line, column, hidden or not.
using Row = std::array<size_t, 6>;

std::vector<Row> scannedRows(const std::string& text) {
  std::vector<Row> rows;
  for (const ScannedToken& token : scanTokens(codePointsOf(text))) {
    rows.push_back({token.type, token.start, token.end, token.line, token.charPositionInLine, token.isHidden()});
  }
  rows.back()[0] = antlr4::Token::EOF;
  return rows;
}

std::vector<Row> generatedRows(const std::string& text) {
  antlr4::ANTLRInputStream stream(text);
  KeloLexer lexer(&stream);
  std::vector<Row> rows;
  do {
    const auto token = lexer.nextToken();
    rows.push_back({token->getType(), token->getStartIndex(), token->getStopIndex() + 1, token->getLine(),
                    token->getCharPositionInLine(), token->getChannel() == antlr4::Token::HIDDEN_CHANNEL});
  } while (rows.back()[0] != antlr4::Token::EOF);
  return rows;
}

std::string typesOf(const std::string& text) {
  antlr4::ANTLRInputStream none;
  const KeloLexer lexer(&none);
  std::string names;
  for (const ScannedToken& token : scanTokens(codePointsOf(text))) {
    if (token.type == static_cast<uint32_t>(antlr4::Token::EOF)) break;
    names.append(names.empty() ? "" : " ");
    names.append(token.type == KeloLexer::T__0 ? "DOT" : lexer.getVocabulary().getSymbolicName(token.type));
  }
  return names;
}

struct Case {
  std::string text;
  const char* types;
};

const Case kCases[] = {
    // clang-format off
    // numbers
    {"5 5e 5e+", "INT WS INT ID WS INT ID PLUS"},
    {"1e3 .5 1.5e-2 1. 1.e2", "DOUBLE WS DOUBLE WS DOUBLE WS DOUBLE WS DOUBLE"},    {"1.e2e3", "DOUBLE"},
    {"1.5e2e3", "DOUBLE ID"},               {"1.5.2", "DOUBLE DOUBLE"},             {"1e5.5", "DOUBLE DOUBLE"},
    {"1.e", "DOUBLE ID"},
    {"1./x 2.*y 2.^3 1.\\a", "INT RDIVIDE ID WS INT DMULT ID WS INT DPOWER INT WS INT LDIVIDE ID"},
    {"1.+2", "DOUBLE PLUS INT"},            {"1..^2", "DOUBLE DPOWER INT"},         {"1...", "DOUBLE DOT DOT"},
    {"2i 2.5j .5e3i 1.i 1.e2i", "I WS I WS I WS I WS I"},                           {"1.e2e3i", "DOUBLE ID"},
    {"i 2k", "ID WS INT ID"},
    // quotes
    {"a' a''", "ID TP WS ID TP TP"},        {"a.' 1.'", "ID TPD WS DOUBLE TP"},     {"1:3'", "INT COLON INT TP"},
    {"a'b'", "ID TP ID TP"},                {"a 'b'", "ID WS CHAR"},                {"a_'b'", "ID CHAR"},
    {"[a']'", "LSQB ID TP RSQB TP"},        {"('b')'", "LPAR CHAR RPAR TP"},        {"'it''s'", "CHAR"},
    {"'' ''''", "CHAR WS CHAR"},            {"'''", "CHAR TP"},                     {"'a'b'", "CHAR ID TP"},
    {"'a\nb'", "TP ID NEWLINE ID TP"},      {"'a\rb'", "TP ID UNKNOWN ID TP"},      {"'50% of é'", "CHAR"},
    {"é' a\u0301' €'a'", "UNKNOWN TP WS ID UNKNOWN TP WS UNKNOWN CHAR"},
    // comments and line ends
    {"x % 'c'\ny", "ID WS NEWLINE ID"},     {"x %c\r\ny\r\n", "ID WS NEWLINE ID NEWLINE"},
    {"%{\na\n%}", "NEWLINE ID NEWLINE"},    {"\r\t", "UNKNOWN WS"},
    // the two meanings of "end"
    {"end", "GP_TERM"},                     {"x(end)", "ID LPAR END RPAR"},
    {"y=f(i); end", "ID EQ ID LPAR ID RPAR SEMICOLON WS GP_TERM"},                  {"end % see (1)", "END WS"},
    {"end ')'", "END WS CHAR"},             {"end\n)", "GP_TERM NEWLINE RPAR"},
    {"end\r)", "GP_TERM UNKNOWN RPAR"},     {"end\u2028)", "GP_TERM UNKNOWN RPAR"},
    {"end\t)end", "END WS RPAR GP_TERM"},
    // operators
    {".+ .- ~= != ~ !", "PLUS WS MINUS WS NEQ WS NEQ WS NOT WS NOT"},
    {"&&& ||| === <== >=", "AND AND WS OR OR WS EQEQ EQ WS LE EQ WS GE"},
    {"x.y ..", "ID DOT ID WS DOT DOT"},
    // words
    {"sum Sum sums function functions", "BUILT_IN_FUNC WS ID WS ID WS FUNC WS ID"},
    {"elseif else1 _if", "ELSEIF WS ID WS ID"},
    {std::string("a\0b \"", 5), "ID UNKNOWN ID WS UNKNOWN"},
    // clang-format on
};

TEST(Scanner, FollowsTheTokenRules) {
  for (const Case& c : kCases) EXPECT_EQ(typesOf(c.text), c.types) << c.text;
}

TEST(Scanner, AgreesWithTheGeneratedLexerOnPrograms) {
  std::vector<std::string> texts = corpus::programs();
  for (const std::string& transcript : corpus::transcripts()) texts.push_back(transcript);
  for (const Case& c : kCases) texts.push_back(c.text);
  ASSERT_GT(texts.size(), 450U);
  for (const std::string& text : texts) ASSERT_EQ(scannedRows(text), generatedRows(text)) << text;
}

TEST(Scanner, AgreesWithTheGeneratedLexerOnAnything) {
  for (unsigned seed = 0; seed < 5000; ++seed) {
    corpus::Random random(seed);
    const std::string text = corpus::soup(random);
    ASSERT_EQ(scannedRows(text), generatedRows(text)) << "seed " << seed << ": " << text;
  }
}

TEST(Scanner, GivesUpAfterAsManyTokensAsItMay) {
  const std::vector<ScannedToken> tokens = scanTokens(U"a+b+c", 3, 7, 2);
  ASSERT_EQ(tokens.size(), 4U);
  EXPECT_EQ(tokens[0].line, 7U);
  EXPECT_EQ(tokens[2].charPositionInLine, 4U);
  EXPECT_EQ(tokens[3].start, 3U);
}

TEST(Scanner, KnowsEachBuiltinNameAsTheGeneratedLexerDoes) {
  for (const std::string_view name : kBuiltinNames) {
    const std::string text(name);
    EXPECT_EQ(typesOf(text), "BUILT_IN_FUNC");
    EXPECT_EQ(scannedRows(text + " " + text + "0"), generatedRows(text + " " + text + "0")) << text;
  }
}

}  // namespace
}  // namespace kelo
