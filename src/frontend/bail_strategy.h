// How both stages of a parse stop: at the first problem, by throwing the parse cancellation error.
// The listeners hear of it before the throw, so a stage with a listener reports exactly one problem
// and a stage without one is silent.
#pragma once

#include "antlr4-runtime.h"

namespace kelo {

class BailKeloStrategy final : public antlr4::BailErrorStrategy {
 public:
  /// Reports the wrong token to the listeners. The runtime's own wording, which is costly to make,
  /// is not used.
  void reportError(antlr4::Parser* recognizer, const antlr4::RecognitionException& problem) override;
  /// A token that does not match: reported here, since the base class only throws.
  antlr4::Token* recoverInline(antlr4::Parser* recognizer) override;
};

}  // namespace kelo
