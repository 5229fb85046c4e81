// The words through which values go in and out of native code.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "interpreter/native/native.h"
#include "interpreter/native/types.h"

namespace kelo::native {

union Word {
  double number;
  int64_t whole;
  const void* data;
};

/// Where the words lie, in bytes. In front stand the rounds that are left, the registers of the
/// frame, the lowest address that the stack may reach, where a request to stop would be seen, whether
/// a call has failed, the memory that is left for arrays of units, and what a call has given behind
/// its first result. The words of a register hold a number, the parts of a complex one, or what an
/// array is; those of a unit's call its inputs, and in the end its first result.
struct Layout {
  static constexpr int32_t kBudget = 0, kRegisters = 8, kStack = 16, kStop = 24, kFailed = 32, kMemory = 40;
  static constexpr int32_t kMemoryEnd = 48, kMoreResults = 56;
  static constexpr int32_t kHeader = 7 + kMostResults - 1, kWords = 4;  // words
  static constexpr int32_t of(int32_t reg) { return 8 * (kHeader + kWords * reg); }
  /// Result k of a unit.
  static constexpr int32_t result(int32_t k) { return k == 0 ? of(0) : kMoreResults + 8 * (k - 1); }
  /// Words of an array.
  static constexpr int32_t kData = 0, kCount = 8, kRows = 16, kColumns = 24;
  /// Besides data and count, of a field of all elements.
  static constexpr int32_t kStride = 16;
};

/// The words of arrays that lie somewhere for ever.
using Constants = std::vector<std::unique_ptr<Word[]>>;

/// The words of an array.
inline void describe(const NumericArray& array, Word* words) {
  words[0].data = array.visit([](const auto& record) -> const void* { return record.data(); });
  words[1].whole = array.numElements();
  words[2].whole = array.size().rows();
  words[3].whole = array.size().columns();
}

/// A value that is passed, as it lies in words. REQUIRES: it is of this kind
void pass(const Storable& value, const Type& type, Word* words);
/// What has come out, in a register. An array is copied.
void take(const Type& type, const Word* words, Storable* to);

// ---- What native code calls of C++; each says 0 or a negative number where the register code must

/// How many elements first:step:last has.
double rangeCount(double first, double step, double last) noexcept;

/// x(end + 1) = value on a vector, and x = [x, value] on a row, of doubles that nobody else holds;
/// `words` then tell where the array lies.
int64_t appendToVector(Storable* variable, Word* words, double value) noexcept;
int64_t appendToRow(Storable* variable, Word* words, double value) noexcept;

/// A copy of an array with elements of so many bytes, and an array of doubles, in the memory for
/// arrays of units; the words lie before the elements.
Word* copyArray(Word* header, const Word* array, int64_t bytes) noexcept;
Word* makeArray(Word* header, double rows, double columns, double value) noexcept;

}  // namespace kelo::native
