#include "grammar/kelo_parser_base.h"

#include "KeloParser.h"

namespace kelo {

// A node's parent is the rule that called it, so the depth of the parse is known without counting
// down on the way out.
void KeloParserBase::enter(antlr4::ParserRuleContext* node) {
  auto* entered = static_cast<KeloNode*>(node);
  const auto* parent = static_cast<const KeloNode*>(node->parent);
  entered->relativePath = relativePath;
  entered->depth = parent == nullptr ? 0 : parent->depth + 1;
  if (entered->depth > kMaxDepth) throw NestingTooDeep{getCurrentToken()};
}

// OPTIMIZATION: what the runtime does for a parser without listeners, which casts the parent
// dynamically.
void KeloParserBase::enterRule(antlr4::ParserRuleContext* node, size_t state, size_t /*ruleIndex*/) {
  enter(node);
  setState(state);
  _ctx = node;
  node->start = _input->LT(1);
  if (node->parent != nullptr) static_cast<antlr4::ParserRuleContext*>(node->parent)->addChild(node);
}

void KeloParserBase::enterRecursionRule(antlr4::ParserRuleContext* node, size_t state, size_t ruleIndex,
                                        int precedence) {
  enter(node);
  antlr4::Parser::enterRecursionRule(node, state, ruleIndex, precedence);
}

void KeloParserBase::pushNewRecursionContext(antlr4::ParserRuleContext* node, size_t state, size_t ruleIndex) {
  enter(node);
  antlr4::Parser::pushNewRecursionContext(node, state, ruleIndex);
}

// Only the middle of a range is parsed at precedence 0 below a range. The current node is the
// expression so far; its parent is the range, which has its left operand and its first colon by
// then.
bool KeloParserBase::mayStartRange() const {
  if (getPrecedence() != 0 || _ctx == nullptr) return true;
  return dynamic_cast<const KeloParser::Matrix_colonContext*>(_ctx->parent) == nullptr;
}

bool KeloParserBase::isInHandleBody() const {
  return _ctx != nullptr && dynamic_cast<const KeloParser::Func_handleContext*>(_ctx->parent) != nullptr;
}

}  // namespace kelo
