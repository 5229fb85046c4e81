// Where the program keeps its settings.
#pragma once

#include <optional>
#include <string>

namespace kelo::platform::native {

/// The folder asked for, else the one that the XDG convention tells.
std::string stateDirectory(const std::optional<std::string>& wanted);

}  // namespace kelo::platform::native
