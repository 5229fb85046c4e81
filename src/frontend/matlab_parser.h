// Turns text into a parse tree: what is typed at the console, a file of the run directory, or the body of a handle.
//
// A MatlabParser is made for one text or file. Trees come as shared pointers that keep their text, tokens and nodes;
// any node of a tree can be shared in turn by treeOf. A parse shows at most one message, through the sink that it is
// given.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "KeloParser.h"
#include "frontend/error_listener.h"
#include "frontend/parsed_text.h"
#include "frontend/parser_buffer.h"
#include "platform/file_system.h"

namespace kelo {

/// A node and, with it, the whole parse that it belongs to.
template <class Context>
using Tree = std::shared_ptr<Context>;

using ProgTree = Tree<KeloParser::ProgContext>;
using ExprOnlyTree = Tree<KeloParser::ExprOnlyContext>;
using ProgFunctionTree = Tree<KeloParser::Prog_functionContext>;
using UserFunctionTree = Tree<KeloParser::User_functionContext>;

/// Shares a node of a tree: holds the parse that it belongs to.
template <class Context>
Tree<Context> treeOf(Context* node);

/// What a parse works with; it outlives the MatlabParser.
struct ParserSetting {
  ParserBuffer& buffer;
  const platform::FileSystem& files;
  MessageSink show;
};

class MatlabParser : public std::enable_shared_from_this<MatlabParser> {
 public:
  /// Text without a file; messages name the console.
  explicit MatlabParser(const ParserSetting& setting) : setting_(setting) {}
  /// A file, or the editor's text of that file.
  ///
  /// dirRelativePath   relative to the work directory, "" for the work directory itself
  MatlabParser(const ParserSetting& setting, std::optional<std::string> dirRelativePath,
               std::optional<std::string> filenameWithExt);

  /// The tree of console text or of the editor's text; null on any failure. Empties the buffer first.
  ProgTree parseText(std::string_view text);

  /// The tree of an expression; null on any failure. The line (from 1) and the character position (from 0) are those of
  /// the expression's first character in its file.
  ExprOnlyTree parseExpression(std::string_view text, std::optional<int> line = {}, std::optional<int> charPos = {});

  /// Reads and parses the file and adds it to the buffer, where it keeps this parser: REQUIRES that a shared pointer
  /// owns it. Throws a Problem when there is no such file or no tree; a syntax error was shown before.
  ProgTree parseFile();
  /// The same for a file that must declare functions.
  ProgFunctionTree programFunction();
  /// The first function of such a file.
  UserFunctionTree mainFunction();

  /// The tree of the file, when it has been parsed.
  const ProgTree& prog() const { return prog_; }

 private:
  std::string path() const;
  Name relativePath() const;
  std::string loadText() const;
  std::shared_ptr<ParsedText> parsed(std::u32string text, ParsedText::StartRule rule, ParsedText::Origin origin) const;
  std::shared_ptr<ParsedText> parsedOrNull(std::string_view text, ParsedText::StartRule rule,
                                           ParsedText::Origin origin) const;

  ParserSetting setting_;
  std::optional<std::string> dirRelativePath_;
  std::optional<std::string> filenameWithExt_;
  ProgTree prog_;
};

/// Whether a text fails to parse only because it ends too early, so that a further line may complete it.
bool isIncomplete(std::string_view text);

/// Parses a small text, which fills what all parses share, so that the first text of a user is parsed fast.
void warmUpParser();

}  // namespace kelo

#include "frontend/node_text.h"

namespace kelo {

template <class Context>
Tree<Context> treeOf(Context* node) {
  return node == nullptr ? nullptr : Tree<Context>(parseOf(*node), node);
}

}  // namespace kelo
