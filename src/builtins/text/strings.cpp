// Text: joining, letter case, comparison. Characters are compared by canonical equivalence, see
// values/character.h; what is no text equals nothing. Tested by
// tests/transcripts/builtins/text.txt.
#include <algorithm>
#include <cmath>

#include "builtins/library.h"
#include "builtins/text/char_rows.h"
#include "interpreter/reader.h"
#include "messages/catalogue/text_functions.h"
#include "platform/vector_clones.h"

namespace kelo::builtins {
namespace {

// ---- strcat

/// Row r of an input; an input of one row stands beside each row of the others.
void appendRow(const CharArray& text, bool trims, int64_t r, TextRow& out) {
  const int64_t rows = text.size().rows();
  const int64_t start = rows == 1 ? 0 : r;
  int64_t columns = text.size().columns();
  while (trims && columns > 0 && text[start + (columns - 1) * rows] == Character(U' ')) --columns;
  for (int64_t c = 0; c < columns; ++c) out.push_back(text[start + c * rows]);
}

NodeValue strcat(Call& call) {
  int64_t height = 1;
  for (int k = 0; k < call.count(); ++k) {
    const NumericArray& input = read::numeric(call, k, Wording::sentence(text::kStrcatKinds));
    if (input.isEmpty()) continue;
    const int64_t rows = input.size().rows();
    if (!input.size().isMatrix() || (rows != 1 && height != 1 && rows != height)) {
      throw Wording::sentence(text::kStrcatShapes).complaint(call);
    }
    height = std::max(height, rows);
  }
  std::vector<TextRow> rows(static_cast<size_t>(height));
  for (const Storable& input : call.args) {
    if (input.isEmpty()) continue;
    const CharArray text = input.numeric()->toCharArray();
    for (int64_t r = 0; r < height; ++r) {
      appendRow(text, input.numeric()->is(Kind::Char), r, rows[static_cast<size_t>(r)]);
    }
  }
  return stackedRows(rows);
}

// ---- Letter case

enum class Case { lower, upper };

/// Whether all are ASCII characters, which have one word each.
bool isAscii(const Character* c, int64_t n) {
  uint32_t all = 0;
  for (int64_t i = 0; i < n; ++i) all |= c[i].word();
  return all < 0x80;
}

/// REQUIRES: isAscii. `out` may be `in`.
void turnAscii(Character* out, const Character* in, int64_t n, uint32_t firstLetter) {
#pragma GCC ivdep
  for (int64_t i = 0; i < n; ++i) {
    const uint32_t word = in[i].word();
    out[i] = Character(word - firstLetter < 26 ? word ^ 0x20 : word);
  }
}

KELO_VECTOR_CLONES void turnCase(Character* out, const Character* in, int64_t n, bool toLower) {
  constexpr int64_t kBlock = 256;
  for (int64_t i = 0; i < n; i += kBlock) {
    const int64_t count = std::min(kBlock, n - i);
    if (isAscii(in + i, count)) {
      turnAscii(out + i, in + i, count, toLower ? U'A' : U'a');
      continue;
    }
    for (int64_t k = i; k < i + count; ++k) out[k] = toLower ? in[k].lowercased() : in[k].uppercased();
  }
}

// OPTIMIZATION: ASCII text a block at a time, in loops that the compiler vectorises.
CharArray inCase(CharArray text, Case letterCase) {
  if (text.isUnshared()) {
    Character* own = text.writable();
    turnCase(own, own, text.numElements(), letterCase == Case::lower);
    return text;
  }
  auto result = CharArray::uninitialized(text.size());
  turnCase(result.writable(), text.data(), text.numElements(), letterCase == Case::lower);
  return result;
}

NodeValue textCase(Call& call) {
  constexpr Wording words{"s", "s", text::kCharacterArray};
  NumericArray text = read::takeNumeric(call, 0, words);
  if (!text.is(Kind::Char)) throw words.complaint(call);
  return inCase(std::move(text).take<Character>(), call.selector<Case>());
}

NodeValue newline(Call&) { return CharArray(Character(U'\n')); }

// ---- Comparison

enum class Compare { all, allIgnoringCase, first, firstIgnoringCase };

bool sameCharacters(const Character* a, const Character* b, int64_t count, bool ignoresCase) {
  if (!ignoresCase) return std::equal(a, a + count, b);
  return std::equal(a, a + count, b, [](Character x, Character y) { return x.lowercased() == y.lowercased(); });
}

const CharArray* asText(const Storable& value) {
  const NumericArray* array = value.numeric();
  return array && array->is(Kind::Char) ? &array->asChar() : nullptr;
}

NodeValue strcmp(Call& call) {
  const CharArray* a = asText(call.arg(0));
  const CharArray* b = asText(call.arg(1));
  const bool ignoresCase = call.selector<Compare>() == Compare::allIgnoringCase;
  return LogicalArray(a && b && a->size() == b->size() &&
                      sameCharacters(a->data(), b->data(), a->numElements(), ignoresCase));
}

/// The number of characters to compare; Inf stands for all of them.
double countOf(const Call& call) {
  constexpr Wording words{"s1, s2, n", "n", text::kCountOfCharacters};
  const double n = read::realScalar(call, 2, words);
  if (std::isnan(n) || n != std::trunc(n)) throw words.complaint(call);
  return n;
}

/// Past the end of either text, whole texts of the same size are equal or not.
NodeValue strncmp(Call& call) {
  const double n = countOf(call);
  const CharArray* a = asText(call.arg(0));
  const CharArray* b = asText(call.arg(1));
  if (!a || !b) return LogicalArray(false);
  const bool ignoresCase = call.selector<Compare>() == Compare::firstIgnoringCase;
  const int64_t shorter = std::min(a->numElements(), b->numElements());
  const bool pastEnd = n > static_cast<double>(shorter);
  if (pastEnd ? a->size() != b->size() : a->size().rows() != b->size().rows() && n > 0) return LogicalArray(false);
  const int64_t count = pastEnd ? shorter : std::max(static_cast<int64_t>(n), int64_t{0});
  return LogicalArray(sameCharacters(a->data(), b->data(), count, ignoresCase));
}

// clang-format off
constexpr Builtin kStrings[] = {
    {"lower",    {textCase, Case::lower},               {1, 1},    1, "s",
     "Turn letters into small letters", "lower('Kelo')"},
    {"newline",  newline,                               {0, 0},    1, "",
     "The line feed as a character", "['a' newline 'b']", {.inputs = text::kNoInputOfNewline}},
    {"strcat",   strcat,                                {1, kAny}, 1, "s1, s2, ...",
     "Join texts side by side, without their trailing blanks", "strcat('ab ', 'cd')"},
    {"strcmp",   {strcmp, Compare::all},                {2, 2},    1, "s1, s2",
     "Whether two texts are the same", "strcmp('a', 'A')"},
    {"strcmpi",  {strcmp, Compare::allIgnoringCase},    {2, 2},    1, "s1, s2",
     "Whether two texts are the same but for letter case", "strcmpi('a', 'A')"},
    {"strncmp",  {strncmp, Compare::first},             {3, 3},    1, "s1, s2, n",
     "Whether the first n characters of two texts are the same", "strncmp('abc', 'abd', 2)"},
    {"strncmpi", {strncmp, Compare::firstIgnoringCase}, {3, 3},    1, "s1, s2, n",
     "Whether the first n characters of two texts are the same but for letter case", "strncmpi('abc', 'ABd', 2)"},
    {"upper",    {textCase, Case::upper},               {1, 1},    1, "s",
     "Turn letters into capital letters", "upper('Kelo')"},
};
// clang-format on

}  // namespace

std::span<const Builtin> stringsTable() { return kStrings; }

}  // namespace kelo::builtins
