// Which temporaries are still needed where.
#pragma once

#include <vector>

#include "interpreter/code.h"

namespace kelo::native {

/// For each instruction, which temporaries somebody reads that were written before it.
class Liveness {
 public:
  explicit Liveness(const Code& code);
  bool isLive(int32_t instruction, int32_t reg) const {
    const int32_t temporary = reg - slots_;
    if (temporary < 0 || temporary >= kTracked) return true;
    return ((live_[static_cast<size_t>(instruction)] >> temporary) & 1) != 0;
  }

 private:
  static constexpr int32_t kTracked = 64;  // temporaries beyond count as needed everywhere

  uint64_t bitsOf(const Code& code, const Instruction& i, const char* operands) const;

  int32_t slots_;
  std::vector<uint64_t> live_;
};

/// Whether the next instruction may follow.
bool fallsThrough(const Instruction& i);

}  // namespace kelo::native
