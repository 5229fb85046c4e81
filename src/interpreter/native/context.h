// What native code must know of the machine that it runs in.
#pragma once

#include <atomic>

#include "interpreter/code.h"

namespace kelo::native {

inline constexpr int32_t kMostResults = 4;  ///< of a function

struct Context {
  uint64_t run;                            ///< number of the run, in which a name keeps its meaning
  const LocalFunctionFile* functions;      ///< that the running code can call by name
  const std::atomic<bool>* stopRequest;
  bool mayCall;                            ///< whether calls are not too deeply nested for calls on the thread's stack
};

}  // namespace kelo::native
