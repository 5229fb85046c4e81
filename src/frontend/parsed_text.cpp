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

}  // namespace

using antlr4::atn::PredictionMode;

// A statement needs a separator of its own, so the last line gets one.
ParsedText::ParsedText(std::u32string text, Origin origin)
    : source_(std::move(text) + U'\n', this),
      tokens_(source_, separatedTokens(source_.text(), origin)),
      parser_(&tokens_) {
  parser_.relativePath = origin.relativePath;
  parser_.removeErrorListeners();
  parser_.setErrorHandler(std::make_shared<BailKeloStrategy>());
}

ParsedText::Outcome ParsedText::parse(StartRule rule, antlr4::ANTLRErrorListener& listener) {
  try {
    root_ = runStage(rule, PredictionMode::SLL);
    if (root_ == nullptr) {
      parser_.addErrorListener(&listener);
      root_ = runStage(rule, PredictionMode::LL);
      parser_.removeErrorListeners();
    }
  } catch (const NestingTooDeep& problem) {
    tooDeepAt_ = problem.token;
    return Outcome::tooDeep;
  }
  return root_ == nullptr ? Outcome::syntaxError : Outcome::parsed;
}

KeloNode* ParsedText::runStage(StartRule rule, PredictionMode mode) {
  parser_.reset();
  parser_.getInterpreter<antlr4::atn::ParserATNSimulator>()->setPredictionMode(mode);
  try {
    if (rule == StartRule::prog) return parser_.prog();
    return parser_.exprOnly();
  } catch (const antlr4::ParseCancellationException&) {
    return nullptr;
  }
}

}  // namespace kelo
