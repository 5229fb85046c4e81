// Executable memory of Linux, for loops and functions that are translated into native code.
#pragma once

namespace kelo::platform::native {

/// Allows native code, unless the variable KELO_NATIVE is "off". "eager" translates a loop in its
/// second round and a function at its second call, "log" tells on standard error what was
/// translated and what not.
void allowNativeCode();
/// Native code is no longer made.
void forbidNativeCode();

}  // namespace kelo::platform::native
