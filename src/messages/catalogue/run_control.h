// Texts of run control: loading a file to run.
#pragma once

#include <string>

namespace kelo::text {

/// Also for a file that is a folder or is not text.
inline std::string failedToLoad(const std::string& name) { return "Failed to load \"" + name + "\""; }

}  // namespace kelo::text
