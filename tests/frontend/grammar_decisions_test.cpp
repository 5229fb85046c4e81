// The decisions that are answered by hand against the grammar that the parser was generated from.
#include "frontend/grammar_decisions.h"

#include <gtest/gtest.h>

#include <map>

#include "KeloParser.h"

namespace kelo {
namespace {

using antlr4::atn::ATNState;

// A place that moved in its rule would be another kind of choice, or one between other numbers of
// alternatives.
TEST(GrammarDecisions, AreTheChoicesThatTheirNamesSay) {
  const std::map<Decision, size_t> choices = {{Decision::statement, 9},      {Decision::assignment, 4},
                                              {Decision::functionHandle, 4}, {Decision::builtin, 3},
                                              {Decision::operand, 16},       {Decision::operatorKind, 9}};
  const antlr4::atn::ATN& atn = KeloParser(nullptr).getATN();
  const std::vector<Decision> decisions = decisionsOf(atn);
  ASSERT_EQ(decisions.size(), atn.decisionToState.size());
  std::map<Decision, int> found;
  for (size_t i = 0; i < decisions.size(); ++i) {
    const Decision decision = decisions[i];
    if (decision == Decision::unknown) continue;
    ++found[decision];
    antlr4::atn::DecisionState& state = *atn.decisionToState[i];
    const size_t alternatives = choices.contains(decision) ? choices.at(decision) : 2;
    EXPECT_EQ(state.transitions.size(), alternatives) << "decision " << i;
    const size_t kind = state.getStateType();
    const bool isLoop = kind == ATNState::PLUS_LOOP_BACK || kind == ATNState::STAR_LOOP_ENTRY;
    EXPECT_EQ(isLoop, alternatives == 2 && decision != Decision::fieldIndices) << "decision " << i;
  }
  EXPECT_EQ(found.size(), 15U);
  EXPECT_EQ(found[Decision::separators], 9);
  EXPECT_EQ(found[Decision::arguments], 4);
}

static_assert(precedenceOf(ExprAlternative::Transpose) == 22 && precedenceOf(ExprAlternative::BinaryOps_or) == 4);
static_assert(operandNumber(ExprAlternative::Colon_expr) == 16 && operatorNumber(ExprAlternative::Transpose) == 9);

}  // namespace
}  // namespace kelo
