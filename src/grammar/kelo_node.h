// The base of all nodes of the parse tree: the runtime's rule context with the few things that
// every node knows.
//
// A node belongs to the parse that made it and lives as long as that does (see ParsedText in the
// front end); it never moves, so plain pointers to nodes are good for as long as the parse is held.
#pragma once

#include <cstdint>

#include "antlr4-runtime.h"
#include "grammar/node_cache.h"
#include "values/name.h"

namespace kelo {

class KeloNode : public antlr4::ParserRuleContext {
 public:
  KeloNode() = default;
  KeloNode(antlr4::ParserRuleContext* parent, size_t invokingState)
      : antlr4::ParserRuleContext(parent, invokingState) {}

  /// Called when a rule has found out which of its labelled alternatives it is, and a node of that
  /// class takes over.
  using antlr4::ParserRuleContext::copyFrom;
  void copyFrom(antlr4::ParserRuleContext* other) override {
    antlr4::ParserRuleContext::copyFrom(other);
    const auto* node = static_cast<KeloNode*>(other);
    relativePath = node->relativePath;
    depth = node->depth;
  }

  Name relativePath;   ///< the file, from the work directory; the empty name for the console
  int32_t depth = 0;   ///< rules that enclosed this one when it was parsed
  NodeCache cache;
};

}  // namespace kelo
