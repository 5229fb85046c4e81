// One element of text: a user-perceived character, that is a grapheme cluster.
//
// It is one 32-bit word. A cluster that is a single code point is that code point; any other
// cluster is an entry in a table of interned clusters, marked by the top bit. Plain text is
// therefore as cheap as integers. Two characters are equal when they are canonically equivalent (a
// composed letter equals its decomposed spelling); two ASCII characters never need the table for
// that. A lone surrogate, which a number may give, is kept as its code and printed as U+FFFD.
//
// Thread: the table belongs to the interpreter's thread; its entries are never freed.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelo {

class Character {
 public:
  constexpr Character() = default;  ///< the character with code 0
  constexpr explicit Character(char32_t codePoint) : word_(codePoint) {}
  /// The cluster made of these code points, interned when there are several. REQUIRES: not empty
  static Character fromCodePoints(std::span<const char32_t> codePoints);
  /// A number taken as one UTF-16 code unit.
  static constexpr Character fromUnit(uint16_t unit) { return Character(static_cast<char32_t>(unit)); }

  /// The code point, when the cluster is a single one; else the first of the cluster.
  char32_t firstCodePoint() const;
  bool isCluster() const { return (word_ & kClusterBit) != 0; }
  void appendCodePointsTo(std::vector<char32_t>& out) const;
  void appendUtf8To(std::string& out) const;
  /// UTF-16 units: one for a code point of the basic plane, two above it, the sum for a cluster.
  int64_t unitCount() const;
  void appendUnitsTo(std::vector<uint16_t>& out) const;
  /// The other case of a letter, code point by code point; what has none stays.
  Character lowercased() const;
  Character uppercased() const;
  uint32_t word() const { return word_; }

  friend bool operator==(Character a, Character b) {
    return a.word_ == b.word_ || ((a.word_ | b.word_) >= kFirstComposable && canonicallyEqual(a, b));
  }

 private:
  static constexpr uint32_t kClusterBit = 0x80000000u;
  static constexpr uint32_t kFirstComposable = 0x80;
  static bool canonicallyEqual(Character a, Character b);
  template <class F> void forEachCodePoint(F f) const;

  uint32_t word_ = 0;
};

/// Splits UTF-8 text into grapheme clusters (UAX #29, extended). Invalid bytes become U+FFFD.
std::vector<Character> charactersOf(std::string_view utf8);

/// One code point as UTF-8; a surrogate or a number past U+10FFFF as U+FFFD.
void appendUtf8(std::string& out, char32_t codePoint);

}  // namespace kelo
