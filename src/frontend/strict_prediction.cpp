// Two changes to the runtime's simulation: with the rules that are really open from the first token
// on, and with limits to the work, since that way of looking ahead can take time without end.
// Tested by tests/frontend/parse_test.cpp.
#include "frontend/strict_prediction.h"

#include "grammar/kelo_parser_base.h"

namespace kelo {

// What the runtime does in its second step, from the start and without remembering.
size_t StrictPrediction::adaptivePredict(antlr4::TokenStream* input, size_t decision,
                                         antlr4::ParserRuleContext* outerContext) {
  const size_t start = input->index();
  if (start < exactFrom_) return ParserATNSimulator::adaptivePredict(input, decision, outerContext);
  antlr4::dfa::DFA& dfa = decisionToDFA[decision];
  _input = input;
  _startIndex = start;
  _outerContext = outerContext;
  _dfa = &dfa;
  const auto tidyUp = antlrcpp::finally([&] {
    mergeCache.clear();
    _dfa = nullptr;
    input->seek(start);
  });
  const std::unique_ptr<antlr4::atn::ATNConfigSet> alternatives =
      computeStartState(dfa.atnStartState, outerContext, true);
  return execATNWithFullContext(dfa, nullptr, alternatives.get(), input, start, outerContext);
}

void StrictPrediction::closureCheckingStopState(std::shared_ptr<antlr4::atn::ATNConfig> const& config,
                                                antlr4::atn::ATNConfigSet* configs,
                                                antlr4::atn::ATNConfig::Set& closureBusy, bool collectPredicates,
                                                bool fullCtx, int depth, bool treatEofAsEpsilon) {
  if (++work_ > kMaxWork) throw NestingTooDeep{_input->LT(1)};
  ParserATNSimulator::closureCheckingStopState(config, configs, closureBusy, collectPredicates, fullCtx, depth,
                                               treatEofAsEpsilon);
}

std::shared_ptr<antlr4::atn::ATNConfig> StrictPrediction::ruleTransition(
    std::shared_ptr<antlr4::atn::ATNConfig> const& config, antlr4::atn::RuleTransition* transition) {
  int depth = 0;
  for (auto context = config->context; context != nullptr && !context->isEmpty();
       context = context->getParent(0)) {
    if (++depth > kMaxDepth) throw NestingTooDeep{_input->LT(1)};
  }
  return ParserATNSimulator::ruleTransition(config, transition);
}

}  // namespace kelo
