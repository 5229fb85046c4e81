// Questions that the first look at a node asks of its children. Used by the sources of resolve.h.
#pragma once

#include <memory>
#include <vector>

#include "interpreter/node_details.h"
#include "interpreter/tree_classes.h"

namespace kelo {

/// Whether a node is of exactly this class.
template <class Context>
bool is(KeloNode& node) {
  return exactly<Context>(&node) != nullptr;
}

inline bool isExpr(antlr4::tree::ParseTree* tree) { return isOfRule(tree, KeloParser::RuleExpr); }
/// 0 for the node of a rule.
inline size_t tokenType(antlr4::tree::ParseTree* tree) {
  return ruleNode(tree) ? 0 : dynamic_cast<antlr4::tree::TerminalNode&>(*tree).getSymbol()->getType();
}
/// The name that a node begins with.
inline Name nameOf(antlr4::ParserRuleContext* context) { return Name::intern(context->getStart()->getText()); }

inline std::vector<KeloNode*> expressionsOf(KeloNode& node) {
  std::vector<KeloNode*> result;
  for (antlr4::tree::ParseTree* child : node.children) {
    if (isExpr(child)) result.push_back(ruleNode(child));
  }
  return result;
}

inline std::vector<Name> namesOf(antlr4::ParserRuleContext& context) {
  std::vector<Name> result;
  for (antlr4::tree::ParseTree* child : context.children) {
    if (auto* id = exactly<KeloParser::Id_namesContext>(child)) result.push_back(nameOf(id));
  }
  return result;
}

/// The first child of a class; null: there is none.
template <class Context>
KeloNode* childOf(antlr4::ParserRuleContext& context) {
  for (antlr4::tree::ParseTree* child : context.children) {
    if (auto* found = exactly<Context>(child)) return found;
  }
  return nullptr;
}

/// What a kind of node needs besides its cache, as yet empty.
template <class Details>
Details& makeDetails(KeloNode& node) {
  auto details = std::make_unique<Details>();
  Details& result = *details;
  node.cache.details = std::move(details);
  return result;
}

}  // namespace kelo
