// Source: RFC 1951, a block with a dynamic code, and an empty stored one that ends at a whole byte.
#include "figures/pictures/run_packer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

namespace kelo::pictures {
namespace {

/// A byte, or kRun and the length of a run.
using Token = uint16_t;
constexpr Token kRun = 256;
constexpr int kLeastRun = 3, kMostRun = 258;
constexpr int kNumTokens = kRun + kMostRun + 1;

/// Symbols of the code: bytes, the end of the block, classes of lengths.
constexpr int kEnd = 256, kNumSymbols = 286, kLongestCode = 15;
constexpr size_t kBytesPerToken = 3;  // at least, on average, where packing runs alone is worth it
constexpr size_t kMostBytesOfToken = 3, kHeaderBytes = 256;

struct LengthClass {
  int symbol, extraBits, extra;
};

/// The class of a run's length: four classes for each number of extra bits, the longest run alone.
LengthClass classOf(int length) {
  if (length == kMostRun) return {285, 0, 0};
  const int value = length - kLeastRun;
  if (value < 8) return {257 + value, 0, 0};
  const int bits = std::bit_width(static_cast<unsigned>(value)) - 3;
  return {257 + 4 * bits + (value >> bits), bits, value & ((1 << bits) - 1)};
}

/// How many bytes equal those `distance` before.
size_t runAt(const char* at, const char* end, int distance) {
  const char* p = at;
  while (end - p >= 8) {
    uint64_t a, b;
    std::memcpy(&a, p, 8);
    std::memcpy(&b, p - distance, 8);
    if (a != b) return static_cast<size_t>(p - at + std::countr_zero(a ^ b) / 8);
    p += 8;
  }
  while (p < end && *p == p[-distance]) ++p;
  return static_cast<size_t>(p - at);
}

/// Nothing when there are too many.
std::optional<std::vector<Token>> tokensOf(std::string_view rows, int distance) {
  const size_t most = rows.size() / kBytesPerToken + kMostRun;
  std::vector<Token> tokens(most + rows.size() / kMostRun + 4 * kLeastRun);
  Token *to = tokens.data(), *const last = to + most;
  const char *p = rows.data(), *end = p + rows.size();
  for (const char* first = p + distance; p < first && p < end; ++p) *to++ = static_cast<uint8_t>(*p);
  while (p < end) {
    size_t run = runAt(p, end, distance);
    p += run;
    for (; run >= kLeastRun; run -= std::min<size_t>(run, kMostRun)) {
      *to++ = static_cast<Token>(kRun + std::min<size_t>(run, kMostRun));
    }
    for (; run > 0; --run) *to++ = static_cast<uint8_t>(p[-static_cast<ptrdiff_t>(run)]);
    // As a rule all of a pixel changes.
    for (const char* behind = std::min(p + distance, end); p < behind;) *to++ = static_cast<uint8_t>(*p++);
    if (to > last) return std::nullopt;
  }
  tokens.resize(static_cast<size_t>(to - tokens.data()));
  return tokens;
}

using Counts = std::array<uint32_t, kNumSymbols>;
using Lengths = std::array<int, kNumSymbols>;

/// Lengths of the codes of a Huffman code; 0 for what does not occur.
Lengths lengthsOf(const Counts& counts) {
  struct Node {
    uint64_t count;
    int parent;
  };
  std::vector<Node> nodes;
  std::vector<int> symbols;
  for (int symbol = 0; symbol < kNumSymbols; ++symbol) {
    if (counts[static_cast<size_t>(symbol)] > 0) symbols.push_back(symbol);
  }
  std::sort(symbols.begin(), symbols.end(),
            [&](int a, int b) { return counts[static_cast<size_t>(a)] < counts[static_cast<size_t>(b)]; });
  for (const int symbol : symbols) nodes.push_back({counts[static_cast<size_t>(symbol)], 0});
  // Leaves and inner nodes both come in ascending order, so the two least are at the heads of two
  // queues.
  const size_t numLeaves = nodes.size();
  size_t leaf = 0, inner = numLeaves;
  while (nodes.size() + 1 < 2 * numLeaves) {
    const int parent = static_cast<int>(nodes.size());
    uint64_t sum = 0;
    for (int k = 0; k < 2; ++k) {
      const bool takesLeaf = leaf < numLeaves && (inner == nodes.size() || nodes[leaf].count <= nodes[inner].count);
      Node& least = nodes[takesLeaf ? leaf++ : inner++];
      sum += least.count;
      least.parent = parent;
    }
    nodes.push_back({sum, 0});
  }
  std::vector<int> depths(nodes.size(), 0);
  for (size_t k = nodes.size() - 1; k-- > 0;) depths[k] = depths[static_cast<size_t>(nodes[k].parent)] + 1;
  Lengths lengths{};
  for (size_t k = 0; k < numLeaves; ++k) lengths[static_cast<size_t>(symbols[k])] = depths[k];
  return lengths;
}

/// The same with no code too long: rare symbols count for more until it is so.
Lengths limitedLengths(Counts counts) {
  for (;;) {
    const Lengths lengths = lengthsOf(counts);
    if (*std::max_element(lengths.begin(), lengths.end()) <= kLongestCode) return lengths;
    for (uint32_t& count : counts) count = count == 0 ? 0 : count / 2 + 1;
  }
}

struct Code {
  uint32_t bits = 0;
  int length = 0;
};

uint32_t reversed(uint32_t bits, int length) {
  uint32_t result = 0;
  for (int k = 0; k < length; ++k) result |= (bits >> k & 1) << (length - 1 - k);
  return result;
}

/// The codes of that lengths, shorter ones first, each with its first bit lowest.
std::array<Code, kNumSymbols> codesOf(const Lengths& lengths) {
  std::array<Code, kNumSymbols> codes;
  uint32_t next = 0;
  for (int length = 1; length <= kLongestCode; ++length, next <<= 1) {
    for (size_t symbol = 0; symbol < kNumSymbols; ++symbol) {
      if (lengths[symbol] == length) codes[symbol] = {reversed(next++, length), length};
    }
  }
  return codes;
}

/// Bits, the first one lowest, in bytes that the processor has in the same order.
class BitWriter {
 public:
  /// REQUIRES: room for what is put, and for a word more
  explicit BitWriter(char* to) : to_(to) {}
  /// `count`: at most 56
  void put(uint64_t bits, int count) {
    word_ |= bits << filled_;
    std::memcpy(to_, &word_, sizeof word_);
    filled_ += static_cast<unsigned>(count);
    to_ += filled_ / 8;
    word_ >>= filled_ / 8 * 8;
    filled_ %= 8;
  }
  /// Ends at a whole byte, and gives the place behind it.
  char* finish() { return filled_ > 0 ? to_ + 1 : to_; }

 private:
  static_assert(std::endian::native == std::endian::little);

  char* to_;
  uint64_t word_ = 0;
  unsigned filled_ = 0;  // bits of the word, less than 8
};

/// The code lengths are written in a code of four bits each; the one distance takes one bit.
void putHeader(BitWriter& bits, const Lengths& lengths, int distance) {
  static constexpr int kOrderOfLengths[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
  const int numDistances = distance;  // codes 0 to 3 stand for distances 1 to 4
  bits.put(0, 1);                     // not the last block
  bits.put(2, 2);                     // with a code of its own
  bits.put(kNumSymbols - 257, 5);
  bits.put(static_cast<uint64_t>(numDistances - 1), 5);
  bits.put(std::size(kOrderOfLengths) - 4, 4);
  for (const int length : kOrderOfLengths) bits.put(length < 16 ? 4 : 0, 3);
  for (const int length : lengths) bits.put(reversed(static_cast<uint32_t>(length), 4), 4);
  for (int k = 1; k <= numDistances; ++k) bits.put(reversed(k == numDistances, 4), 4);
}

/// The bits of every token.
std::vector<Code> tokenCodes(const std::array<Code, kNumSymbols>& codes) {
  std::vector<Code> result(kNumTokens);
  std::copy_n(codes.begin(), kRun, result.begin());
  for (int length = kLeastRun; length <= kMostRun; ++length) {
    const auto [symbol, extraBits, extra] = classOf(length);
    const Code& code = codes[static_cast<size_t>(symbol)];
    result[static_cast<size_t>(kRun + length)] = {code.bits | static_cast<uint32_t>(extra) << code.length,
                                                  code.length + extraBits + 1};
  }
  return result;
}

}  // namespace

std::optional<std::string> packedRuns(std::string_view rows, int pixelBytes) {
  const std::optional<std::vector<Token>> tokens = tokensOf(rows, pixelBytes);
  if (!tokens) return std::nullopt;
  std::array<uint32_t, kNumTokens> tokenCounts{};
  for (const Token token : *tokens) ++tokenCounts[token];
  Counts counts{};
  std::copy_n(tokenCounts.begin(), kRun, counts.begin());
  for (int length = kLeastRun; length <= kMostRun; ++length) {
    counts[static_cast<size_t>(classOf(length).symbol)] += tokenCounts[static_cast<size_t>(kRun + length)];
  }
  counts[kEnd] = 1;
  const Lengths lengths = limitedLengths(counts);
  const std::array<Code, kNumSymbols> codes = codesOf(lengths);

  std::string packed(tokens->size() * kMostBytesOfToken + kHeaderBytes, '\0');
  BitWriter bits(packed.data());
  putHeader(bits, lengths, pixelBytes);
  const std::vector<Code> codesOfTokens = tokenCodes(codes);
  for (const Token token : *tokens) bits.put(codesOfTokens[token].bits, codesOfTokens[token].length);
  bits.put(codes[kEnd].bits, codes[kEnd].length);
  bits.put(0, 3);  // a stored block: whole bytes that tell its length, 0
  packed.resize(static_cast<size_t>(bits.finish() - packed.data()));
  packed.append({0, 0, '\xff', '\xff'});
  return packed;
}

}  // namespace kelo::pictures
