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

// How far before the token that a stage stopped at the cause may lie.
constexpr size_t kCarefulLines = 4;
constexpr size_t kCarefulTokens = 2000;
constexpr size_t kExactTokens = 200;

class PlaceOfFailure final : public antlr4::BaseErrorListener {
 public:
  void syntaxError(antlr4::Recognizer*, antlr4::Token* token, size_t, size_t, const std::string&,
                   std::exception_ptr) override {
    this->token = token;
  }
  antlr4::Token* token = nullptr;
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

// What was parsed up to the lines around the failure was parsed rightly and is parsed again in the same way. Where this
// stage fails too, it is run once more and told to the listener, exact around the place where it stopped: the position
// that the parser had reached, from which the token that it complains of may lie far ahead. Where that takes too long,
// the token has to do.
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
