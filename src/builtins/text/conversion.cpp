// Between numbers and text: char, num2str, int2str.
//
// A number becomes text on its own, whole numbers bare and others with the significant digits of
// the console or with as many as are asked for. A matrix becomes rows of equal width: each column
// is right-aligned, two blanks from the next. Tested by tests/transcripts/builtins/text.txt.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "builtins/library.h"
#include "builtins/text/char_rows.h"
#include "builtins/text/number_rows.h"
#include "display/number_format.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "messages/catalogue/text_functions.h"
#include "messages/catalogue/values.h"
#include "values/exact_integers.h"

namespace kelo::builtins {
namespace {

constexpr int64_t kColumnGap = 2;
constexpr int64_t kMostDigits = 767;  // a double has no more significant digits

// ---- char

CharArray charactersOf(const Storable& value) {
  if (value.isStructure()) throw expectation(text::kStructureToChars);
  if (const FunctionHandle* handle = value.funcHandle()) {
    throw expectation(text::functionToChars(handle->text().substr(1)));
  }
  if (!value.isNumeric()) throw expectation(text::functionToChars(""));
  return value.numeric()->toCharArray();
}

/// An array without rows is one empty row among several inputs.
void appendRows(const CharArray& text, std::vector<TextRow>& rows) {
  std::vector<TextRow> own = text.isEmpty() ? std::vector<TextRow>(1) : rowsOf(text);
  std::move(own.begin(), own.end(), std::back_inserter(rows));
}

NodeValue toChar(Call& call) {
  if (call.count() == 1) return charactersOf(call.arg(0));
  std::vector<TextRow> rows;
  for (int k = 0; k < call.count(); ++k) {
    const CharArray text = charactersOf(call.arg(k));
    if (!text.size().isMatrix()) {
      const std::string argument = fmt::format("s{}", k + 1);
      throw argumentComplaint(call.name(), "s1, s2, ...", argument, predicate::kNumericMatrix2D);
    }
    appendRows(text, rows);
  }
  return stackedRows(rows);
}

// ---- num2str, int2str

/// The text of a real number, which depends on the function and on what the caller asked for.
struct NumberText {
  int nDigits;
  std::optional<int64_t> significant;
  bool rounds;

  std::string of(double x) const {
    if (rounds) x = std::round(x);
    x += 0.0;  // a zero loses its sign
    if (!std::isfinite(x)) return shortNumber(x, nDigits);
    if (significant) return fmt::format("{:.{}g}", x, std::min(*significant, kMostDigits));
    if (x != std::trunc(x)) return shortNumber(x, nDigits);
    return std::fabs(x) < kExactIntegers ? std::to_string(static_cast<int64_t>(x)) : fmt::format("{:.0f}", x);
  }
  std::string of(int64_t n) const { return significant ? of(static_cast<double>(n)) : std::to_string(n); }
  std::string of(bool b) const { return b ? "1" : "0"; }
  std::string of(ComplexDouble z) const {
    return fmt::format("{}{}{}i", of(z.real), z.imaginary < 0 ? '-' : '+', of(std::fabs(z.imaginary)));
  }
};

CharArray rowOf(const std::string& digits) {
  CharArray row = CharArray::uninitialized(SizeVector(1, static_cast<int64_t>(digits.size())));
  Character* out = row.writable();
  for (const char digit : digits) *out++ = Character(static_cast<char32_t>(digit));
  return row;
}

CharArray alignedRows(const std::vector<std::string>& cells, int64_t rows) {
  const int64_t columns = static_cast<int64_t>(cells.size()) / rows;
  const auto cell = [&](int64_t r, int64_t c) -> const std::string& {
    return cells[static_cast<size_t>(r + c * rows)];
  };
  std::vector<int64_t> ends;  // of the columns
  int64_t end = -kColumnGap;
  for (int64_t c = 0; c < columns; ++c) {
    size_t width = 0;
    for (int64_t r = 0; r < rows; ++r) width = std::max(width, cell(r, c).size());
    ends.push_back(end += kColumnGap + static_cast<int64_t>(width));
  }
  CharArray result(SizeVector(rows, end), Character(U' '));
  Character* out = result.writable();
  for (int64_t c = 0; c < columns; ++c) {
    for (int64_t r = 0; r < rows; ++r) {
      int64_t at = ends[static_cast<size_t>(c)] - static_cast<int64_t>(cell(r, c).size());
      for (const char digit : cell(r, c)) out[r + rows * at++] = Character(static_cast<char32_t>(digit));
    }
  }
  return result;
}

/// The pages of further dimensions stand side by side.
CharArray textOf(const NumericArray& array, const NumberText& format) {
  if (array.isEmpty()) return CharArray();
  if (array.isDoubleScalar()) return rowOf(format.of(array.asDouble().scalar()));
  const NumericArray numbers = array.is(Kind::Char) ? array.toDoubleArray() : array;
  std::vector<std::string> cells;
  cells.reserve(static_cast<size_t>(numbers.numElements()));
  numbers.visit([&](const auto& record) {
    if constexpr (!std::is_same_v<std::decay_t<decltype(record)>, CharArray>) {
      for (const auto& x : record.values()) cells.push_back(format.of(x));
    }
  });
  return alignedRows(cells, numbers.size().rows());
}

NodeValue num2str(Call& call) {
  const bool hasDigits = call.count() == 2;
  const NumericArray& array = read::numeric(call, 0, {hasDigits ? "A, n" : "A", "A", predicate::kNumericArray});
  std::optional<int64_t> digits;
  if (hasDigits) {
    constexpr Wording words{"A, n", "n", predicate::kPositiveInteger};
    read::nonChar(call, 1, words);
    digits = read::integer(call, 1, words, 1);
  }
  if (array.is(Kind::Char)) return array;
  return textOf(array, {call.environment.nDigits(), digits, false});
}

NodeValue int2str(Call& call) {
  const NumericArray& array = read::numeric(call, 0, {"A", "A", predicate::kNumericArray});
  return textOf(array, {call.environment.nDigits(), std::nullopt, true});
}

// clang-format off
constexpr Builtin kTextConversion[] = {
    {"char",    toChar,  {1, kAny}, 1, "A, B, ...",
     "Convert numbers to characters, and stack texts as rows", "char(72, 'abc')"},
    {"int2str", int2str, {1, 1},    1, "A",
     "Round numbers and convert them to text", "int2str(2.7)"},
    {"num2str", num2str, {1, 2},    1, "A, n",
     "Convert numbers to text, with n significant digits", "num2str(pi, 8)", {.inputs = text::kNumberToTextCount}},
};
// clang-format on

}  // namespace

CharArray numbersAsText(const NumericArray& array, int nDigits) {
  return textOf(array, {nDigits, std::nullopt, false});
}

std::span<const Builtin> textConversionTable() { return kTextConversion; }

}  // namespace kelo::builtins
