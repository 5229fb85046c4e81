// The runtime's prediction, made exact about where a text goes wrong.
//
// The runtime looks ahead as if a rule could be followed by all that follows it anywhere, and where
// no alternative goes on it may pick one that ended early. Both are right for valid text. For other
// text the parser then stops some tokens before or after the first one that fits nowhere, and that
// one is what the message is to name.
#pragma once

#include <memory>

#include "antlr4-runtime.h"

namespace kelo {

/// Throws NestingTooDeep where a text takes far more looking ahead than what users write.
class StrictPrediction final : public antlr4::atn::ParserATNSimulator {
 public:
  /// parser    the parser that it predicts for
  /// runtime   what it takes the place of; their tables are shared
  StrictPrediction(antlr4::Parser* parser, antlr4::atn::ParserATNSimulator& runtime)
      : ParserATNSimulator(parser, runtime.atn, runtime.decisionToDFA, runtime.getSharedContextCache()) {}

  /// The first token from which on it looks ahead with the rules that are really open. Costs some
  /// 100 us a token.
  void setExactFrom(size_t tokenIndex) { exactFrom_ = tokenIndex; }

  size_t adaptivePredict(antlr4::TokenStream* input, size_t decision,
                         antlr4::ParserRuleContext* outerContext) override;

 protected:
  void closureCheckingStopState(std::shared_ptr<antlr4::atn::ATNConfig> const& config,
                                antlr4::atn::ATNConfigSet* configs, antlr4::atn::ATNConfig::Set& closureBusy,
                                bool collectPredicates, bool fullCtx, int depth, bool treatEofAsEpsilon) override;
  std::shared_ptr<antlr4::atn::ATNConfig> ruleTransition(std::shared_ptr<antlr4::atn::ATNConfig> const& config,
                                                         antlr4::atn::RuleTransition* transition) override;
  size_t getAltThatFinishedDecisionEntryRule(antlr4::atn::ATNConfigSet*) override {
    return antlr4::atn::ATN::INVALID_ALT_NUMBER;
  }

 private:
  // Looking ahead through deep nesting takes time that grows with a power of the depth. These
  // limits, some 2 s of it for one text, are far from what a user writes.
  static constexpr size_t kMaxWork = 3'000'000;
  static constexpr int kMaxDepth = 400;

  size_t exactFrom_ = SIZE_MAX;
  size_t work_ = 0;
};

}  // namespace kelo
