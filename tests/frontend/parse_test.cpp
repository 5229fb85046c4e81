// The parse against two judges: the tree that the runtime alone makes of the same tokens, and the
// rules of the grammar, which say of any text whether it is valid and which of its tokens is the
// first wrong one.
#include <gtest/gtest.h>

#include "frontend/grammar_oracle.h"
#include "frontend/matrix_separators.h"
#include "frontend/parse_listing.h"
#include "frontend/parsed_text.h"

namespace kelo {
namespace {

using antlr4::atn::PredictionMode;
using corpus::below;
using corpus::Random;
using T = KeloParser;

const GrammarOracle& oracle() {
  static const GrammarOracle oracle;
  return oracle;
}

struct Tokens {
  explicit Tokens(const std::string& text) : source(decodeUtf8(text).value() + U'\n', nullptr), list(source, scan()) {}

  std::vector<ScannedToken> scan() const {
    std::vector<ScannedToken> scanned = scanTokens(source.text());
    insertMatrixElementSeparators(scanned);
    return scanned;
  }
  std::vector<size_t> types() const {
    std::vector<size_t> types;
    for (size_t i = 0; i < list.size(); ++i) types.push_back(list.typeAt(i));
    return types;
  }

  SourceText source;
  mutable TokenList list;
};

// The tree of the runtime with full context at each decision; none for a text that does not parse.
std::string plainTree(const Tokens& tokens) {
  KeloParser parser(&tokens.list);
  parser.removeErrorListeners();
  parser.setErrorHandler(std::make_shared<antlr4::BailErrorStrategy>());
  parser.runtime()->setPredictionMode(PredictionMode::LL);
  try {
    return treeListing(*parser.prog());
  } catch (const antlr4::ParseCancellationException&) {
    return "none";
  }
}

class Complaints final : public antlr4::BaseErrorListener {
 public:
  void syntaxError(antlr4::Recognizer*, antlr4::Token* token, size_t, size_t, const std::string&,
                   std::exception_ptr) override {
    indices.push_back(token->getTokenIndex());
  }
  std::vector<size_t> indices;
};

// True for a valid text.
bool expectJudged(const std::string& text) {
  const Tokens tokens(text);
  const std::vector<size_t> types = tokens.types();
  const size_t wrong = oracle().firstWrong(types);
  const auto parse = std::make_shared<ParsedText>(decodeUtf8(text).value(), ParsedText::Origin{});
  Complaints complaints;
  const ParsedText::Outcome outcome = parse->parse(ParsedText::StartRule::prog, complaints);
  if (wrong < types.size()) {
    EXPECT_EQ(outcome, ParsedText::Outcome::syntaxError) << text;
    EXPECT_EQ(complaints.indices, std::vector<size_t>{wrong}) << text;
    return false;
  }
  EXPECT_EQ(outcome, ParsedText::Outcome::parsed) << text;
  EXPECT_TRUE(complaints.indices.empty()) << text;
  if (outcome != ParsedText::Outcome::parsed) return true;
  EXPECT_EQ(treeListing(*parse->root()), plainTree(tokens)) << text;
  return true;
}

template <size_t n>
const char* oneOf(Random& random, const char* const (&spellings)[n]) {
  return spellings[below(random, n)];
}

std::string spelling(size_t type, Random& random) {
  switch (type) {
    case T::INT: return oneOf(random, {"1", "20"});
    case T::DOUBLE: return oneOf(random, {".5", "1.5", "2e3", "3."});
    case T::I: return oneOf(random, {"2i", ".5j"});
    case T::CHAR: return oneOf(random, {"'x'", "'it''s'", "''", "'[( %'"});
    case T::ID: return oneOf(random, {"a", "b", "c_1", "x", "yy"});
    case T::BUILT_IN_FUNC: return oneOf(random, {"sum", "hold", "pi"});
    case T::NEWLINE: return oneOf(random, {"\n", "\r\n", "% note\n", "\n\n\n\n\n\n"});
    case T::GP_TERM:
    case T::END: return "end";
    case T::FUNC: return "function";
    case T::T__0: return ".";
    case T::PLUS: return oneOf(random, {"+", ".+"});
    case T::MINUS: return oneOf(random, {"-", "-", ".-"});
    case T::NOT: return oneOf(random, {"~", "!"});
    case T::NEQ: return oneOf(random, {"~=", "!="});
    case T::AND: return oneOf(random, {"&", "&&"});
    case T::OR: return oneOf(random, {"|", "||"});
    case T::LDIVIDE: return ".\\";
    case T::MLDIVIDE: return "\\";
    case T::TPD: return ".'";
    case T::TP: return "'";
    default: break;
  }
  const std::string quoted = KeloParser(nullptr).getVocabulary().getLiteralName(type);
  return quoted.substr(1, quoted.size() - 2);
}

bool isWordLike(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.'; }

// Blanks stand where they must, so that the text is cut into these tokens again, and at random
// elsewhere.
std::string written(const std::vector<size_t>& types, Random& random) {
  std::string text;
  for (const size_t type : types) {
    const std::string piece = spelling(type, random);
    const bool isTranspose = type == T::TP || type == T::TPD;
    const bool touches = !text.empty() && isWordLike(text.back()) && isWordLike(piece.front());
    if (!isTranspose && (touches || type == T::CHAR || below(random, 3) == 0)) text += " ";
    text += piece;
  }
  return text;
}

void damage(std::vector<size_t>& types, Random& random) {
  const size_t at = below(random, types.size());
  const auto place = types.begin() + static_cast<ptrdiff_t>(at);
  const size_t other = types[below(random, types.size())];
  size_t any = 1 + below(random, T::ID);
  if (any == T::COMMENT || any == T::WS) any = T::EQ;
  switch (below(random, 4)) {
    case 0: types.erase(place); break;
    case 1: types.insert(place, any); break;
    case 2: *place = any; break;
    default: *place = other; break;
  }
}

TEST(Parse, AgreesWithTheGrammarOnPrograms) {
  size_t valid = 0;
  for (const std::string& text : corpus::programs()) {
    if (text.size() < 500) valid += expectJudged(text) ? 1 : 0;
  }
  EXPECT_GT(valid, 400U);
}

// What decides here stands some lines further down.
TEST(Parse, AgreesWithTheGrammarWhereItMustLookFarAhead) {
  const std::string far = "[1\n\n\n\n\n\n2]";
  for (const char* range : {"1:2 == 3:", "1:2 & 3 | 4:", "1:@() 2:", "1:~2 < -3:", "::", "1:(2:3):4:", "a.b:end:"}) {
    for (const std::string tail : {"", ":5", " == 5", " & 5:6"}) expectJudged("x = " + (range + far + tail));
  }
}

TEST(Parse, AgreesWithTheGrammarOnRandomTexts) {
  constexpr unsigned kTexts = 1000;
  unsigned valid = 0;
  for (unsigned seed = 0; seed < kTexts && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    std::vector<size_t> types = oracle().randomTokens(random);
    if (types.empty() || types.size() > 80) continue;
    valid += expectJudged(written(types, random)) ? 1 : 0;
    for (size_t times = 1 + below(random, 3); times > 0 && !types.empty(); --times) damage(types, random);
    expectJudged(written(types, random));
  }
  EXPECT_GT(valid, kTexts / 3);
}

}  // namespace
}  // namespace kelo
