// What the machine can hold, told to the value model, and what runs it.
#pragma once

#include <string>

namespace kelo::platform::native {

/// Limits one array to 3/4 of the machine's memory and asks for huge pages for large blocks.
void adaptToMachine();

/// Name and version of the operating system: "Linux", "6.1.0".
struct SystemVersion {
  std::string name, version;
};
SystemVersion systemVersion();

}  // namespace kelo::platform::native
