// Conversions among the five kinds.
//
// Each is one loop over contiguous elements with a function for the element. Text is the exception:
// its characters give as many numbers as they have UTF-16 units, so its size may change; plain
// text, with one unit a character, takes the same loop.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "messages/catalogue/values.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "platform/parallel.h"
#include "values/numeric_array.h"
#include "values/plain_loops.h"

namespace kelo {
namespace {

template <class To, class From, class F>
TypedArray<To> mapped(const TypedArray<From>& array, F f) {
  auto result = TypedArray<To>::uninitialized(array.size());
  To* out = result.writable();
  const From* in = array.data();
  const int64_t n = array.numElements();
  for (int64_t i = 0; i < n; ++i) out[i] = f(in[i]);
  return result;
}

// Logical arrays as numbers.
DoubleArray numbersOf(const LogicalArray& array) {
  auto result = DoubleArray::uninitialized(array.size());
  platform::parallelFor(array.numElements(), [out = result.writable(), in = array.data()](int64_t begin, int64_t end) {
    truthsAsNumbers(out + begin, in + begin, end - begin);
  });
  return result;
}

// The scalar conversions.

int64_t integerOf(double x) {
  if (std::isnan(x)) throw problem(text::kNaNToInteger);
  if (std::isinf(x)) return x > 0 ? std::numeric_limits<int64_t>::max() : std::numeric_limits<int64_t>::min();
  return checkedCast(x);
}

bool logicalOf(ComplexDouble z) {
  if (z.imaginary != 0) throw problem(text::kComplexToLogical);
  if (std::isnan(z.real)) throw problem(text::kNaNToLogical);
  return z.real != 0;
}

constexpr uint16_t kLastUnit = 0xFFFF;

Character characterOf(double x) {
  if (!(x > 0)) return Character();  // also NaN
  return Character::fromUnit(x < kLastUnit ? static_cast<uint16_t>(x) : kLastUnit);
}

Character characterOf(int64_t n) {
  return Character::fromUnit(static_cast<uint16_t>(std::clamp<int64_t>(n, 0, kLastUnit)));
}

// Text as numbers.

// Whether every character is one UTF-16 unit. The words of clusters and of higher code points lie
// above those units.
bool isPlain(const CharArray& text) {
  uint32_t all = 0;
  for (const Character c : text.values()) all |= c.word();
  return all <= kLastUnit;
}

int64_t unitCount(std::span<const Character> characters) {
  int64_t count = 0;
  for (const Character c : characters) count += c.unitCount();
  return count;
}

template <class To, class F>
TypedArray<To> fromUnits(const CharArray& text, F f) {
  if (text.isEmpty()) return TypedArray<To>();
  if (isPlain(text)) return mapped<To>(text, [f](Character c) { return f(static_cast<uint16_t>(c.word())); });
  const auto size = sizeInNumbers(text);
  if (!size) throw problem(text::kUnevenColumnsOfText);
  std::vector<uint16_t> units;
  for (const Character c : text.values()) c.appendUnitsTo(units);
  auto result = TypedArray<To>::uninitialized(*size);
  std::transform(units.begin(), units.end(), result.writable(), f);
  return result;
}

}  // namespace

std::optional<SizeVector> sizeInNumbers(const CharArray& text) {
  if (text.isEmpty()) return SizeVector(0, 0);
  if (isPlain(text)) return text.size();
  const auto rows = static_cast<size_t>(text.size().rows());
  const auto characters = text.values();
  const int64_t count = unitCount(characters.first(rows));
  for (size_t start = rows; start < characters.size(); start += rows) {
    if (unitCount(characters.subspan(start, rows)) != count) return std::nullopt;
  }
  return text.size().withDimension(1, count);
}

DoubleArray NumericArray::toDoubleArray() const& {
  switch (kind_) {
    case Kind::Double: break;
    case Kind::Int: return mapped<double>(asInt(), [](int64_t n) { return static_cast<double>(n); });
    case Kind::Logical: return numbersOf(asLogical());
    case Kind::Complex: return mapped<double>(asComplex(), [](ComplexDouble z) { return z.real; });
    case Kind::Char: return fromUnits<double>(asChar(), [](uint16_t unit) { return static_cast<double>(unit); });
  }
  return asDouble();
}

DoubleArray NumericArray::toDoubleArray() && {
  if (is(Kind::Double)) return std::move(*this).take<double>();
  return std::as_const(*this).toDoubleArray();
}

IntArray NumericArray::toIntArray() const {
  switch (kind_) {
    case Kind::Double: return mapped<int64_t>(asDouble(), integerOf);
    case Kind::Int: break;
    case Kind::Logical: return mapped<int64_t>(asLogical(), [](bool b) { return int64_t{b}; });
    case Kind::Complex: return mapped<int64_t>(asComplex(), [](ComplexDouble z) { return integerOf(z.real); });
    case Kind::Char: return fromUnits<int64_t>(asChar(), [](uint16_t unit) { return int64_t{unit}; });
  }
  return asInt();
}

LogicalArray NumericArray::toLogicalArray() const {
  switch (kind_) {
    case Kind::Double:
      // Before the loop, which is branch-free then.
      if (has(Property::hasSomeNaNs)) throw problem(text::kNaNToLogical);
      return mapped<bool>(asDouble(), [](double x) { return x != 0; });
    case Kind::Int: return mapped<bool>(asInt(), [](int64_t n) { return n != 0; });
    case Kind::Logical: break;
    case Kind::Complex: return mapped<bool>(asComplex(), [](ComplexDouble z) { return logicalOf(z); });
    case Kind::Char: return fromUnits<bool>(asChar(), [](uint16_t unit) { return unit != 0; });
  }
  return asLogical();
}

ComplexDoubleArray NumericArray::toComplexArray() const& {
  switch (kind_) {
    case Kind::Double: return mapped<ComplexDouble>(asDouble(), [](double x) { return ComplexDouble{x, 0}; });
    case Kind::Int:
      return mapped<ComplexDouble>(asInt(), [](int64_t n) { return ComplexDouble{static_cast<double>(n), 0}; });
    case Kind::Logical:
      return mapped<ComplexDouble>(asLogical(), [](bool b) { return ComplexDouble{b ? 1.0 : 0.0, 0}; });
    case Kind::Complex: break;
    case Kind::Char:
      return fromUnits<ComplexDouble>(asChar(), [](uint16_t unit) {
        return ComplexDouble{static_cast<double>(unit), 0};
      });
  }
  return asComplex();
}

ComplexDoubleArray NumericArray::toComplexArray() && {
  if (is(Kind::Complex)) return std::move(*this).take<ComplexDouble>();
  return std::as_const(*this).toComplexArray();
}

CharArray NumericArray::toCharArray() const {
  switch (kind_) {
    case Kind::Double: return mapped<Character>(asDouble(), [](double x) { return characterOf(x); });
    case Kind::Int: return mapped<Character>(asInt(), [](int64_t n) { return characterOf(n); });
    case Kind::Logical: return mapped<Character>(asLogical(), [](bool b) { return Character::fromUnit(b); });
    case Kind::Complex: return mapped<Character>(asComplex(), [](ComplexDouble z) { return characterOf(z.real); });
    case Kind::Char: break;
  }
  return asChar();
}

NumericArray NumericArray::toKind(Kind kind) const& {
  if (is(kind)) return *this;
  switch (kind) {
    case Kind::Double: break;
    case Kind::Int: return toIntArray();
    case Kind::Logical: return toLogicalArray();
    case Kind::Complex: return toComplexArray();
    case Kind::Char: return toCharArray();
  }
  return toDoubleArray();
}

NumericArray NumericArray::toKind(Kind kind) && {
  if (is(kind)) return std::move(*this);
  return std::as_const(*this).toKind(kind);
}

const char* kindName(Kind kind) {
  switch (kind) {
    case Kind::Double: break;
    case Kind::Int: break;  // NOTE: intended. The user knows no integers
    case Kind::Logical: return "logical";
    case Kind::Complex: return "complex";
    case Kind::Char: return "char";
  }
  return "double";
}

std::string NumericArray::kindLabel() const { return fmt::format("{} ({})", kindName(kind_), size().description()); }

NumericArray NumericArray::emptyLike() const {
  NumericArray result;
  result.kind_ = kind_;  // the arrays of size 0 x 0 of all kinds share one block
  return result;
}

}  // namespace kelo
