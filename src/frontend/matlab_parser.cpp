// Text is decoded, made a ParsedText and parsed there. What goes wrong on the way becomes one
// message, or a Problem where it is a file that a program asks for. Tested by
// tests/frontend/matlab_parser_test.cpp.
#include "frontend/matlab_parser.h"

#include "messages/catalogue/frontend.h"
#include "messages/catalogue/values.h"

namespace kelo {
namespace {

using Origin = ParsedText::Origin;
using Outcome = ParsedText::Outcome;
using StartRule = ParsedText::StartRule;

template <class Context>
Tree<Context> rootOf(const std::shared_ptr<ParsedText>& parse) {
  return parse == nullptr ? nullptr : Tree<Context>(parse, static_cast<Context*>(parse->root()));
}

// Remembers whether the parse failed at the end of the text; says nothing.
class EndListener final : public antlr4::BaseErrorListener {
 public:
  void syntaxError(antlr4::Recognizer*, antlr4::Token* token, size_t, size_t, const std::string&,
                   std::exception_ptr) override {
    failedAtEnd = token != nullptr && token->getType() == antlr4::Token::EOF;
  }
  bool failedAtEnd = false;
};

// Null when there is no tree; what is wrong has been shown by then.
std::shared_ptr<ParsedText> parsed(std::u32string text, StartRule rule, const Origin& origin, const MessageSink& show) {
  auto parse = std::make_shared<ParsedText>(std::move(text), origin);
  ErrorListener listener(show);
  const Outcome outcome = parse->parse(rule, listener);
  if (outcome == Outcome::tooDeep || outcome == Outcome::tooLong) {
    const antlr4::Token& token = parse->stoppedAt();
    Message message = syntaxErrorAt(origin.relativePath, token.getLine(), token.getCharPositionInLine());
    message.reason = outcome == Outcome::tooDeep ? text::kNestedTooDeeply : text::kTextTooLong;
    show(message);
  }
  return outcome == Outcome::parsed ? parse : nullptr;
}

// The same from bytes; what is no text is complained of in the same way.
std::shared_ptr<ParsedText> decodedAndParsed(std::string_view text, StartRule rule, const Origin& origin,
                                             const MessageSink& show) {
  std::optional<std::u32string> codePoints = decodeUtf8(text);
  if (codePoints) return parsed(std::move(*codePoints), rule, origin, show);
  Message message = syntaxErrorAt(origin.relativePath, origin.line, origin.charPositionInLine);
  message.reason = text::kNotUtf8;
  show(message);
  return nullptr;
}

/// "" for a file of the work directory itself.
std::string directoryOf(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}
std::string fileNameOf(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

std::string loadText(const platform::FileSystem& files, const std::string& path) {
  if (files.isRegularFile(path)) {
    if (std::optional<std::string> bytes = files.readFile(path)) return std::move(*bytes);
  }
  throw problem(text::fileNotFound(fileNameOf(path), directoryOf(path)));
}

ProgTree readAndParsed(const ParserSetting& setting, const std::string& path) {
  std::optional<std::u32string> codePoints = decodeUtf8(loadText(setting.files, path));
  if (!codePoints) throw problem(text::kNotUtf8);
  ProgTree program;
  try {
    program = rootOf<KeloParser::ProgContext>(
        parsed(std::move(*codePoints), StartRule::prog, {Name::intern(path)}, setting.show));
  } catch (const std::exception&) {
    throw problem(text::errorWhileParsingFile(fileNameOf(path)));
  }
  if (program == nullptr) throw problem(text::syntaxErrorInFile(fileNameOf(path)));
  return program;
}

}  // namespace

ProgTree parseText(const ParserSetting& setting, std::string_view text, const std::string& path) {
  const Name file = path.empty() ? Name() : Name::intern(path);
  return rootOf<KeloParser::ProgContext>(decodedAndParsed(text, StartRule::prog, {file}, setting.show));
}

ExprOnlyTree parseExpression(const ParserSetting& setting, std::string_view text, const Origin& origin) {
  return rootOf<KeloParser::ExprOnlyContext>(decodedAndParsed(text, StartRule::exprOnly, origin, setting.show));
}

ProgTree parseFile(const ParserSetting& setting, const std::string& path) {
  const auto known = setting.buffer.find(path);
  if (known != setting.buffer.end()) return known->second;
  return setting.buffer[path] = readAndParsed(setting, path);
}

bool isIncomplete(std::string_view text) {
  std::optional<std::u32string> codePoints = decodeUtf8(text);
  if (!codePoints) return false;
  EndListener listener;
  const auto parse = std::make_shared<ParsedText>(std::move(*codePoints), Origin{});
  return parse->parse(StartRule::prog, listener) == Outcome::syntaxError && listener.failedAtEnd;
}

void warmUpParser() { isIncomplete("x = f(1, 'a') + [1 -2; 3 4]; if x(1:end) > s.a, y = @(t) -t'; end"); }

}  // namespace kelo
