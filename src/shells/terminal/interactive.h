// The interactive console.
#pragma once

#include "shells/terminal/options.h"

namespace kelo::terminal {

/// Reads commands from the terminal until its input ends.
ExitStatus runInteractive(const Options& options);

}  // namespace kelo::terminal
