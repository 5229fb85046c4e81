// One text and everything that its parse tree needs to live: the code points, the tokens and the
// recognisers, which own the nodes. It neither copies nor moves; a tree is handed out as a shared
// pointer that holds the whole of it, so that handles and local functions keep the trees that they
// need.
//
// Invariant: a node of a tree is valid as long as some shared pointer to its ParsedText, or to its
// tree, is held.
#pragma once

#include <memory>
#include <string>

#include "KeloParser.h"
#include "antlr4-runtime.h"
#include "frontend/fast_prediction.h"
#include "frontend/source_text.h"
#include "frontend/strict_prediction.h"
#include "frontend/token_list.h"

namespace kelo {

class ParsedText : public std::enable_shared_from_this<ParsedText> {
 public:
  enum class StartRule { prog, exprOnly };

  /// Where the text stands: its file, and the position of its first character there.
  struct Origin {
    Name relativePath;
    size_t line = 1;
    size_t charPositionInLine = 0;
  };

  enum class Outcome {
    parsed,
    syntaxError,  ///< reported to the listener, once
    tooDeep,      ///< not reported; see stoppedAt
    tooLong,      ///< likewise
  };

  ParsedText(std::u32string text, Origin origin);
  ParsedText(const ParsedText&) = delete;
  ParsedText& operator=(const ParsedText&) = delete;

  /// Parses fast and silently first. Where that fails, parses again with care and tells the
  /// listener of the first token with which the text stops being the beginning of a valid one.
  Outcome parse(StartRule rule, antlr4::ANTLRErrorListener& listener);

  KeloNode* root() const { return root_; }  ///< null before a parse that succeeds
  /// Where a text that is nested too deeply or too long was given up; never null after a parse.
  const antlr4::Token& stoppedAt() const { return *stoppedAt_; }
  const SourceText& source() const { return source_; }
  Name relativePath() const { return parser_.relativePath; }

 private:
  KeloNode* runCarefulStage(StartRule rule, antlr4::ANTLRErrorListener& listener);
  KeloNode* run(StartRule rule, antlr4::atn::PredictionMode mode);

  SourceText source_;
  TokenList tokens_;
  KeloParser parser_;
  FastPrediction prediction_;
  StrictPrediction* strict_;
  KeloNode* root_ = nullptr;
  const antlr4::Token* stoppedAt_ = nullptr;
};

}  // namespace kelo
