// Words that help beside the messages: a line that says what a person can do. A hint is a guess
// from the message and from the text that it points into; where nothing is recognised there is
// none.
#pragma once

#include <optional>
#include <set>
#include <string>

#include "messages/message.h"

namespace kelo::hints {

/// An error and what is known around it.
struct Situation {
  const Message& message;
  const std::string& text;                ///< the command, answer or file that the message points into
  const std::set<std::string>& builtins;  ///< names of the built-in functions
  const std::set<std::string>& variables;
  double refusedBytes = 0;                ///< the size of an array that could not be held; 0: none was refused
  double byteLimit = 0;                   ///< the greatest size of one
};

/// What to do about an error, without a full stop.
std::optional<std::string> hintFor(const Situation& situation);

/// What to know about a text that is about to run, though it has no error.
std::optional<std::string> hintBefore(const std::string& text);

/// The names that differ from a word by one letter too many, too few, another one, or two
/// exchanged.
std::set<std::string> oneSlipAway(const std::string& word, const std::set<std::string>& names);

}  // namespace kelo::hints
