// From the runtime's report of a wrong token to the message that the user reads. The runtime's own
// wording is left aside: the message quotes the token, or says that the line ends. Tested by
// tests/frontend/matlab_parser_test.cpp.
#include "frontend/error_listener.h"

#include <utf8proc.h>

#include "KeloParser.h"
#include "frontend/source_text.h"
#include "messages/catalogue/frontend.h"

namespace kelo {
namespace {

std::string lowered(const std::string& text) {
  std::u32string codePoints = decodeUtf8(text).value_or(std::u32string());
  for (char32_t& c : codePoints) c = static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(c)));
  return encodeUtf8(codePoints);
}

// The whole token is quoted, so that "character" may head a word.
std::string reasonFor(const antlr4::Token& token) {
  const size_t type = token.getType();
  if (type == antlr4::Token::EOF || type == KeloParser::NEWLINE) return text::kLineEndsUnexpectedly;
  return text::unexpectedCharacter(lowered(token.getText()));
}

}  // namespace

Message syntaxErrorAt(Name relativePath, size_t line, size_t charPositionInLine) {
  Message message;
  message.type = Message::MsgType::syntaxError;
  message.lineNum = static_cast<int>(line);
  message.charPos = static_cast<int>(charPositionInLine);
  if (!relativePath.isEmpty()) message.relativePath = relativePath.text();
  return message;
}

void ErrorListener::syntaxError(antlr4::Recognizer* recognizer, antlr4::Token* offendingSymbol, size_t line,
                                size_t charPositionInLine, const std::string&, std::exception_ptr) {
  const auto* parser = dynamic_cast<KeloParser*>(recognizer);
  if (parser == nullptr) return;
  Message message = syntaxErrorAt(parser->relativePath, line, charPositionInLine);
  if (offendingSymbol != nullptr) message.reason = reasonFor(*offendingSymbol);
  sink_(message);
}

}  // namespace kelo
