// The list of built-in functions that comes with the program.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo {

/// The names in a property list whose root is an array of strings, as "functions.plist" holds them;
/// nothing when the bytes are no such list.
std::optional<std::vector<std::string>> readFunctionNames(std::string_view plist);

}  // namespace kelo
