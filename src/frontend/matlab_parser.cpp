#include "frontend/matlab_parser.h"

#include "messages/catalogue/frontend.h"
#include "messages/catalogue/values.h"

namespace kelo {
namespace {

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

}  // namespace

MatlabParser::MatlabParser(const ParserSetting& setting, std::optional<std::string> dirRelativePath,
                           std::optional<std::string> filenameWithExt)
    : setting_(setting), dirRelativePath_(std::move(dirRelativePath)), filenameWithExt_(std::move(filenameWithExt)) {}

std::string MatlabParser::path() const {
  if (dirRelativePath_->empty()) return *filenameWithExt_;
  return *dirRelativePath_ + (dirRelativePath_->back() == '/' ? "" : "/") + *filenameWithExt_;
}

Name MatlabParser::relativePath() const {
  return dirRelativePath_ && filenameWithExt_ ? Name::intern(path()) : Name();
}

// Null when there is no tree; what is wrong has been shown by then.
std::shared_ptr<ParsedText> MatlabParser::parsed(std::u32string text, StartRule rule,
                                                 ParsedText::Origin origin) const {
  auto parse = std::make_shared<ParsedText>(std::move(text), origin);
  ErrorListener listener(setting_.show);
  const Outcome outcome = parse->parse(rule, listener);
  if (outcome == Outcome::tooDeep || outcome == Outcome::tooLong) {
    const antlr4::Token& token = parse->stoppedAt();
    Message message = syntaxErrorAt(origin.relativePath, token.getLine(), token.getCharPositionInLine());
    message.reason = outcome == Outcome::tooDeep ? text::kNestedTooDeeply : text::kTextTooLong;
    setting_.show(message);
  }
  return outcome == Outcome::parsed ? parse : nullptr;
}

std::shared_ptr<ParsedText> MatlabParser::parsedOrNull(std::string_view text, StartRule rule,
                                                       ParsedText::Origin origin) const {
  std::optional<std::u32string> codePoints = decodeUtf8(text);
  if (codePoints) return parsed(std::move(*codePoints), rule, origin);
  Message message = syntaxErrorAt(origin.relativePath, origin.line, origin.charPositionInLine);
  message.reason = text::kNotUtf8;
  setting_.show(message);
  return nullptr;
}

ProgTree MatlabParser::parseText(std::string_view text) {
  setting_.buffer.clear();
  return rootOf<KeloParser::ProgContext>(parsedOrNull(text, StartRule::prog, {relativePath()}));
}

ExprOnlyTree MatlabParser::parseExpression(std::string_view text, std::optional<int> line,
                                           std::optional<int> charPos) {
  const ParsedText::Origin origin{relativePath(), static_cast<size_t>(line.value_or(1)),
                                  static_cast<size_t>(charPos.value_or(0))};
  return rootOf<KeloParser::ExprOnlyContext>(parsedOrNull(text, StartRule::exprOnly, origin));
}

std::string MatlabParser::loadText() const {
  if (!dirRelativePath_ || !filenameWithExt_) throw problem(text::kUnexpectedError);
  const std::string file = path();
  if (setting_.files.isRegularFile(file)) {
    if (std::optional<std::string> bytes = setting_.files.readFile(file)) return std::move(*bytes);
  }
  throw problem(text::fileNotFound(*filenameWithExt_, *dirRelativePath_));
}

ProgTree MatlabParser::parseFile() {
  std::optional<std::u32string> codePoints = decodeUtf8(loadText());
  if (!codePoints) throw problem(text::kNotUtf8);
  try {
    prog_ = rootOf<KeloParser::ProgContext>(parsed(std::move(*codePoints), StartRule::prog, {relativePath()}));
  } catch (const std::exception&) {
    throw problem(text::errorWhileParsingFile(*filenameWithExt_));
  }
  if (prog_ == nullptr) throw problem(text::syntaxErrorInFile(*filenameWithExt_));
  setting_.buffer.add({*dirRelativePath_, *filenameWithExt_, shared_from_this()});
  return prog_;
}

ProgFunctionTree MatlabParser::programFunction() {
  auto program = std::dynamic_pointer_cast<KeloParser::Prog_functionContext>(parseFile());
  if (program == nullptr) throw problem(text::noFunctionDeclaration(*filenameWithExt_));
  return program;
}

UserFunctionTree MatlabParser::mainFunction() {
  const ProgFunctionTree program = programFunction();
  auto* function = dynamic_cast<KeloParser::User_functionContext*>(program->function_declare(0));
  if (function == nullptr) throw problem(text::noFunctionDeclaration(*filenameWithExt_));
  return {program, function};
}

bool isIncomplete(std::string_view text) {
  std::optional<std::u32string> codePoints = decodeUtf8(text);
  if (!codePoints) return false;
  EndListener listener;
  const auto parse = std::make_shared<ParsedText>(std::move(*codePoints), ParsedText::Origin{});
  return parse->parse(StartRule::prog, listener) == Outcome::syntaxError && listener.failedAtEnd;
}

void warmUpParser() { isIncomplete("x = f(1, 'a') + [1 -2; 3 4]; if x(1:end) > s.a, y = @(t) -t'; end"); }

}  // namespace kelo
