// Text elements: the table of interned clusters, canonical equality, segmentation and the two
// encodings.
//
// ASCII text takes none of this: its characters are its bytes. Clusters are interned by their
// spelling, since a spelling tells the number of UTF-16 units; beside it stands the canonical
// decomposition, which is what equality compares.
#include "values/character.h"

#include <utf8proc.h>

#include <algorithm>
#include <deque>
#include <unordered_map>

#include "values/numeric_array.h"

namespace kelo {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastOfBasicPlane = 0xFFFF;
constexpr size_t kLongestDecomposition = 8;  // of one code point, with room to spare

struct Cluster {
  std::u32string spelling;
  std::u32string canonical;
};

struct ClusterTable {
  std::deque<Cluster> clusters;  // a deque, so that the views below stay valid
  std::unordered_map<std::u32string_view, uint32_t> ids;
};

ClusterTable& table() {
  static auto* const instance = new ClusterTable;
  return *instance;
}

bool isSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }
int combiningClass(char32_t c) { return utf8proc_get_property(static_cast<utf8proc_int32_t>(c))->combining_class; }

void appendDecomposed(char32_t c, std::u32string& out) {
  utf8proc_int32_t parts[kLongestDecomposition];
  const auto count = utf8proc_decompose_char(static_cast<utf8proc_int32_t>(c), parts, kLongestDecomposition,
                                             UTF8PROC_DECOMPOSE, nullptr);
  if (count < 0 || count > static_cast<utf8proc_ssize_t>(kLongestDecomposition)) {
    out += c;
  } else {
    out.append(parts, parts + count);
  }
}

// The canonical decomposition: every code point taken apart, and runs of combining marks brought
// into the order of their classes.
std::u32string decomposed(std::u32string_view text) {
  std::u32string result;
  for (const char32_t c : text) appendDecomposed(c, result);
  auto run = result.begin();
  while (run != result.end()) {
    const auto end = std::find_if(run + 1, result.end(), [](char32_t c) { return combiningClass(c) == 0; });
    const auto marks = combiningClass(*run) == 0 ? run + 1 : run;
    std::stable_sort(marks, end, [](char32_t a, char32_t b) { return combiningClass(a) < combiningClass(b); });
    run = end;
  }
  return result;
}

const Cluster& clusterOf(uint32_t id) { return table().clusters[id]; }

}  // namespace

Character Character::fromCodePoints(std::span<const char32_t> codePoints) {
  if (codePoints.size() == 1) return Character(codePoints.front());
  ClusterTable& t = table();
  const std::u32string_view spelling(codePoints.data(), codePoints.size());
  auto found = t.ids.find(spelling);
  if (found == t.ids.end()) {
    t.clusters.push_back({std::u32string(spelling), decomposed(spelling)});
    found = t.ids.emplace(t.clusters.back().spelling, static_cast<uint32_t>(t.clusters.size() - 1)).first;
  }
  return Character(static_cast<char32_t>(found->second | kClusterBit));
}

bool Character::canonicallyEqual(Character a, Character b) {
  if (a.isCluster() && b.isCluster()) {
    return clusterOf(a.word_ & ~kClusterBit).canonical == clusterOf(b.word_ & ~kClusterBit).canonical;
  }
  if (a.isCluster()) std::swap(a, b);
  const char32_t single = a.firstCodePoint();
  std::u32string whole;
  appendDecomposed(single, whole);
  if (b.isCluster()) return whole == clusterOf(b.word_ & ~kClusterBit).canonical;
  std::u32string other;
  appendDecomposed(b.firstCodePoint(), other);
  return whole == other;
}

char32_t Character::firstCodePoint() const {
  return isCluster() ? clusterOf(word_ & ~kClusterBit).spelling.front() : static_cast<char32_t>(word_);
}

template <class F>
void Character::forEachCodePoint(F f) const {
  if (!isCluster()) return f(static_cast<char32_t>(word_));
  for (const char32_t c : clusterOf(word_ & ~kClusterBit).spelling) f(c);
}

void Character::appendCodePointsTo(std::vector<char32_t>& out) const {
  forEachCodePoint([&](char32_t c) { out.push_back(c); });
}

void Character::appendUtf8To(std::string& out) const {
  forEachCodePoint([&](char32_t c) { appendUtf8(out, c); });
}

int64_t Character::unitCount() const {
  int64_t count = 0;
  forEachCodePoint([&](char32_t c) { count += c > kLastOfBasicPlane ? 2 : 1; });
  return count;
}

void Character::appendUnitsTo(std::vector<uint16_t>& out) const {
  forEachCodePoint([&](char32_t c) {
    if (c <= kLastOfBasicPlane) return out.push_back(static_cast<uint16_t>(c));
    const char32_t offset = c - 0x10000;
    out.push_back(static_cast<uint16_t>(0xD800 + (offset >> 10)));
    out.push_back(static_cast<uint16_t>(0xDC00 + (offset & 0x3FF)));
  });
}

namespace {

Character withCase(Character character, utf8proc_int32_t (*map)(utf8proc_int32_t)) {
  std::vector<char32_t> codePoints;
  character.appendCodePointsTo(codePoints);
  for (char32_t& c : codePoints) c = static_cast<char32_t>(map(static_cast<utf8proc_int32_t>(c)));
  return Character::fromCodePoints(codePoints);
}

}  // namespace

Character Character::lowercased() const {
  if (word_ < kFirstComposable) return Character(word_ >= U'A' && word_ <= U'Z' ? word_ + 32 : word_);
  return withCase(*this, utf8proc_tolower);
}

Character Character::uppercased() const {
  if (word_ < kFirstComposable) return Character(word_ >= U'a' && word_ <= U'z' ? word_ - 32 : word_);
  return withCase(*this, utf8proc_toupper);
}

void appendUtf8(std::string& out, char32_t codePoint) {
  if (codePoint < 0x80) {
    out += static_cast<char>(codePoint);
    return;
  }
  if (isSurrogate(codePoint) || codePoint > 0x10FFFF) codePoint = kReplacement;
  utf8proc_uint8_t bytes[4];
  const auto count = utf8proc_encode_char(static_cast<utf8proc_int32_t>(codePoint), bytes);
  out.append(reinterpret_cast<const char*>(bytes), static_cast<size_t>(count));
}

namespace {

bool isAscii(std::string_view text) {
  unsigned char all = 0;
  for (const char c : text) all |= static_cast<unsigned char>(c);
  return all < 0x80;
}

// Takes one code point off the front of the text; a byte that begins none counts as U+FFFD.
char32_t takeCodePoint(std::string_view& text) {
  utf8proc_int32_t codePoint = 0;
  const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                       static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
  text.remove_prefix(length > 0 ? static_cast<size_t>(length) : 1);
  return length > 0 ? static_cast<char32_t>(codePoint) : kReplacement;
}

std::vector<Character> segmented(std::string_view utf8) {
  std::vector<Character> result;
  std::vector<char32_t> cluster;
  utf8proc_int32_t state = 0;
  while (!utf8.empty()) {
    const char32_t next = takeCodePoint(utf8);
    const bool joins =
        !cluster.empty() && !utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(cluster.back()),
                                                              static_cast<utf8proc_int32_t>(next), &state);
    if (!joins && !cluster.empty()) {
      result.push_back(Character::fromCodePoints(cluster));
      cluster.clear();
    }
    cluster.push_back(next);
  }
  if (!cluster.empty()) result.push_back(Character::fromCodePoints(cluster));
  return result;
}

}  // namespace

std::vector<Character> charactersOf(std::string_view utf8) {
  // The one cluster that ASCII text can hold is a line end of two characters.
  if (!isAscii(utf8) || utf8.find("\r\n") != std::string_view::npos) return segmented(utf8);
  std::vector<Character> result(utf8.size());
  std::transform(utf8.begin(), utf8.end(), result.begin(), [](char c) { return Character(static_cast<char32_t>(c)); });
  return result;
}

std::string toUtf8(const CharArray& text) {
  std::string result;
  result.reserve(static_cast<size_t>(text.numElements()));
  for (const Character c : text.values()) {
    if (c.word() < 0x80) {
      result += static_cast<char>(c.word());
    } else {
      c.appendUtf8To(result);
    }
  }
  return result;
}

CharArray charRow(std::string_view utf8) { return utf8.empty() ? CharArray() : CharArray::row(charactersOf(utf8)); }

}  // namespace kelo
