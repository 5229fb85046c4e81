// Which alternative a rule takes, found from the tokens by hand.
//
// OPTIMIZATION: the runtime answers each of these questions by walking a state machine over the
// tokens ahead, at 100 ns or more, and fills that machine slowly at first use. Nearly all of them
// depend on one or two tokens, or on what follows the bracket that matches the current one. The
// rest is left to the runtime.
//
// Invariant: a parse that succeeds with these answers gives the tree that the runtime gives. A
// wrong answer can only be given close before the place where a text goes wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frontend/grammar_decisions.h"
#include "frontend/token_list.h"
#include "grammar/kelo_parser_base.h"

namespace kelo {

class FastPrediction final : public Prediction {
 public:
  /// decisions   what the numbers of the generated parser mean
  FastPrediction(const TokenList& tokens, const std::vector<Decision>& decisions)
      : tokens_(tokens), decisions_(decisions) {}
  size_t alternative(size_t decision, const KeloParserBase& parser) override;
  /// The token from which on it leaves everything to the runtime.
  void setLimit(size_t tokenIndex) { limit_ = tokenIndex; }

 private:
  size_t type(size_t i) const { return tokens_.typeAt(i); }
  size_t behindPartner(size_t open) const;
  size_t behindFields(size_t i) const;

  size_t statement(size_t i) const;
  VarAssignAlternative assignment(size_t i) const;
  FuncHandleAlternative functionHandle(size_t i) const;
  BuiltInFunAlternative builtin(size_t i) const;
  size_t operand(size_t i) const;
  static bool colonIsOpen(const KeloParserBase& parser);
  size_t moreOperators(size_t i, const KeloParserBase& parser) const;
  size_t operatorKind(size_t i, const KeloParserBase& parser) const;
  size_t range(size_t colon) const;
  size_t moreArguments(size_t i) const;
  size_t moreElements(size_t i) const;

  const TokenList& tokens_;
  const std::vector<Decision>& decisions_;
  size_t limit_ = SIZE_MAX;
};

}  // namespace kelo
