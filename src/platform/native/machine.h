// What the machine can hold, told to the value model.
#pragma once

namespace kelo::platform::native {

/// Limits one array to 3/4 of the machine's memory and asks for huge pages for large blocks.
void adaptToMachine();

}  // namespace kelo::platform::native
