// Stopping at the first problem. The runtime would rather repair a text and go on, which suits a
// compiler that lists many errors; a console shows one and runs nothing. Tested by
// tests/frontend/matlab_parser_test.cpp.
#include "frontend/bail_strategy.h"

namespace kelo {

using antlr4::InputMismatchException;
using antlr4::ParseCancellationException;

void BailKeloStrategy::reportError(antlr4::Parser* recognizer, const antlr4::RecognitionException& problem) {
  recognizer->notifyErrorListeners(problem.getOffendingToken(), std::string(), nullptr);
}

antlr4::Token* BailKeloStrategy::recoverInline(antlr4::Parser* recognizer) {
  try {
    throw InputMismatchException(recognizer);
  } catch (const InputMismatchException& mismatch) {
    reportError(recognizer, mismatch);
    std::throw_with_nested(ParseCancellationException());
  }
}

}  // namespace kelo
