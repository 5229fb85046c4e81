// A fault that ends the run: arithmetic that no message can answer, such as a size product past 64
// bits.
//
// FatalFault is deliberately no std::exception: handlers that turn ordinary errors into messages
// must not catch it. It passes all of them and is caught once, by the run block, which ends the run
// and keeps the base workspace, the history and the settings; the machine pops its frames on the
// way. All integer arithmetic on sizes, counts and IntArray elements goes through the checked
// helpers below, so that nothing wraps, saturates or traps.
#pragma once

#include <cstdint>
#include <string>

namespace kelo {

/// The fault. `what` names the operation in a few words, for the shell's line on standard error.
struct FatalFault {
  std::string what;
};

[[noreturn]] void throwFatalFault(const char* what);

/// Sum, difference and product of 64-bit integers; overflow throws FatalFault.
inline int64_t checkedAdd(int64_t a, int64_t b) {
  int64_t result;
  if (__builtin_add_overflow(a, b, &result)) throwFatalFault("integer overflow in an addition");
  return result;
}

inline int64_t checkedSubtract(int64_t a, int64_t b) {
  int64_t result;
  if (__builtin_sub_overflow(a, b, &result)) throwFatalFault("integer overflow in a subtraction");
  return result;
}

inline int64_t checkedMultiply(int64_t a, int64_t b) {
  int64_t result;
  if (__builtin_mul_overflow(a, b, &result)) throwFatalFault("integer overflow in a multiplication");
  return result;
}

/// A finite double as a 64-bit integer, truncated towards zero. A number outside [-2^63, 2^63), Inf
/// and NaN throw FatalFault.
inline int64_t checkedCast(double x) {
  if (!(x >= -9223372036854775808.0 && x < 9223372036854775808.0)) throwFatalFault("number beyond 64-bit integers");
  return static_cast<int64_t>(x);
}

/// A 64-bit integer as a 32-bit one, as the matrix libraries need it; out of range throws
/// FatalFault.
inline int32_t checkedInt32(int64_t x) {
  if (x < INT32_MIN || x > INT32_MAX) throwFatalFault("size beyond 32-bit integers");
  return static_cast<int32_t>(x);
}

}  // namespace kelo
