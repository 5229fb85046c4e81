// The class of a tree's node, asked by one comparison of addresses. Casts that look for a base
// class cost many times that, and so does the comparison of two different classes by their names;
// lowering a long program asks it of every node. The classes are the program's own, so each has one
// record.
#pragma once

#include <typeinfo>

#include <tree/ErrorNodeImpl.h>
#include <tree/TerminalNodeImpl.h>

#include "KeloParser.h"

namespace kelo {

/// The node as one of exactly this class, else null: a labelled alternative, or a rule without
/// labels.
template <class Context>
Context* exactly(antlr4::tree::ParseTree* tree) {
  return &typeid(*tree) == &typeid(Context) ? static_cast<Context*>(tree) : nullptr;
}

/// The node of a rule; null for a token.
inline KeloNode* ruleNode(antlr4::tree::ParseTree* tree) {
  const std::type_info* type = &typeid(*tree);
  const bool isToken = type == &typeid(antlr4::tree::TerminalNodeImpl) || type == &typeid(antlr4::tree::ErrorNodeImpl);
  return isToken ? nullptr : static_cast<KeloNode*>(tree);
}

/// Whether it is a node of this rule, whichever alternative.
inline bool isOfRule(antlr4::tree::ParseTree* tree, size_t rule) {
  const KeloNode* node = ruleNode(tree);
  return node && node->getRuleIndex() == rule;
}

}  // namespace kelo
