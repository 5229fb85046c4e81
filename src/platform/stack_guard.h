// Room on the interpreter's stack. Recursion of the evaluator and the parser is bounded by
// comparing addresses, not by counting: a shell that runs the interpreter on a stack of its own
// tells once where the stack is nearly used up, and whoever recurses asks before going deeper.
#pragma once

namespace kelo::platform {

inline const char* stackLimit = nullptr;  // the lowest address that recursion may reach

/// Thread: before the first run. `lowest` leaves room below for library code that does not ask.
/// Null: no limit.
inline void setStackLimit(const void* lowest) { stackLimit = static_cast<const char*>(lowest); }

/// True when the running function should not call deeper. The stack grows downwards.
inline bool stackIsLow() { return static_cast<const char*>(__builtin_frame_address(0)) < stackLimit; }

}  // namespace kelo::platform
