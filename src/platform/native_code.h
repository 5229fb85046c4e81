// What the machine allows for code that is made while a program runs; a shell sets it once, at
// start.
//
// A block is written while nobody can run it, and run when nobody can write it any more: it is
// never both.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kelo::platform {

struct NativeCode {
  /// Fresh memory to write code to; null where there is none. Null itself: no native code is made.
  std::byte* (*allocate)(size_t bytes) = nullptr;
  /// Makes a block executable, and no more writable. False where the system forbids that.
  bool (*seal)(std::byte* block, size_t bytes) = nullptr;
  void (*release)(std::byte* block, size_t bytes) = nullptr;
  int32_t rounds = 250;  ///< of a loop in the register code before it is worth native code
  int32_t calls = 2000;  ///< the same, of a function
  /// Takes the reason why a loop was or was not translated. Null: nobody wants to know.
  void (*log)(const std::string& line) = nullptr;
};

inline NativeCode nativeCode;

}  // namespace kelo::platform
