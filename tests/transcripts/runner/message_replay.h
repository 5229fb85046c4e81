// Transcripts of messages to the session: what a front end sends and what comes back.
#pragma once

#include <string>

namespace kelo::transcripts {

/// Plays the messages of a transcript and writes it again, with what comes back put in anew: see
/// tests/README.md.
std::string replayMessages(const std::string& transcript);

}  // namespace kelo::transcripts
