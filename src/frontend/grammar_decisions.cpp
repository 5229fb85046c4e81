// The table of the places in the grammar that are answered by hand. A rule's decisions stand in the
// order in which the grammar closes them: loops and optional parts from left to right, the choice
// between the alternatives last. Tested by tests/frontend/grammar_decisions_test.cpp, since a place
// that moved would be answered by the slow way and not wrongly.
#include "frontend/grammar_decisions.h"

#include "KeloParser.h"

namespace kelo {
namespace {

using T = KeloParser;

struct Place {
  size_t rule;
  size_t decision;  // from 0, among those of the rule
  Decision meaning;
};

constexpr Place kPlaces[] = {
    // clang-format off
    {T::RuleStat, 2, Decision::separators},                 // FOR ... GP_TERM NEWLINE+
    {T::RuleStat, 5, Decision::separators},                 // WHILE ... GP_TERM NEWLINE+
    {T::RuleStat, 6, Decision::separators},                 // BREAK stat_separator+
    {T::RuleStat, 7, Decision::separators},                 // CONTINUE stat_separator+
    {T::RuleStat, 8, Decision::separators},                 // RETURN stat_separator+
    {T::RuleStat, 11, Decision::separators},                // IF ... GP_TERM NEWLINE+
    {T::RuleStat, 15, Decision::separators},                // SWITCH ... GP_TERM NEWLINE+
    {T::RuleStat, 16, Decision::separators},                // expr stat_separator+
    {T::RuleStat, 17, Decision::separators},                // var_assign stat_separator+
    {T::RuleStat, 18, Decision::statement},
    {T::RuleIndices_or_func_args, 0, Decision::arguments},  // LPAR ((expr COMMA)* expr)? RPAR
    {T::RuleField, 1, Decision::fieldIndices},              // (ID | ...) indices_or_func_args?
    {T::RuleVar_assign, 0, Decision::names},                // LSQB (id_names COMMA)* ...
    {T::RuleVar_assign, 1, Decision::arguments},            // id_names LPAR (expr COMMA)* ...
    {T::RuleVar_assign, 4, Decision::assignment},
    {T::RuleFunc_handle, 0, Decision::names},               // AT LPAR (id_names COMMA)* ...
    {T::RuleFunc_handle, 1, Decision::functionHandle},
    {T::RuleBuilt_in_fun, 0, Decision::arguments},          // BUILT_IN_FUNC LPAR ((expr COMMA)* ...
    {T::RuleBuilt_in_fun, 2, Decision::commandWords},       // BUILT_IN_FUNC ID+
    {T::RuleBuilt_in_fun, 3, Decision::builtin},
    {T::RuleExpr, 0, Decision::arguments},                  // id_names LPAR ((expr COMMA)* ...
    {T::RuleExpr, 4, Decision::elements},                   // LSQB ... expr ((...)* expr)* ...
    {T::RuleExpr, 7, Decision::fields},                     // id_names ... ('.' field)+
    {T::RuleExpr, 8, Decision::operand},
    {T::RuleExpr, 9, Decision::quotes},                     // expr (TPD | TP)+
    {T::RuleExpr, 10, Decision::operatorKind},
    {T::RuleExpr, 11, Decision::operators},
    // clang-format on
};

Decision decisionAt(size_t rule, size_t decision) {
  for (const Place& place : kPlaces) {
    if (place.rule == rule && place.decision == decision) return place.meaning;
  }
  return Decision::unknown;
}

}  // namespace

std::vector<Decision> decisionsOf(const antlr4::atn::ATN& atn) {
  std::vector<size_t> counted(atn.ruleToStartState.size());
  std::vector<Decision> decisions;
  decisions.reserve(atn.decisionToState.size());
  for (const antlr4::atn::DecisionState* state : atn.decisionToState) {
    decisions.push_back(decisionAt(state->ruleIndex, counted[state->ruleIndex]++));
  }
  return decisions;
}

}  // namespace kelo
