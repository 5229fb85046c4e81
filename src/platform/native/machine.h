// The limits of this machine, as the engine is to keep them.
#pragma once

#include <cstdint>
#include <string>

namespace kelo::platform::native {

/// Limits one array to 3/4 of the machine's memory, asks for huge pages for large blocks and for the
/// first of the heap, allows native code. To be called before other threads begin.
void adaptToMachine();

/// The bytes of address space that the process may have; the greatest number when nobody limits
/// them.
int64_t addressSpaceLimit();

/// The library of matrix products reserves much address space for each of its threads when it is
/// loaded, and waits for ever when there is too little. Where the space is limited, this starts the
/// program again with as few threads as fit; it returns when there is nothing to change. To be
/// called first of all.
void fitMatrixThreads(char** argv);

/// Name and version of the operating system: "Linux", "6.1.0".
struct SystemVersion {
  std::string name, version;
};
SystemVersion systemVersion();

}  // namespace kelo::platform::native
