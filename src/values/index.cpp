// Checks subscripts and finds their cheapest form. The test of a whole number and the search for
// the greatest position are one pass; an array of even steps is found by a pass of its own, which
// gives up where they are not.
#include "values/index.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "messages/catalogue/indexing.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "platform/vector_clones.h"
#include "values/storable.h"

namespace kelo {
namespace {

int64_t positionOf(double subscript) {
  if (!(subscript >= 1) || std::isinf(subscript)) throw problem(text::kIndexNotPositiveWhole);
  const int64_t whole = checkedCast(subscript);
  if (static_cast<double>(whole) != subscript) throw problem(text::kIndexNotPositiveWhole);
  return whole - 1;
}

int64_t positionOf(int64_t subscript) {
  if (subscript < 1) throw problem(text::kIndexNotPositiveWhole);
  return subscript - 1;
}

template <class T>
inline bool areEvenInBlocks(const T* subscripts, T step, int64_t n) {
  constexpr int64_t kBlock = 256;
  for (int64_t begin = 1; begin < n; begin += kBlock) {
    const int64_t end = std::min(n, begin + kBlock);
    int64_t gaps = 0;  // as wide as an element, so that the loop vectorises
    for (int64_t k = begin; k < end; ++k) gaps |= static_cast<int64_t>(subscripts[k] != subscripts[k - 1] + step);
    if (gaps != 0) return false;
  }
  return n > 0;
}

KELO_VECTOR_CLONES bool areEven(const double* subscripts, double step, int64_t n) {
  return areEvenInBlocks(subscripts, step, n);
}
// Without overflow, whatever the numbers are.
KELO_VECTOR_CLONES bool areEven(const uint64_t* subscripts, uint64_t step, int64_t n) {
  return areEvenInBlocks(subscripts, step, n);
}

// Numbers below it are exact together with their sums and differences.
constexpr double kExact = 4503599627370496.0;  // 2^52

template <class T>
IntArray positionsOf(const TypedArray<T>& subscripts) {
  IntArray positions = IntArray::uninitialized(subscripts.size());
  int64_t* out = positions.writable();
  for (const T subscript : subscripts.values()) *out++ = positionOf(subscript);
  return positions;
}

/// out[k] = subscripts[k] - 1. False where a subscript is not a whole number from 1 to 2^52 - 1;
/// the rest is then unspecified. *needed receives the greatest subscript.
///
/// OPTIMIZATION: below 2^52, adding 2^52 leaves the whole part of a number in the low bits of the
/// sum, and beyond, for negatives and for NaN the bits are out of that range. So tests and
/// conversion are one loop without branches.
KELO_VECTOR_CLONES
bool convertPlainly(const double* subscripts, int64_t n, int64_t* out, int64_t* needed) {
  constexpr double kShift = 0x1p52;
  constexpr auto kZero = std::bit_cast<uint64_t>(kShift);
  uint64_t fractions = 0;
  int64_t signs = 0;
  int64_t greatest = -1;
  for (int64_t k = 0; k < n; ++k) {
    const double shifted = subscripts[k] + kShift;
    const auto position = static_cast<int64_t>(std::bit_cast<uint64_t>(shifted) - kZero - 1);
    fractions |= std::bit_cast<uint64_t>(shifted - kShift) ^ std::bit_cast<uint64_t>(subscripts[k]);
    signs |= position;
    greatest = position > greatest ? position : greatest;
    out[k] = position;
  }
  *needed = greatest + 1;
  return fractions == 0 && signs >= 0 && greatest < (int64_t{1} << 52) - 1;
}

DoubleArray realPartsOf(const ComplexDoubleArray& subscripts) {
  DoubleArray parts = DoubleArray::uninitialized(subscripts.size());
  double* out = parts.writable();
  for (const ComplexDouble z : subscripts.values()) {
    if (z.imaginary != 0) throw problem(text::kIndexNotPositiveWhole);  // also for a NaN
    *out++ = z.real;
  }
  return parts;
}

}  // namespace

Index Index::colon(int64_t extent) {
  Index index(0, extent, extent == 0 ? SizeVector() : SizeVector(1, extent));
  index.isColon_ = true;
  return index;
}

Index Index::list(IntArray positions) {
  const auto values = positions.values();
  const int64_t needed = values.empty() ? 0 : *std::max_element(values.begin(), values.end()) + 1;
  return list(std::move(positions), needed);
}

Index Index::list(IntArray positions, int64_t needed) {
  Index index(0, positions.numElements(), positions.size());
  index.needed_ = needed;
  index.elements_ = std::move(positions);
  index.form_ = Form::list;
  return index;
}

Index Index::steps(int64_t first, int64_t step, int64_t count, SizeVector shape) {
  Index index(first, count, std::move(shape));
  index.step_ = step;
  index.needed_ = std::max(first, first + step * (count - 1)) + 1;
  if (step != 1) index.form_ = Form::steps;
  return index;
}

Index Index::even(const EvenPositions& positions) {
  return steps(positions.first, positions.step, positions.count, SizeVector(1, positions.count));
}

// Even steps from a first subscript; absent where one of them is no whole number from 1 on.
std::optional<Index> Index::evenlyFrom(double first, double step, const SizeVector& shape) {
  const int64_t count = shape.numElements();
  const double last = first + step * static_cast<double>(count - 1);
  const auto isSubscript = [](double x) { return x >= 1 && x < kExact && x == std::floor(x); };
  if (!isSubscript(first) || !isSubscript(last) || step != std::floor(step)) return std::nullopt;
  return steps(static_cast<int64_t>(first) - 1, static_cast<int64_t>(step), count, shape);
}

Index Index::fromDoubles(const DoubleArray& subscripts) {
  const double* values = subscripts.data();
  const int64_t count = subscripts.numElements();
  if (count > 0) {
    const double step = count > 1 ? values[1] - values[0] : 1;
    if (areEven(values, step, count)) {
      if (auto index = evenlyFrom(values[0], step, subscripts.size())) return std::move(*index);
    }
  }
  IntArray positions = IntArray::uninitialized(subscripts.size());
  int64_t needed;
  if (convertPlainly(values, count, positions.writable(), &needed)) return list(std::move(positions), needed);
  return list(positionsOf(subscripts));
}

Index Index::fromIntegers(const IntArray& subscripts) {
  const auto values = subscripts.values();
  const auto* words = reinterpret_cast<const uint64_t*>(subscripts.data());
  if (!values.empty() && values.front() >= 1 && areEven(words, 1, subscripts.numElements())) {
    return Index(values.front() - 1, subscripts.numElements(), subscripts.size());
  }
  return list(positionsOf(subscripts));
}

Index Index::fromMask(const LogicalArray& mask) {
  const auto values = mask.values();
  const int64_t count = std::count(values.begin(), values.end(), true);
  Index index(0, count, mask.size().isRow() ? SizeVector(1, count) : SizeVector(count, 1));
  const auto last = std::find(values.rbegin(), values.rend(), true);
  index.needed_ = values.rend() - last;
  index.elements_ = mask;
  index.form_ = Form::mask;
  return index;
}

Index Index::from(const Storable& subscript) {
  const NumericArray* array = subscript.numeric();
  if (array == nullptr) throw problem(text::kIndexNotNumeric);
  switch (array->kind()) {
    case Kind::Int: return fromIntegers(array->asInt());
    case Kind::Logical: return fromMask(array->asLogical());
    case Kind::Complex: return fromDoubles(realPartsOf(array->asComplex()));
    case Kind::Char: return fromDoubles(array->toDoubleArray());
    case Kind::Double: break;
  }
  return fromDoubles(array->asDouble());
}

const int64_t* Index::positions() const {
  if (form_ == Form::range) return nullptr;
  if (form_ == Form::steps) {
    IntArray made = IntArray::uninitialized(shape_);
    int64_t* out = made.writable();
    for (int64_t k = 0; k < count_; ++k) out[k] = first_ + k * step_;
    elements_ = std::move(made);
    form_ = Form::list;
  }
  if (form_ == Form::mask) {
    const LogicalArray mask = elements_.asLogical();
    IntArray found = IntArray::uninitialized(shape_);
    int64_t* out = found.writable();
    const bool* selected = mask.data();
    for (int64_t k = 0, n = 0; n < count_; ++k) {
      out[n] = k;
      n += selected[k];
    }
    elements_ = std::move(found);
    form_ = Form::list;
  }
  return elements_.asInt().data();
}

}  // namespace kelo
