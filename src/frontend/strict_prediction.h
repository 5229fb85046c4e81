// The runtime's prediction, made exact about where a text goes wrong.
//
// The runtime looks ahead as if a rule could be followed by all that follows it anywhere, and where no alternative goes
// on it may pick one that ended early. Both are right for valid text. For other text the parser then stops some tokens
// before or behind the first one that fits nowhere, and that one is what the user is told.
#pragma once

#include "antlr4-runtime.h"

namespace kelo {

class StrictPrediction final : public antlr4::atn::ParserATNSimulator {
 public:
  /// parser    the parser that it predicts for
  /// runtime   what it takes the place of; their tables are shared
  StrictPrediction(antlr4::Parser* parser, antlr4::atn::ParserATNSimulator& runtime)
      : ParserATNSimulator(parser, runtime.atn, runtime.decisionToDFA, runtime.getSharedContextCache()) {}

  /// The first token from which on it looks ahead with the rules that are really open. Costs some 100 us a token.
  void setExactFrom(size_t tokenIndex) { exactFrom_ = tokenIndex; }

  size_t adaptivePredict(antlr4::TokenStream* input, size_t decision,
                         antlr4::ParserRuleContext* outerContext) override;

 protected:
  size_t getAltThatFinishedDecisionEntryRule(antlr4::atn::ATNConfigSet*) override {
    return antlr4::atn::ATN::INVALID_ALT_NUMBER;
  }

 private:
  size_t exactFrom_ = SIZE_MAX;
};

}  // namespace kelo
