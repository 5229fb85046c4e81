// Where the program's own files are.
#pragma once

#include <string>

namespace kelo::platform::native {

/// The folder of the help pages and their like: "resources" beside the program, or "../share/kelo"
/// from it. Empty when there is none.
std::string resourceDirectory();

}  // namespace kelo::platform::native
