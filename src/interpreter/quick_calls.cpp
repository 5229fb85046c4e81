#include "interpreter/quick_calls.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <string_view>
#include <utility>

#include "interpreter/machine_fast.h"
#include "interpreter/quick_arrays.h"
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

// clang-format off
constexpr Row kRows[] = {
    {"abs", QuickCall::abs, 1},         {"acos", QuickCall::acos, 1},       {"asin", QuickCall::asin, 1},
    {"atan", QuickCall::atan, 1},       {"ceil", QuickCall::ceil, 1},       {"char", QuickCall::toChar, 1},
    {"cos", QuickCall::cos, 1},         {"cosh", QuickCall::cosh, 1},       {"double", QuickCall::toDouble, 1},
    {"exp", QuickCall::exp, 1},         {"fix", QuickCall::fix, 1},         {"floor", QuickCall::floor, 1},
    {"int2str", QuickCall::int2str, 1}, {"ischar", QuickCall::ischar, 1},   {"isempty", QuickCall::isempty, 1},
    {"isfield", QuickCall::isfield, 2}, {"isstruct", QuickCall::isstruct, 1}, {"length", QuickCall::length, 1},
    {"log", QuickCall::log, 1},         {"log10", QuickCall::log10, 1},     {"log2", QuickCall::log2, 1},
    {"lower", QuickCall::lower, 1},     {"max", QuickCall::max, 2},         {"min", QuickCall::min, 2},
    {"mod", QuickCall::mod, 2},         {"ndims", QuickCall::ndims, 1},     {"num2str", QuickCall::num2str, 1},
    {"numel", QuickCall::numel, 1},     {"ones", QuickCall::ones, 2},       {"rem", QuickCall::rem, 2},
    {"round", QuickCall::round, 1},     {"sin", QuickCall::sin, 1},         {"sinh", QuickCall::sinh, 1},
    {"size", QuickCall::size, 2},       {"sqrt", QuickCall::sqrt, 1},       {"strcmp", QuickCall::strcmp, 2},
    {"strcmpi", QuickCall::strcmpi, 2}, {"tan", QuickCall::tan, 1},         {"tanh", QuickCall::tanh, 1},
    {"upper", QuickCall::upper, 1},     {"xor", QuickCall::exclusiveOr, 2}, {"zeros", QuickCall::zeros, 2},
    {"all", QuickCall::all, 1},         {"any", QuickCall::any, 1},         {"dot", QuickCall::dot, 2},
    {"find", QuickCall::find, 1},       {"fliplr", QuickCall::flipRow, 1},  {"flipud", QuickCall::flipColumn, 1},
    {"isinf", QuickCall::isinf, 1},     {"isrow", QuickCall::isrow, 1},     {"iscolumn", QuickCall::iscolumn, 1},
    {"isreal", QuickCall::isreal, 1},   {"isletter", QuickCall::isletter, 1}, {"islogical", QuickCall::islogical, 1},
    {"isscalar", QuickCall::isscalar, 1}, {"ismatrix", QuickCall::ismatrix, 1}, {"isnumeric", QuickCall::isnumeric, 1},
    {"isspace", QuickCall::isspace, 1}, {"isvector", QuickCall::isvector, 1}, {"max", QuickCall::largest, 1},
    {"mean", QuickCall::mean, 1},       {"min", QuickCall::smallest, 1},    {"sum", QuickCall::sum, 1},
};
// clang-format on

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

bool isPlain(Character c) { return c.word() < 0x80; }

Character inCase(Character c, bool isUpper) {
  const uint32_t first = isUpper ? U'a' : U'A';
  return c.word() - first < 26 ? Character(c.word() ^ 0x20) : c;
}

// Of ASCII characters.
bool textInCase(const Storable& x, bool isUpper, Storable* result) {
  const CharArray* row = rowOfText(x);
  if (!row || !isAscii(*row)) return false;
  auto turned = CharArray::uninitialized(row->size());
  std::transform(row->data(), row->data() + row->numElements(), turned.writable(),
                 [&](Character c) { return inCase(c, isUpper); });
  *result = std::move(turned);
  return true;
}

bool sameIgnoringCase(const Storable& x, const Storable& y, Storable* result) {
  const CharArray *a = rowOfText(x), *b = rowOfText(y);
  if (!a || !b) return false;
  const bool areEqual = a->numElements() == b->numElements();
  for (int64_t k = 0; areEqual && k < a->numElements(); ++k) {
    const Character c = (*a)[k], d = (*b)[k];
    if (!isPlain(c) || !isPlain(d)) return false;
    if (inCase(c, false).word() == inCase(d, false).word()) continue;
    result->setLogical(false);
    return true;
  }
  result->setLogical(areEqual);
  return true;
}

bool hasField(const Storable& x, const Storable& y, Storable* result) {
  constexpr size_t kMost = 63;
  const StructArray* structure = x.structure();
  const CharArray* row = rowOfText(y);
  if (!structure || !row || static_cast<size_t>(row->numElements()) > kMost) return false;
  char text[kMost];
  for (int64_t k = 0; k < row->numElements(); ++k) {
    if (!isPlain((*row)[k])) return false;
    text[k] = static_cast<char>((*row)[k].word());
  }
  const auto name = Name::find({text, static_cast<size_t>(row->numElements())});
  result->setLogical(name && structure->hasField(*name));
  return true;
}

// A whole number from `least` on, and not large.
bool smallCount(const Storable& value, int64_t least, int64_t* count) {
  constexpr double kMost = 1024;
  double x;
  if (!subscriptNumber(value, &x) || !(x >= static_cast<double>(least) && x <= kMost)) return false;
  *count = static_cast<int64_t>(x);
  return static_cast<double>(*count) == x;
}

bool filled(const Storable& rows, const Storable& columns, double value, Storable* result) {
  constexpr int64_t kMost = 4096;
  int64_t m, n;
  if (!smallCount(rows, 0, &m) || !smallCount(columns, 0, &n) || m * n > kMost) return false;
  if (m * n == 1) result->setNumber(value);
  else *result = DoubleArray(SizeVector(m, n), value);
  return true;
}

bool kindChanged(const Storable& x, bool toChar, Storable* result) {
  if (!x.isPlainScalar()) return false;
  const NumericArray& scalar = *x.numeric();
  if (toChar) {
    const double code = scalar.is(Kind::Double) ? scalar.asDouble().scalar() : -1;
    if (!(code >= 0 && code < 0x80)) return false;
    *result = CharArray(Character(static_cast<char32_t>(code)));
    return true;
  }
  if (scalar.is(Kind::Double)) *result = x;
  else if (scalar.is(Kind::Char) && isPlain(scalar.asChar().scalar()))
    result->setNumber(scalar.asChar().scalar().word());
  else if (scalar.is(Kind::Logical)) result->setNumber(scalar.asLogical().scalar() ? 1 : 0);
  else return false;
  return true;
}

// A number, a count of the system's own, or a logical as a number.
bool numberOf(const Storable& value, double* x) {
  if (value.isDoubleScalar()) [[likely]] {
    *x = value.doubleScalar();
    return true;
  }
  if (value.isScalarOf(Kind::Int)) *x = static_cast<double>(value.numeric()->asInt().scalar());
  else if (value.isScalarOf(Kind::Logical)) *x = value.numeric()->asLogical().scalar() ? 1 : 0;
  else return false;
  return true;
}

bool isKind(QuickCall question, const Storable& x) {
  if (!x.isNumeric()) return false;
  const Kind kind = x.numeric()->kind();
  if (question == QuickCall::isnumeric) return kind != Kind::Char && kind != Kind::Logical;
  return question == QuickCall::isreal ? kind != Kind::Complex : kind == Kind::Logical;
}

bool hasShape(QuickCall question, const SizeVector& size) {
  switch (question) {
    case QuickCall::isrow: return size.isRow();
    case QuickCall::iscolumn: return size.isColumn();
    case QuickCall::isscalar: return size.isScalar();
    case QuickCall::isvector: return size.isVector() && !size.hasZeroLength();
    default: return size.isMatrix();
  }
}

bool truthOf(const Storable& x, bool* answer) {
  if (x.isScalarOf(Kind::Logical)) *answer = x.numeric()->asLogical().scalar();
  else if (x.isDoubleScalar() && !std::isnan(x.doubleScalar())) *answer = x.doubleScalar() != 0;
  else return false;
  return true;
}

int64_t longest(const SizeVector& size) { return size.hasZeroLength() ? 0 : std::ranges::max(size.vec()); }

}  // namespace

// Characters may be equal without being the same word.
bool sameText(const CharArray& a, const CharArray& b) {
  const int64_t count = a.numElements();
  if (count != b.numElements()) return false;
  if (!(a.size().isRow() && b.size().isRow()) && a.size() != b.size()) return false;
  const Character *x = a.data(), *y = b.data(), *const end = x + count;
  for (; x != end; ++x, ++y) {
    if (x->word() != y->word()) return std::equal(x, end, y);
  }
  return true;
}

int32_t quickCallOf(Name name, int32_t count) {
  for (const Row& row : kRows) {
    if (row.count == count && row.name == name.text()) return static_cast<int32_t>(row.function);
  }
  return -1;
}

std::optional<Storable> quickConstantOf(Name name) {
  constexpr double kInf = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr std::pair<std::string_view, double> kNumbers[] = {
      {"pi", std::numbers::pi}, {"eps", std::numeric_limits<double>::epsilon()}, {"inf", kInf}, {"Inf", kInf},
      {"nan", kNaN}, {"NaN", kNaN},
  };
  for (const auto& [word, value] : kNumbers) {
    if (word == name.text()) return Storable(value);
  }
  if (name.text() == "true" || name.text() == "false") return Storable(LogicalArray(name.text() == "true"));
  return std::nullopt;
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
    double a, b, number;
    if (!numberOf(x, &a) || !numberOf(y, &b) || !quickCall(function, a, b, &number)) return false;
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
    case QuickCall::strcmpi: return sameIgnoringCase(x, y, result);
    case QuickCall::toDouble: return kindChanged(x, false, result) || quickCharacters(function, x, result);
    case QuickCall::toChar: return kindChanged(x, true, result) || quickText(x, result);
    case QuickCall::exclusiveOr: {
      bool a, b;
      if (!truthOf(x, &a) || !truthOf(y, &b)) return false;
      result->setLogical(a != b);
      return true;
    }
    case QuickCall::lower: case QuickCall::upper: return textInCase(x, function == QuickCall::upper, result);
    case QuickCall::ischar: result->setLogical(isText(x)); return true;
    case QuickCall::isstruct: result->setLogical(x.isStructure()); return true;
    case QuickCall::isfield: return hasField(x, y, result);
    case QuickCall::ones: case QuickCall::zeros: return filled(x, y, function == QuickCall::ones ? 1 : 0, result);
    case QuickCall::size: {
      int64_t d;
      if (!smallCount(y, 1, &d)) return false;
      *result = IntArray(x.size().dimensionLength(d));
      return true;
    }
    case QuickCall::int2str: return wholeText(x, true, result);
    case QuickCall::num2str: return wholeText(x, false, result);
    case QuickCall::largest: case QuickCall::smallest: case QuickCall::sum: case QuickCall::mean: case QuickCall::all:
    case QuickCall::any: case QuickCall::find: return quickReduction(function, x, result);
    case QuickCall::flipRow: case QuickCall::flipColumn: return quickReversal(function, x, result);
    case QuickCall::dot: return quickDot(x, y, result);
    case QuickCall::isspace: case QuickCall::isletter: return quickCharacters(function, x, result);
    case QuickCall::isnumeric: case QuickCall::isreal: case QuickCall::islogical:
      result->setLogical(isKind(function, x));
      return true;
    case QuickCall::isrow: case QuickCall::iscolumn: case QuickCall::isscalar: case QuickCall::isvector:
    case QuickCall::ismatrix: result->setLogical(hasShape(function, x.size())); return true;
    case QuickCall::isinf:
      if (!x.isDoubleScalar()) return false;
      result->setLogical(std::isinf(x.doubleScalar()));
      return true;
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
