// How both stages of a parse stop: at the first problem, by throwing the parse cancellation error.
// What is told of it goes through the listeners before the throw, so that a stage with a listener
// tells exactly one problem and a stage without one is silent.
#pragma once

#include "antlr4-runtime.h"

namespace kelo {

class BailKeloStrategy final : public antlr4::BailErrorStrategy {
 public:
  /// Tells the listeners which token is wrong. The runtime's own wording, which is costly to make,
  /// is not used.
  void reportError(antlr4::Parser* recognizer, const antlr4::RecognitionException& problem) override;
  /// A token that does not match: told here, since the base class throws without telling.
  antlr4::Token* recoverInline(antlr4::Parser* recognizer) override;
};

}  // namespace kelo
