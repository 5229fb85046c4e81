#include "interpreter/quick_calls.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

#include "platform/vector_math.h"
#include "values/exact_integers.h"

namespace kelo {
namespace {

using platform::VectorFunction;

struct Row {
  std::string_view name;
  QuickCall function;
  int32_t count;
};

constexpr Row kRows[] = {
    {"abs", QuickCall::abs, 1},     {"acos", QuickCall::acos, 1},     {"asin", QuickCall::asin, 1},
    {"atan", QuickCall::atan, 1},   {"ceil", QuickCall::ceil, 1},     {"cos", QuickCall::cos, 1},
    {"cosh", QuickCall::cosh, 1},   {"exp", QuickCall::exp, 1},       {"fix", QuickCall::fix, 1},
    {"floor", QuickCall::floor, 1}, {"int2str", QuickCall::int2str, 1}, {"num2str", QuickCall::num2str, 1},
    {"isempty", QuickCall::isempty, 1}, {"length", QuickCall::length, 1},
    {"log", QuickCall::log, 1},     {"log10", QuickCall::log10, 1},   {"log2", QuickCall::log2, 1},
    {"max", QuickCall::max, 2},     {"min", QuickCall::min, 2},       {"mod", QuickCall::mod, 2},
    {"ndims", QuickCall::ndims, 1}, {"numel", QuickCall::numel, 1},   {"rem", QuickCall::rem, 2},
    {"round", QuickCall::round, 1}, {"sin", QuickCall::sin, 1},       {"sinh", QuickCall::sinh, 1},
    {"sqrt", QuickCall::sqrt, 1},   {"strcmp", QuickCall::strcmp, 2}, {"tan", QuickCall::tan, 1},
    {"tanh", QuickCall::tanh, 1},
};

// The routine that arrays are put through gives the same for an element alone.
template <VectorFunction kFunction>
bool byRoutine(double x, double* result) {
  static const platform::VectorRoutine routine = platform::vectorRoutine(kFunction);
  routine(result, &x, 1);
  return true;
}

bool isText(const Storable& value) { return value.isNumeric() && value.numeric()->is(Kind::Char); }

const CharArray* rowOfText(const Storable& value) {
  const NumericArray* array = value.numeric();
  return array && array->is(Kind::Char) && array->size().isRow() && !array->isEmpty() ? &array->asChar() : nullptr;
}

int64_t lengthWithoutBlanks(const CharArray& row) {
  int64_t length = row.numElements();
  while (length > 0 && row[length - 1] == Character(U' ')) --length;
  return length;
}

// The text of a number of the system's own, or of one that is whole or rounded to that.
bool wholeText(const Storable& x, bool rounds, Storable* result) {
  int64_t whole;
  if (x.isScalarOf(Kind::Int)) {
    whole = x.numeric()->asInt().scalar();
  } else {
    if (!x.isDoubleScalar()) return false;
    const double number = rounds ? std::round(x.doubleScalar()) : x.doubleScalar();
    if (!(std::fabs(number) < kExactIntegers) || number != std::trunc(number)) return false;
    whole = static_cast<int64_t>(number);
  }
  const fmt::format_int digits(whole);
  Character text[20];  // as long as the longest
  Character* const end = std::transform(digits.data(), digits.data() + digits.size(), text,
                                        [](char c) { return Character(static_cast<char32_t>(c)); });
  *result = CharArray::row({text, end});
  return true;
}

int64_t longest(const SizeVector& size) { return size.hasZeroLength() ? 0 : std::ranges::max(size.vec()); }

}  // namespace

// Characters may be equal without being the same word.
bool sameText(const CharArray& a, const CharArray& b) {
  if (a.numElements() != b.numElements() || a.size() != b.size()) return false;
  const auto bytes = static_cast<size_t>(a.numElements()) * sizeof(Character);
  return std::memcmp(a.data(), b.data(), bytes) == 0 ||
         std::equal(a.data(), a.data() + a.numElements(), b.data());
}

int32_t quickCallOf(Name name, int32_t count) {
  for (const Row& row : kRows) {
    if (row.count == count && row.name == name.text()) return static_cast<int32_t>(row.function);
  }
  return -1;
}

bool quickCall(QuickCall function, double x, double y, double* result) {
  switch (function) {
    case QuickCall::abs: *result = std::fabs(x); return true;
    case QuickCall::ceil: *result = std::ceil(x); return true;
    case QuickCall::fix: *result = std::trunc(x); return true;
    case QuickCall::floor: *result = std::floor(x); return true;
    case QuickCall::round: *result = std::round(x); return true;
    case QuickCall::max: *result = y > x ? y : x; return !std::isnan(x) && !std::isnan(y);
    case QuickCall::min: *result = y < x ? y : x; return !std::isnan(x) && !std::isnan(y);
    case QuickCall::mod: *result = y == 0 ? x : x - y * std::floor(x / y); return true;
    case QuickCall::rem: *result = x - y * std::trunc(x / y); return y != 0;
    case QuickCall::sqrt: *result = std::sqrt(x); return x >= 0;
    case QuickCall::acos: return std::fabs(x) <= 1 && byRoutine<VectorFunction::acos>(x, result);
    case QuickCall::asin: return std::fabs(x) <= 1 && byRoutine<VectorFunction::asin>(x, result);
    case QuickCall::atan: return byRoutine<VectorFunction::atan>(x, result);
    case QuickCall::cos: return byRoutine<VectorFunction::cos>(x, result);
    case QuickCall::cosh: return byRoutine<VectorFunction::cosh>(x, result);
    case QuickCall::exp: return byRoutine<VectorFunction::exp>(x, result);
    case QuickCall::log: return x >= 0 && byRoutine<VectorFunction::log>(x, result);
    case QuickCall::log10: return byRoutine<VectorFunction::log10>(x, result);
    case QuickCall::log2: return byRoutine<VectorFunction::log2>(x, result);
    case QuickCall::sin: return byRoutine<VectorFunction::sin>(x, result);
    case QuickCall::sinh: return byRoutine<VectorFunction::sinh>(x, result);
    case QuickCall::tan: return byRoutine<VectorFunction::tan>(x, result);
    case QuickCall::tanh: return byRoutine<VectorFunction::tanh>(x, result);
    default: return false;
  }
}

bool quickCall(QuickCall function, const Storable& x, const Storable& y, Storable* result) {
  if (function < QuickCall::isempty) {
    double number;
    if (!Storable::areDoubleScalars(x, y) || !quickCall(function, x.doubleScalar(), y.doubleScalar(), &number)) {
      return false;
    }
    result->setNumber(number);
    return true;
  }
  if (!x.isArray() || !y.isArray()) return false;
  switch (function) {
    case QuickCall::isempty: result->setLogical(x.isEmpty()); return true;
    case QuickCall::length: *result = IntArray(longest(x.size())); return true;
    case QuickCall::ndims: *result = IntArray(x.size().ndim()); return true;
    case QuickCall::numel: *result = IntArray(x.numElements()); return true;
    case QuickCall::strcmp:
      result->setLogical(isText(x) && isText(y) && sameText(x.numeric()->asChar(), y.numeric()->asChar()));
      return true;
    case QuickCall::int2str: return wholeText(x, true, result);
    case QuickCall::num2str: return wholeText(x, false, result);
    default: return false;
  }
}

bool appendTexts(Storable& text, std::span<const Storable> more) {
  if (!rowOfText(text) || text.isPlainScalar() || !text.numeric()->isUnshared()) return false;
  CharArray& row = text.numeric()->as<Character>();
  int64_t at = lengthWithoutBlanks(row), length = at;
  for (const Storable& each : more) {
    const CharArray* added = rowOfText(each);
    if (!added) return false;
    length += lengthWithoutBlanks(*added);
  }
  if (length < 2) return false;
  row.resizeVector(SizeVector(1, length));
  for (const Storable& each : more) {
    const CharArray& added = *rowOfText(each);
    const int64_t count = lengthWithoutBlanks(added);
    std::copy_n(added.data(), count, row.writable() + at);
    at += count;
  }
  return true;
}

}  // namespace kelo
