// Runs what the command line names, and ends.
#pragma once

#include "shells/terminal/options.h"

namespace kelo::terminal {

ExitStatus runBatch(const Options& options);

}  // namespace kelo::terminal
