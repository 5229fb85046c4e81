#include "frontend/strict_prediction.h"

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

}  // namespace kelo
