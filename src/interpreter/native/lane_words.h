// The words through which lanes go in and out of native code.
#pragma once

#include <cstdint>

#include "interpreter/native/context.h"

namespace kelo::native {

union Word {
  double number;
  int64_t whole;
  uint32_t word;
  const void* data;
};

/// Where the words lie, in bytes. In front stand the rounds that are left, the registers of the
/// frame, the lowest address that the stack may reach, where a request to stop would be seen, whether
/// a call has failed, and what a call has given behind its first result. The words of a lane hold a
/// number, the parts of a complex one, or what an array is; those of a function's call its inputs,
/// and in the end its first result.
struct LaneWords {
  static constexpr int32_t kBudget = 0, kRegisters = 8, kStack = 16, kStop = 24, kFailed = 32;
  static constexpr int32_t kMoreResults = 40;
  static constexpr int32_t kHeader = 5 + kMostResults - 1, kWords = 4;  // words
  static constexpr int32_t first(int32_t lane) { return 8 * (kHeader + kWords * lane); }
  static constexpr int32_t second(int32_t lane) { return first(lane) + 8; }
  /// Result k, from 1 on.
  static constexpr int32_t result(int32_t k) { return kMoreResults + 8 * (k - 1); }
  /// Words of an array, from those of its lane on.
  static constexpr int32_t kData = 0, kCount = 8, kRows = 16, kColumns = 24;
};

/// The words of an array.
inline void describe(const NumericArray& array, Word* words) {
  words[0].data = array.visit([](const auto& record) -> const void* { return record.data(); });
  words[1].whole = array.numElements();
  words[2].whole = array.size().rows();
  words[3].whole = array.size().columns();
}

}  // namespace kelo::native
