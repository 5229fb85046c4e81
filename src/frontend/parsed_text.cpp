#include "frontend/parsed_text.h"

#include "frontend/bail_strategy.h"
#include "frontend/matrix_separators.h"

namespace kelo {
namespace {

std::vector<ScannedToken> separatedTokens(const std::u32string& text, const ParsedText::Origin& origin) {
  std::vector<ScannedToken> tokens = scanTokens(text, origin.line, origin.charPositionInLine);
  insertMatrixElementSeparators(tokens);
  return tokens;
}

// How far before the token that the careful stage stopped at the cause may lie.
constexpr size_t kExactLines = 4;
constexpr size_t kExactTokens = 2000;

class PlaceOfFailure final : public antlr4::BaseErrorListener {
 public:
  void syntaxError(antlr4::Recognizer*, antlr4::Token* token, size_t, size_t, const std::string&,
                   std::exception_ptr) override {
    tokenIndex = token->getTokenIndex();
  }
  size_t tokenIndex = 0;
};

}  // namespace

using antlr4::atn::PredictionMode;

// A statement needs a separator of its own, so the last line gets one.
ParsedText::ParsedText(std::u32string text, Origin origin)
    : source_(std::move(text) + U'\n', this),
      tokens_(source_, separatedTokens(source_.text(), origin)),
      prediction_(tokens_),
      parser_(&tokens_),
      strict_(new StrictPrediction(&parser_, *parser_.runtime())) {
  parser_.relativePath = origin.relativePath;
  parser_.setInterpreter(strict_);  // which the parser owns from here
  parser_.removeErrorListeners();
  parser_.setErrorHandler(std::make_shared<BailKeloStrategy>());
}

ParsedText::Outcome ParsedText::parse(StartRule rule, antlr4::ANTLRErrorListener& listener) {
  try {
    root_ = runFastStage(rule);
    if (root_ == nullptr) root_ = runCarefulStage(rule, listener);
  } catch (const NestingTooDeep& problem) {
    tooDeepAt_ = problem.token;
    return Outcome::tooDeep;
  }
  return root_ == nullptr ? Outcome::syntaxError : Outcome::parsed;
}

KeloNode* ParsedText::runFastStage(StartRule rule) {
  parser_.prediction = &prediction_;
  KeloNode* root = run(rule, PredictionMode::SLL);
  parser_.prediction = nullptr;
  return root;
}

// Where this stage fails too, it is run again, exact around the token that it stopped at, and told to the listener.
KeloNode* ParsedText::runCarefulStage(StartRule rule, antlr4::ANTLRErrorListener& listener) {
  PlaceOfFailure place;
  parser_.addErrorListener(&place);
  if (KeloNode* root = run(rule, PredictionMode::LL)) return root;
  parser_.removeErrorListeners();
  parser_.addErrorListener(&listener);
  strict_->setExactFrom(tokens_.startOfLines(place.tokenIndex, kExactLines, kExactTokens));
  return run(rule, PredictionMode::LL);
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
