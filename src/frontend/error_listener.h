// Turns a syntax error that the parser found into the one message that is shown for it.
#pragma once

#include <functional>

#include "antlr4-runtime.h"
#include "messages/message.h"
#include "values/name.h"

namespace kelo {

/// Takes a message to wherever messages are shown.
using MessageSink = std::function<void(const Message&)>;

class ErrorListener final : public antlr4::BaseErrorListener {
 public:
  explicit ErrorListener(const MessageSink& sink) : sink_(sink) {}

  void syntaxError(antlr4::Recognizer* recognizer, antlr4::Token* offendingSymbol, size_t line,
                   size_t charPositionInLine, const std::string& msg, std::exception_ptr e) override;

 private:
  const MessageSink& sink_;
};

/// A syntax error at a token, without its reason.
Message syntaxErrorAt(Name relativePath, size_t line, size_t charPositionInLine);

}  // namespace kelo
