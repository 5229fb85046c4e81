// Renders a Message. The label and the place come first, then each of the texts with a full stop of
// its own.
#include "messages/message.h"

#include <fmt/format.h>

namespace kelo {
namespace {

const char* labelOf(Message::MsgType type) {
  switch (type) {
    case Message::MsgType::generalError: return "Error";
    case Message::MsgType::syntaxError: return "Syntax error";
    case Message::MsgType::warning: return "Warning";
  }
  return "Error";
}

std::string fileOf(const Message& message) {
  if (!message.relativePath) return "the console";
  return message.relativePath->substr(message.relativePath->find_last_of('/') + 1);
}

std::string placeOf(const Message& message) {
  const std::string inFunction = message.funName ? fmt::format(" in {}()", *message.funName) : "";
  if (!message.lineNum) {
    const bool namesFunction = message.funName && !message.charPos;
    return fmt::format("{} in {}", namesFunction ? inFunction : "", fileOf(message));
  }
  const std::string column = message.charPos ? fmt::format("({})", *message.charPos + 1) : "";
  return fmt::format("{} at Line {}{} of {}", inFunction, *message.lineNum, column, fileOf(message));
}

}  // namespace

std::string Message::text() const {
  if (customMsg) return *customMsg;
  std::string result = labelOf(type) + placeOf(*this) + ".";
  if (reason) result += " " + *reason + ".";
  if (expected) result += " " + *expected + ".";
  if (functionNotSupportedYet) result += " " + *functionNotSupportedYet + " not supported yet.";
  return result;
}

}  // namespace kelo
