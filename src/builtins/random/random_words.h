// The generator of random numbers: three words, and one draw from them.
//
// Three generators of different kinds are combined, so that each covers the weaknesses of the
// others: a linear congruential one (u), a 64-bit xor-shift (v) and a multiply-with-carry one (w).
// The period is near 2^190. All arithmetic is modulo 2^64 and without rounding that a compiler
// might change, so a seed gives the same numbers everywhere.
#pragma once

#include <bit>
#include <cstdint>

namespace kelo {

struct RandomWords {
  static constexpr uint64_t kFactor = 2862933555777941757u, kAddend = 7046029254386353087u;  // of u
  static constexpr uint64_t kCarry = 4294957665u;                                            // of w

  uint64_t u = 0, v = 0, w = 0;

  /// The words that a seed stands for.
  static RandomWords fromSeed(uint64_t seed) {
    RandomWords words = {seed ^ 4101842887655102017u, 4101842887655102017u, 1};
    words.int64();
    words.v = words.u;
    words.int64();
    words.w = words.v;
    words.int64();
    return words;
  }

  /// The next 64 bits.
  uint64_t int64() {
    step();
    return mixed(u, v, w);
  }
  /// Takes each word to its next.
  void step() {
    u = u * kFactor + kAddend;
    v = shifted(v);
    w = kCarry * (w & 0xFFFFFFFFu) + (w >> 32);
  }
  /// The step of v.
  static constexpr uint64_t shifted(uint64_t v) {
    v ^= v >> 17;
    v ^= v << 31;
    v ^= v >> 8;
    return v;
  }
  /// The 64 bits that three words give together.
  static uint64_t mixed(uint64_t u, uint64_t v, uint64_t w) {
    uint64_t x = u ^ (u << 21);
    x ^= x >> 35;
    x ^= x << 4;
    return (x + v) ^ w;
  }

  /// A double in [0, 1): int64() as a whole number times 2^-64.
  double uniform() { return fraction(int64()); }

  /// bits * 2^-64, rounded once.
  ///
  /// OPTIMIZATION: the halves are put after the exponents of 2^84 and 2^52, where they are whole
  /// numbers of that size. That needs no branch, which an unsigned number's conversion does, and a
  /// loop of it vectorises.
  static double fraction(uint64_t bits) {
    // 2^84 + the high half * 2^32, and 2^52 + the low half
    const auto high = std::bit_cast<double>(bits >> 32 | 0x4530000000000000u);
    const auto low = std::bit_cast<double>((bits & 0xFFFFFFFFu) | 0x4330000000000000u);
    return ((high - (0x1p84 + 0x1p52)) + low) * 0x1p-64;
  }

  uint32_t int32() { return static_cast<uint32_t>(int64()); }

  /// A whole number from 1 to max.
  int64_t intMax(int64_t max) { return static_cast<int64_t>(int64() % static_cast<uint64_t>(max)) + 1; }
};

}  // namespace kelo
