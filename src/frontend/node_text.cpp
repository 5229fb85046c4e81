// A node knows its first and its last token, a token its text, and a text its parse; all questions
// are answered along this path. Tested by tests/frontend/parse_test.cpp and matlab_parser_test.cpp.
#include "frontend/node_text.h"

#include "frontend/parsed_text.h"

namespace kelo {
namespace {

const SourceText& sourceOf(const antlr4::Token& token) {
  return *static_cast<const SourceText*>(token.getInputStream());
}

}  // namespace

std::shared_ptr<const ParsedText> parseOf(const KeloNode& node) {
  return sourceOf(*node.start).owner().shared_from_this();
}

TextPosition positionOf(const antlr4::Token& token) {
  return {static_cast<int>(token.getLine()), static_cast<int>(token.getCharPositionInLine())};
}

TextPosition positionOf(const KeloNode& node) { return positionOf(*node.start); }

std::string sourceText(const KeloNode& node) {
  if (node.stop == nullptr) return {};
  return sourceOf(*node.start).slice(node.start->getStartIndex(), node.stop->getStopIndex());
}

}  // namespace kelo
