// The stages of a parse. Nearly every text passes the first one; the others exist to say exactly
// where a text is wrong.
//
// 1. fast      predictions by hand, the runtime in its simpler mode (SLL), silent
// 2. careful   the same up to some lines before the failure, from there on the runtime in its
//              complete mode (LL), silent; a text that only the simpler mode refused passes here
// 3. exact     as stage 2, and around the failure StrictPrediction; tells the listener of the first
//              wrong token
//
// Tested by tests/frontend/parse_test.cpp and matlab_parser_test.cpp.
#include "frontend/parsed_text.h"

#include "frontend/bail_strategy.h"
#include "frontend/matrix_separators.h"

namespace kelo {
namespace {

// A token and its nodes take about 1 KB; this is some 2 GB, or a literal of a million numbers.
constexpr size_t kMaxTokens = 2'000'000;

std::vector<ScannedToken> separatedTokens(const std::u32string& text, const ParsedText::Origin& origin) {
  std::vector<ScannedToken> tokens = scanTokens(text, kMaxTokens, origin.line, origin.charPositionInLine);
  insertMatrixElementSeparators(tokens);
  return tokens;
}

// How far before the place where a stage stopped the cause may lie, in lines and in tokens.
constexpr size_t kCarefulLines = 4;
constexpr size_t kCarefulTokens = 2000;
constexpr size_t kExactTokens = 200;

// Keeps the token that a parse complained of.
class PlaceOfFailure final : public antlr4::BaseErrorListener {
 public:
  void syntaxError(antlr4::Recognizer*, antlr4::Token* token, size_t, size_t, const std::string&,
                   std::exception_ptr) override {
    this->token = token;
  }
  antlr4::Token* token = nullptr;
};

// All parsers have the same decisions.
const std::vector<Decision>& decisionsOf(const KeloParser& parser) {
  static const std::vector<Decision> decisions = kelo::decisionsOf(parser.getATN());
  return decisions;
}

}  // namespace

using antlr4::atn::PredictionMode;

// A statement needs a separator of its own, so the last line gets one.
ParsedText::ParsedText(std::u32string text, Origin origin)
    : source_(std::move(text) + U'\n', this),
      tokens_(source_, separatedTokens(source_.text(), origin)),
      parser_(&tokens_),
      prediction_(tokens_, decisionsOf(parser_)),
      strict_(new StrictPrediction(&parser_, *parser_.runtime())) {
  parser_.prediction = &prediction_;
  parser_.relativePath = origin.relativePath;
  parser_.setInterpreter(strict_);  // which the parser owns from here
  parser_.removeErrorListeners();
  parser_.setErrorHandler(std::make_shared<BailKeloStrategy>());
}

ParsedText::Outcome ParsedText::parse(StartRule rule, antlr4::ANTLRErrorListener& listener) {
  stoppedAt_ = tokens_.get(tokens_.size() - 1);
  if (stoppedAt_->getStartIndex() != source_.size()) return Outcome::tooLong;
  try {
    root_ = run(rule, PredictionMode::SLL);
    if (root_ == nullptr) root_ = runCarefulStage(rule, listener);
  } catch (const NestingTooDeep& problem) {
    stoppedAt_ = problem.token;
    return Outcome::tooDeep;
  }
  return root_ == nullptr ? Outcome::syntaxError : Outcome::parsed;
}

// Stages 2 and 3. The text up to some lines before the failure was parsed rightly, so the fast
// predictions serve there again. The place of a failure is the position that the parser had
// reached; the token that it complained of may lie far ahead of it. Where stage 3 takes too long,
// that token has to do.
KeloNode* ParsedText::runCarefulStage(StartRule rule, antlr4::ANTLRErrorListener& listener) {
  prediction_.setLimit(tokens_.startOfLines(tokens_.position(), kCarefulLines, kCarefulTokens));
  PlaceOfFailure place;
  parser_.addErrorListener(&place);
  if (KeloNode* root = run(rule, PredictionMode::LL)) return root;
  parser_.removeErrorListeners();
  parser_.addErrorListener(&listener);
  strict_->setExactFrom(tokens_.startOfLines(tokens_.position(), kCarefulLines, kExactTokens));
  try {
    return run(rule, PredictionMode::LL);
  } catch (const NestingTooDeep&) {
    parser_.notifyErrorListeners(place.token, std::string(), nullptr);
    return nullptr;
  }
}

KeloNode* ParsedText::run(StartRule rule, PredictionMode mode) {
  parser_.reset();
  strict_->setPredictionMode(mode);
  try {
    if (rule == StartRule::prog) return parser_.prog();
    return parser_.exprOnly();
  } catch (const antlr4::ParseCancellationException&) {
    return nullptr;
  }
}

}  // namespace kelo
