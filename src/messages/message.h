// The records that carry every error and warning: Problem, which library code throws and which
// knows no place, and Message, which is a Problem with its place, ready to be shown.
//
// The rule of the house: nothing thrown leaves the machine that runs a program. Library code throws
// a Problem (or a FileError); the machine, or the dispatcher around the built-ins, catches it, adds
// the place of the node that it is working on and shows the Message; the failure then travels up
// without further text.
#pragma once

#include <optional>
#include <string>

namespace kelo {

struct Message {
  enum class MsgType { generalError, syntaxError, warning };

  /// What library code throws. Both texts are sentences without a final full stop; the renderer
  /// adds it.
  struct Problem {
    std::optional<std::string> reason;    ///< what went wrong
    std::optional<std::string> expected;  ///< what should have been given
  };

  MsgType type = MsgType::generalError;
  std::optional<std::string> reason;
  std::optional<std::string> expected;
  std::optional<int> lineNum;               ///< line of the text, from 1
  std::optional<int> charPos;               ///< code point in the line, from 0
  std::optional<std::string> relativePath;  ///< file, from the work directory; absent: the console
  std::optional<std::string> funName;       ///< the user function that is running
  std::optional<std::string> customMsg;     ///< a whole message that replaces everything else
  std::optional<std::string> functionNotSupportedYet;

  /// The text of the console, one line: "LABEL at Line N(C) of FILE. REASON. EXPECTED." with the
  /// parts that are present.
  std::string text() const;
};

using Problem = Message::Problem;

/// Thrown by file access.
struct FileError {
  std::string message;
};

/// Builders of a Problem, so that a throw reads as a sentence: `throw problem(kIncompatibleSizes)`.
inline Problem problem(std::string reason) { return {std::move(reason), std::nullopt}; }
inline Problem problem(std::string reason, std::string expected) { return {std::move(reason), std::move(expected)}; }
inline Problem expectation(std::string expected) { return {std::nullopt, std::move(expected)}; }

}  // namespace kelo
