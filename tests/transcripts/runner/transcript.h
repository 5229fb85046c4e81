// The form of a transcript: what is typed and what comes back, as a text that is easy to write by hand. tests/README.md
// describes it.
//
// A file is kept as its lines, each with its meaning, so that it can be written again with other output and nothing else
// changed.
#pragma once

#include <string>
#include <vector>

namespace kelo::transcripts {

struct Step {
  enum class Kind {
    text,     ///< comments and blank lines
    begin,    ///< "## NAME": a fresh console; argument: the name
    setting,  ///< "width 40", "digits 8"; argument: the line
    file,     ///< "--- NAME" and the file's lines; argument: the name, body: the content
    command,  ///< "> TEXT", further lines "| TEXT"; argument: the text
    program,  ///< ">> NAME": runs a file; argument: its path
  };
  Kind kind = Kind::text;
  int lineNum = 0;                   ///< where it begins, from 1
  std::vector<std::string> typed;    ///< its own lines as they stand
  std::string argument;
  std::string body;
  std::vector<std::string> answers;  ///< of the lines "< TEXT" behind a command
  std::vector<std::string> output;   ///< the lines that come back, as they stand
  int blankLines = 0;                ///< behind the output
};

std::vector<Step> parseTranscript(const std::string& text);
std::string renderTranscript(const std::vector<Step>& steps);

/// The lines of one item as a transcript writes them.
std::vector<std::string> itemLines(const std::string& text);

}  // namespace kelo::transcripts
