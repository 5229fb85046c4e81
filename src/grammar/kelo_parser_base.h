// The part of the parser that is written by hand: what each node gets on entry, the limit of
// nesting, and the predicate of the ranges. The generated KeloParser derives from it.
#pragma once

#include "antlr4-runtime.h"
#include "grammar/kelo_node.h"
#include "values/name.h"

namespace kelo {

/// Thrown by a parse whose rules are nested more deeply than the stack is sure to hold, at the
/// token reached.
struct NestingTooDeep {
  antlr4::Token* token;
};

class KeloParserBase;

/// Answers in place of the runtime which alternative a rule takes.
class Prediction {
 public:
  virtual ~Prediction() = default;
  /// The alternative, from 1, that a decision of the generated parser takes, or 0 to leave the
  /// answer to the runtime.
  virtual size_t alternative(size_t decision, const KeloParserBase& parser) = 0;
};

class KeloParserBase : public antlr4::Parser {
 public:
  /// Rules that may enclose one another. A rule takes up to 700 bytes of stack, of which the thread
  /// must have 8 MiB.
  static constexpr int32_t kMaxDepth = 6000;

  explicit KeloParserBase(antlr4::TokenStream* input) : antlr4::Parser(input) {}

  /// The file that the nodes are given; set before a start rule runs.
  Name relativePath;
  /// Asked first for each alternative; null: the runtime answers everything.
  Prediction* prediction = nullptr;

  void enterRule(antlr4::ParserRuleContext* node, size_t state, size_t ruleIndex) override;
  using antlr4::Parser::enterRecursionRule;
  void enterRecursionRule(antlr4::ParserRuleContext* node, size_t state, size_t ruleIndex, int precedence) override;
  void pushNewRecursionContext(antlr4::ParserRuleContext* node, size_t state, size_t ruleIndex) override;

  /// The generated code asks its interpreter for alternatives. It finds this one before the
  /// runtime's.
  template <class Interpreter>
  KeloParserBase* getInterpreter() {
    return this;
  }
  size_t adaptivePredict(antlr4::TokenStream* input, size_t decision, antlr4::ParserRuleContext* node) {
    if (prediction != nullptr) {
      if (const size_t known = prediction->alternative(decision, *this)) return known;
    }
    return runtime()->adaptivePredict(input, decision, node);
  }
  antlr4::atn::ParserATNSimulator* runtime() const {
    return static_cast<antlr4::atn::ParserATNSimulator*>(_interpreter);
  }

  /// Whether a range may start after the expression just parsed: not directly inside the middle of
  /// "a:b:c".
  bool mayStartRange() const;
  /// Whether the expression just parsed is the body of a handle, so far.
  bool isInHandleBody() const;

 private:
  void enter(antlr4::ParserRuleContext* node);
};

}  // namespace kelo
