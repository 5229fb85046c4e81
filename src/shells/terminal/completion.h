// What Tab offers.
#pragma once

#include <string>
#include <vector>

#include "interpreter/app_controller.h"

namespace kelo::terminal {

/// The names that begin as the last word of `before` does, sorted: variables, files of the work
/// directory and built-ins; after an open quote the files alone, with their endings. REQUIRES: no
/// run is going on
std::vector<std::string> completions(AppController& app, const std::string& before, size_t* wordLength);

}  // namespace kelo::terminal
