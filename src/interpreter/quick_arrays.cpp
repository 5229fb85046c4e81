// Built-ins of small arrays and texts that are computed without a call: what they give is what the
// built-ins give, with the same additions in the same order.
#include "interpreter/quick_arrays.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace kelo {
namespace {

constexpr int64_t kMost = 64;  // elements of what is small

const DoubleArray* doublesOf(const Storable& value) {
  return value.isNumeric() && value.numeric()->is(Kind::Double) ? &value.numeric()->asDouble() : nullptr;
}

const CharArray* charactersOf(const Storable& value) {
  return value.isNumeric() && value.numeric()->is(Kind::Char) ? &value.numeric()->asChar() : nullptr;
}

bool isSmallVector(const SizeVector& size) {
  return size.isVector() && !size.hasZeroLength() && size.numElements() <= kMost;
}

// NaN is true.
inline bool isTrue(double x) { return x != 0; }
inline bool isTrue(bool x) { return x; }

/// Without NaN, of which it says false.
bool extreme(bool isMax, const double* x, int64_t n, double* result) {
  double best = x[0];
  bool hasNaN = std::isnan(best);
  for (int64_t k = 1; k < n; ++k) {
    hasNaN |= std::isnan(x[k]);
    if (isMax ? x[k] > best : x[k] < best) best = x[k];
  }
  *result = best;
  return !hasNaN;
}

template <class T>
bool truth(QuickCall function, const T* x, int64_t n) {
  const auto isHit = [](T element) { return isTrue(element); };
  return function == QuickCall::all ? std::all_of(x, x + n, isHit) : std::any_of(x, x + n, isHit);
}

template <class T>
double sum(const T* x, int64_t n) {
  double sum = 0;
  for (int64_t k = 0; k < n; ++k) sum = sum + static_cast<double>(x[k]);
  return sum;
}

/// The numbers, from 1, of the hits.
template <class T>
void hits(const TypedArray<T>& array, Storable* result) {
  double numbers[kMost];
  int64_t count = 0;
  for (int64_t k = 0; k < array.numElements(); ++k) {
    numbers[count] = static_cast<double>(k + 1);
    count += isTrue(array[k]);
  }
  auto made = DoubleArray::uninitialized(array.size().isRow() ? SizeVector(1, count) : SizeVector(count, 1));
  std::copy_n(numbers, count, made.writable());
  *result = std::move(made);
}

bool reduceDoubles(QuickCall function, const DoubleArray& array, Storable* result) {
  const double* x = array.data();
  const int64_t n = array.numElements();
  double number;
  switch (function) {
    case QuickCall::sum: number = sum(x, n); break;
    case QuickCall::mean: number = sum(x, n) / static_cast<double>(n); break;
    case QuickCall::largest: case QuickCall::smallest:
      if (!extreme(function == QuickCall::largest, x, n, &number)) return false;
      break;
    case QuickCall::find: hits(array, result); return true;
    default: result->setLogical(truth(function, x, n)); return true;
  }
  result->setNumber(number);
  return true;
}

bool reduceLogicals(QuickCall function, const LogicalArray& array, Storable* result) {
  const bool* x = array.data();
  const int64_t n = array.numElements();
  switch (function) {
    case QuickCall::sum: result->setNumber(sum(x, n)); return true;
    case QuickCall::all: case QuickCall::any: result->setLogical(truth(function, x, n)); return true;
    case QuickCall::find: hits(array, result); return true;
    default: return false;
  }
}

template <class T>
Storable reversed(const TypedArray<T>& array) {
  auto result = TypedArray<T>::uninitialized(array.size());
  std::reverse_copy(array.data(), array.data() + array.numElements(), result.writable());
  return result;
}

template <class F>
bool ofAsciiCharacters(const Storable& x, Storable* result, F&& of) {
  const CharArray* text = charactersOf(x);
  if (!text || text->isEmpty() || !isAscii(*text)) return false;
  auto made = TypedArray<std::invoke_result_t<F, uint32_t>>::uninitialized(text->size());
  std::transform(text->data(), text->data() + text->numElements(), made.writable(),
                 [&](Character c) { return of(c.word()); });
  *result = std::move(made);
  return true;
}

}  // namespace

bool isAscii(const CharArray& text) {
  uint32_t all = 0;
  for (const Character c : text.values()) all |= c.word();
  return all < 0x80;
}

bool quickReduction(QuickCall function, const Storable& x, Storable* result) {
  const NumericArray* array = x.numeric();
  if (!array || !isSmallVector(array->size())) return false;
  if (array->is(Kind::Double)) return reduceDoubles(function, array->asDouble(), result);
  return array->is(Kind::Logical) && reduceLogicals(function, array->asLogical(), result);
}

bool quickReversal(QuickCall function, const Storable& x, Storable* result) {
  const NumericArray* array = x.numeric();
  if (!array || array->isScalar() || !isSmallVector(array->size())) return false;
  if (function == QuickCall::flipRow && !array->size().isRow()) return false;
  if (function == QuickCall::flipColumn && !array->size().isColumn()) return false;
  *result = array->visit([](const auto& record) { return reversed(record); });
  return true;
}

bool quickCharacters(QuickCall function, const Storable& x, Storable* result) {
  switch (function) {
    case QuickCall::toDouble: return ofAsciiCharacters(x, result, [](uint32_t c) { return static_cast<double>(c); });
    case QuickCall::isletter: return ofAsciiCharacters(x, result, [](uint32_t c) { return (c | 0x20) - U'a' < 26; });
    case QuickCall::isspace:
      return ofAsciiCharacters(x, result, [](uint32_t c) { return c == U' ' || c - U'\t' < 5; });
    default: return false;
  }
}

bool quickText(const Storable& codes, Storable* result) {
  const DoubleArray* array = doublesOf(codes);
  if (!array || !isSmallVector(array->size())) return false;
  const auto isCode = [](double x) { return x >= 0 && x < 0x80; };
  if (!std::all_of(array->data(), array->data() + array->numElements(), isCode)) return false;
  auto text = CharArray::uninitialized(array->size());
  std::transform(array->data(), array->data() + array->numElements(), text.writable(),
                 [](double x) { return Character(static_cast<char32_t>(x)); });
  *result = std::move(text);
  return true;
}

bool quickDot(const Storable& x, const Storable& y, Storable* result) {
  constexpr int64_t kFew = 8;  // from which on several sums run side by side
  const DoubleArray *a = doublesOf(x), *b = doublesOf(y);
  if (!a || !b || !isSmallVector(a->size()) || a->size() != b->size() || a->numElements() >= kFew) return false;
  double sum = 0;
  for (int64_t k = 0; k < a->numElements(); ++k) sum = sum + (*a)[k] * (*b)[k];
  result->setNumber(sum);
  return true;
}

}  // namespace kelo
