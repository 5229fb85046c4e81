#include "frontend/parsed_text.h"

#include "frontend/matrix_separators.h"

namespace kelo {

using antlr4::atn::PredictionMode;

// A statement needs a separator of its own, so the last line gets one.
ParsedText::ParsedText(std::u32string text, Origin origin)
    : source_(std::move(text) + U'\n', this), lexer_(&source_), tokens_(&lexer_), parser_(&tokens_) {
  lexer_.setLine(origin.line);
  lexer_.setCharPositionInLine(origin.charPositionInLine);
  parser_.relativePath = origin.relativePath;
  parser_.removeErrorListeners();
  parser_.setErrorHandler(std::make_shared<BailKeloStrategy>());
}

ParsedText::Outcome ParsedText::parse(StartRule rule, antlr4::ANTLRErrorListener& listener) {
  try {
    prepareTokens();
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

void ParsedText::prepareTokens() {
  tokens_.fill();
  std::vector<antlr4::CommonToken*> tokens(tokens_.size());
  for (size_t i = 0; i < tokens.size(); ++i) tokens[i] = static_cast<antlr4::CommonToken*>(tokens_.get(i));
  insertMatrixElementSeparators(tokens);
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
