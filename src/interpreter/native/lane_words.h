// The words through which lanes go in and out of native code.
#pragma once

#include <cstdint>

#include "values/storable.h"

namespace kelo::native {

union Word {
  double number;
  int64_t whole;
  uint32_t word;
  const void* data;
};

/// Where the words lie, in bytes. In front stand the rounds that are left, the registers of the
/// frame, the lowest address that the stack may reach, where a request to stop would be seen, and
/// whether a call has failed. The words of a lane hold a number, the parts of a complex one, or
/// what an array is; those of a function's call its inputs, and in the end its result.
struct LaneWords {
  static constexpr int32_t kBudget = 0, kRegisters = 8, kStack = 16, kStop = 24, kFailed = 32;
  static constexpr int32_t kHeader = 5, kWords = 4;  // words
  static constexpr int32_t first(int32_t lane) { return 8 * (kHeader + kWords * lane); }
  static constexpr int32_t second(int32_t lane) { return first(lane) + 8; }
  static constexpr int32_t data(int32_t lane) { return first(lane); }
  static constexpr int32_t count(int32_t lane) { return first(lane) + 8; }
  static constexpr int32_t rows(int32_t lane) { return first(lane) + 16; }
  static constexpr int32_t columns(int32_t lane) { return first(lane) + 24; }
};

/// The words of an array.
inline void describe(const NumericArray& array, Word* words) {
  words[0].data = array.visit([](const auto& record) -> const void* { return record.data(); });
  words[1].whole = array.numElements();
  words[2].whole = array.size().rows();
  words[3].whole = array.size().columns();
}

}  // namespace kelo::native
