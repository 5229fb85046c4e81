// What is delivered with the program: beside it in a build folder, in share/ where it is installed.
#pragma once

#include <optional>
#include <string>

namespace kelo::platform::native {

/// The full path of a file or folder of that name; nothing when it is in none of the places.
std::optional<std::string> resourcePath(const std::string& name);

}  // namespace kelo::platform::native
