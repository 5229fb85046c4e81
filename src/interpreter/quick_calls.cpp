#include "interpreter/quick_calls.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/vector_math.h"

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
    {"floor", QuickCall::floor, 1}, {"isempty", QuickCall::isempty, 1}, {"length", QuickCall::length, 1},
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

bool sameText(const Storable& a, const Storable& b) {
  if (!a.isNumeric() || !b.isNumeric() || !a.numeric()->is(Kind::Char) || !b.numeric()->is(Kind::Char)) return false;
  const CharArray &x = a.numeric()->asChar(), &y = b.numeric()->asChar();
  return x.numElements() == y.numElements() && x.size() == y.size() &&
         std::equal(x.data(), x.data() + x.numElements(), y.data());
}

const CharArray* rowOfText(const Storable& value) {
  const NumericArray* array = value.numeric();
  return array && array->is(Kind::Char) && array->size().isRow() && !array->isEmpty() ? &array->asChar() : nullptr;
}

int64_t lengthWithoutBlanks(const CharArray& row) {
  int64_t length = row.numElements();
  while (length > 0 && row[length - 1] == Character(U' ')) --length;
  return length;
}

int64_t longest(const SizeVector& size) { return size.hasZeroLength() ? 0 : std::ranges::max(size.vec()); }

}  // namespace

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
  if (Storable::areDoubleScalars(x, y)) {
    double number;
    if (quickCall(function, x.doubleScalar(), y.doubleScalar(), &number)) {
      result->setNumber(number);
      return true;
    }
  }
  if (function < QuickCall::isempty || !x.isArray() || !y.isArray()) return false;
  switch (function) {
    case QuickCall::isempty: result->setLogical(x.isEmpty()); return true;
    case QuickCall::length: *result = IntArray(longest(x.size())); return true;
    case QuickCall::ndims: *result = IntArray(x.size().ndim()); return true;
    case QuickCall::numel: *result = IntArray(x.numElements()); return true;
    case QuickCall::strcmp: result->setLogical(sameText(x, y)); return true;
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
