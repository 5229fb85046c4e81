// Each of the eight lanes makes a run of 64 draws. The words of the lanes are kept as vectors of
// one type whatever the processor's width is.
#include "builtins/random/random_blocks.h"

#include <array>

#include "platform/vector_clones.h"

namespace kelo {
namespace {

constexpr size_t kLanes = 8;
constexpr size_t kRun = kDrawsOfBlock / kLanes;

// ---- A run ahead at once

struct Affine {
  uint64_t factor = 1, addend = 0;
};

constexpr Affine congruentialRun() {
  Affine run;
  for (size_t k = 0; k < kRun; ++k) {
    run.factor *= RandomWords::kFactor;
    run.addend = run.addend * RandomWords::kFactor + RandomWords::kAddend;
  }
  return run;
}

constexpr int kNibbles = 16;
using ShiftTable = std::array<std::array<uint64_t, 16>, kNibbles>;

// What each value of each four bits of the word becomes.
constexpr ShiftTable shiftRun() {
  ShiftTable table{};
  for (size_t nibble = 0; nibble < kNibbles; ++nibble) {
    for (size_t bit = 0; bit < 4; ++bit) {
      uint64_t v = uint64_t{1} << (4 * nibble + bit);
      for (size_t k = 0; k < kRun; ++k) v = RandomWords::shifted(v);
      for (size_t value = 0; value < 16; ++value) {
        if (value >> bit & 1) table[nibble][value] ^= v;
      }
    }
  }
  return table;
}

__extension__ using Wide = unsigned __int128;
constexpr uint64_t kModulus = (RandomWords::kCarry << 32) - 1;

// The power of a that a run is, times 2^64: the form that Montgomery's product wants.
constexpr uint64_t carryRun() {
  Wide power = 1;
  for (size_t k = 0; k < kRun; ++k) power = power * RandomWords::kCarry % kModulus;
  return static_cast<uint64_t>((power << 64) % kModulus);
}

// Of the modulus, modulo 2^64, by Newton's iteration.
constexpr uint64_t inverseOfModulus() {
  uint64_t inverse = 1;
  for (int k = 0; k < 6; ++k) inverse *= 2 - kModulus * inverse;
  return inverse;
}

constexpr Affine kCongruentialRun = congruentialRun();
constexpr ShiftTable kShiftRun = shiftRun();
constexpr uint64_t kCarryRun = carryRun(), kInverseOfModulus = inverseOfModulus();
static_assert(kModulus * kInverseOfModulus == 1);

uint64_t high(Wide x) { return static_cast<uint64_t>(x >> 64); }

// REQUIRES: w < kModulus
uint64_t carryAfterRun(uint64_t w) {
  const Wide product = static_cast<Wide>(w) * kCarryRun;
  const uint64_t quotient = static_cast<uint64_t>(product) * kInverseOfModulus;
  const uint64_t subtrahend = high(static_cast<Wide>(quotient) * kModulus);
  return high(product) - subtrahend + (high(product) < subtrahend ? kModulus : 0);
}

uint64_t shiftAfterRun(uint64_t v) {
  uint64_t result = 0;
  for (size_t nibble = 0; nibble < kNibbles; ++nibble) result ^= kShiftRun[nibble][v >> (4 * nibble) & 15];
  return result;
}

RandomWords afterRun(const RandomWords& words) {
  return {words.u * kCongruentialRun.factor + kCongruentialRun.addend, shiftAfterRun(words.v), carryAfterRun(words.w)};
}

// ---- The lanes

using Lanes = uint64_t __attribute__((vector_size(kLanes * sizeof(uint64_t))));

// bits[k * kLanes + lane] is draw k of a lane.
KELO_WIDE_CLONES void drawLanes(const RandomWords* starts, uint64_t* bits) {
  Lanes u, v, w;
  for (size_t lane = 0; lane < kLanes; ++lane) {
    u[lane] = starts[lane].u;
    v[lane] = starts[lane].v;
    w[lane] = starts[lane].w;
  }
  for (size_t k = 0; k < kRun; ++k) {
    u = u * RandomWords::kFactor + RandomWords::kAddend;
    v ^= v >> 17;
    v ^= v << 31;
    v ^= v >> 8;
    w = RandomWords::kCarry * (w & 0xFFFFFFFFu) + (w >> 32);
    Lanes x = u ^ (u << 21);
    x ^= x >> 35;
    x ^= x << 4;
    *reinterpret_cast<Lanes*>(bits + k * kLanes) = (x + v) ^ w;
  }
}

KELO_WIDE_CLONES void inOrder(const uint64_t* lanes, uint64_t* bits) {
  for (size_t lane = 0; lane < kLanes; ++lane) {
    for (size_t k = 0; k < kRun; ++k) bits[lane * kRun + k] = lanes[k * kLanes + lane];
  }
}

KELO_WIDE_CLONES void fractionsInOrder(const uint64_t* lanes, double* fractions) {
  for (size_t lane = 0; lane < kLanes; ++lane) {
    for (size_t k = 0; k < kRun; ++k) {
      fractions[lane * kRun + k] = RandomWords::fraction(lanes[k * kLanes + lane]);
    }
  }
}

// A word that no draw leaves behind, as a seed may be, is brought on one by one.
bool drawInLanes(RandomWords& words, uint64_t* lanes) {
  if (words.w >= kModulus) return false;
  RandomWords starts[kLanes];
  for (RandomWords& start : starts) {
    start = words;
    words = afterRun(words);
  }
  drawLanes(starts, lanes);
  return true;
}

}  // namespace

void drawBlock(RandomWords& words, uint64_t* bits) {
  alignas(sizeof(Lanes)) uint64_t lanes[kDrawsOfBlock];
  if (drawInLanes(words, lanes)) return inOrder(lanes, bits);
  for (size_t k = 0; k < kDrawsOfBlock; ++k) bits[k] = words.int64();
}

void drawUniformBlock(RandomWords& words, double* fractions) {
  alignas(sizeof(Lanes)) uint64_t lanes[kDrawsOfBlock];
  if (drawInLanes(words, lanes)) return fractionsInOrder(lanes, fractions);
  for (size_t k = 0; k < kDrawsOfBlock; ++k) fractions[k] = words.uniform();
}

RandomWords wordsAfter(RandomWords words, size_t draws) {
  for (; draws >= kRun && words.w < kModulus; draws -= kRun) words = afterRun(words);
  for (; draws > 0; --draws) words.step();
  return words;
}

}  // namespace kelo
