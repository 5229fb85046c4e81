// From a call's evaluated arguments to a handler and back: counts are checked, the handler runs
// inside the one guard that turns what it throws into a message with the call's place.
#pragma once

#include "interpreter/builtin.h"
#include "messages/message.h"

namespace kelo {

/// A message about a place; what is to be said is filled in by the caller.
Message messageAt(const CallSite& site);

/// Runs a built-in; `machine` is that of the run, for the few that ask it. The result is its value,
/// void, or failure when an error has been shown.
///
/// outputs  that are asked for; negative inside an expression
NodeValue callBuiltin(const Builtin& row, std::span<Storable> args, int outputs, const CallSite& site,
                      Environment& environment, Machine* machine = nullptr);

}  // namespace kelo
