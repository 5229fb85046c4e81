// The way into the front end: text to parse tree, in three ways: what is typed at the console, a
// file, and the body of a handle. Trees come as shared pointers that keep their text, tokens and
// nodes. A parse shows at most one message.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "KeloParser.h"
#include "frontend/error_listener.h"
#include "frontend/parsed_text.h"
#include "frontend/parser_buffer.h"
#include "platform/file_system.h"

namespace kelo {

using ProgTree = Tree<KeloParser::ProgContext>;
using ExprOnlyTree = Tree<KeloParser::ExprOnlyContext>;

/// What a parse works with.
struct ParserSetting {
  ParserBuffer& buffer;
  const platform::FileSystem& files;
  MessageSink show;
};

/// The tree of a program; null on any failure, which has been shown.
///
/// path   of the file that the editor's text belongs to, from the work directory; "": the console
ProgTree parseText(const ParserSetting& setting, std::string_view text, const std::string& path = "");

/// The tree of an expression that stands at a place of a file or of the console; null on any
/// failure, which has been shown.
ExprOnlyTree parseExpression(const ParserSetting& setting, std::string_view text,
                             const ParsedText::Origin& origin = {});

/// The tree of a file of the work directory, from the buffer or from the disk; what is read is
/// added to the buffer.
/// throws Problem, when there is no such file or no tree; a syntax error has been shown before
ProgTree parseFile(const ParserSetting& setting, const std::string& path);

/// Whether a text fails to parse only because it ends too early, so that a further line may
/// complete it.
bool isIncomplete(std::string_view text);

/// Parses a small text, which fills what all parses share, so that the first text of a user is
/// parsed fast.
void warmUpParser();

}  // namespace kelo
