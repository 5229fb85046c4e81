// Writes elements. All that can fail comes first: kinds, sizes and growth are settled before the
// variable is touched, so that a failed write leaves it as it was. Then the array is made larger if
// need be, in place where the old elements keep their positions and nobody else holds them, and the
// value is written run by run.
#include <algorithm>
#include <array>
#include <bit>

#include "messages/catalogue/indexing.h"
#include "messages/message.h"
#include "platform/parallel.h"
#include "values/growth.h"
#include "values/index_walk.h"
#include "values/indexing.h"
#include "values/operators.h"

namespace kelo {
namespace {

// The agreement of the value's size with what is selected.

void checkSubscripts(std::span<const Index> indices, const SizeVector& value) {
  int64_t several = 0;
  int64_t needed = 1;
  for (const Index& index : indices) {
    several += index.count() != 1;
    needed = checkedMultiply(needed, index.count());
  }
  if (several == 0) throw problem(text::kScalarExpected);
  if (several == 1 && (value.isVector() || value.numElements() != needed)) {
    if (value.numElements() == needed) return;
    throw problem(text::vectorOfElementsExpected(needed));
  }
  for (size_t k = 0; k < indices.size(); ++k) {
    const auto dimension = static_cast<int64_t>(k) + 1;
    const bool matters = indices[k].count() != 1 || value.numElements() != needed;
    if (matters && indices[k].count() != value.dimensionLength(dimension)) {
      throw problem(text::subscriptLengthExpected(dimension));
    }
  }
  if (value.numElements() != needed) throw problem(text::kArraySizesMismatch);
}

void checkSizes(std::span<const Index> indices, const Storable& value) {
  if (value.size().isScalar()) return;
  if (indices.size() > 1) return checkSubscripts(indices, value.size());
  if (indices.front().count() == value.numElements()) return;
  throw problem(text::kArraySizesMismatch,
                value.isNumeric() ? text::kSameCountExpected : text::kSameCountExpectedOfStructures);
}

// Numeric arrays.

template <class T>
constexpr T kFill{};
template <>
constexpr Character kFill<Character>{U' '};

template <class T>
void writeEvenly(T* __restrict to, int64_t stride, const T* __restrict from, int64_t n) {
  if (stride == 1) {
    std::copy_n(from, n, to);
  } else {
    for (int64_t k = 0; k < n; ++k) to[k * stride] = from[k];
  }
}

// The same position may be meant more than once: the last value stays.
// REQUIRES: the value does not lie in the array
template <class T>
void writeRun(T* __restrict to, const IndexAxis& run, const T* __restrict from) {
  const int64_t n = run.count, stride = run.stride;
  if (run.list != nullptr) {
    const int64_t* __restrict list = run.list;
    // OPTIMIZATION: writes leave the processor in their order, so each would wait for its line.
    constexpr int64_t kAhead = 24;
    int64_t k = 0;
    for (; k + kAhead < n; ++k) {
      __builtin_prefetch(to + list[k + kAhead] * stride, /*write*/ 1);
      to[list[k] * stride] = from[k];
    }
    for (; k < n; ++k) to[list[k] * stride] = from[k];
    return;
  }
  to += run.first * stride;
  if (stride == 0) return writeEvenly(to, stride, from, n);
  platform::parallelFor(n, [=](int64_t begin, int64_t end) {
    writeEvenly(to + begin * stride, stride, from + begin, end - begin);
  });
}

template <class T>
TypedArray<T> spreadOut(const TypedArray<T>& array, const SizeVector& size) {
  TypedArray<T> result(size, kFill<T>);
  const IndexWalk walk(size, array.size());
  T* to = result.writable();
  walk.forEachRun([&](int64_t start, int64_t done) { writeRun(to + start, walk.run(), array.data() + done); });
  return result;
}

template <class T>
void grow(TypedArray<T>& array, const SizeVector& size) {
  if (!keepsPositions(array.size(), size)) {
    array = spreadOut(array, size);
    return;
  }
  const int64_t before = array.numElements();
  array.resizeVector(size);
  std::fill_n(array.writable() + before, array.numElements() - before, kFill<T>);
}

template <class T>
void fillEvenly(T* __restrict to, int64_t stride, T value, int64_t n) {
  if (stride == 1) {
    std::fill_n(to, n, value);
  } else {
    for (int64_t k = 0; k < n; ++k) to[k * stride] = value;
  }
}

template <class T>
void fillRun(T* __restrict to, const IndexAxis& run, T value) {
  const int64_t n = run.count, stride = run.stride;
  if (run.list != nullptr) {
    const int64_t* __restrict list = run.list;
    for (int64_t k = 0; k < n; ++k) to[list[k] * stride] = value;
    return;
  }
  to += run.first * stride;
  if (stride == 0) return fillEvenly(to, stride, value, n);
  platform::parallelFor(n, [=](int64_t begin, int64_t end) {
    fillEvenly(to + begin * stride, stride, value, end - begin);
  });
}

// OPTIMIZATION: the choice between old and new is made on the bits, without a branch that a random
// mask would mispredict.
template <class T>
void fillMask(T* to, const Index& index, T value) {
  using Word = std::conditional_t<sizeof(T) % 8 == 0, uint64_t, std::conditional_t<sizeof(T) == 4, uint32_t, uint8_t>>;
  using Words = std::array<Word, sizeof(T) / sizeof(Word)>;
  const bool* selected = index.mask().data();
  const auto given = std::bit_cast<Words>(value);
  for (int64_t k = 0; k < index.needed(); ++k) {
    const auto chosen = static_cast<Word>(-static_cast<Word>(selected[k]));
    auto words = std::bit_cast<Words>(to[k]);
    for (size_t w = 0; w < words.size(); ++w) {
      words[w] = static_cast<Word>((given[w] & chosen) | (words[w] & static_cast<Word>(~chosen)));
    }
    to[k] = std::bit_cast<T>(words);
  }
}

// REQUIRES: the sizes agree. The value is held by the caller beside the array, so that A(I) = A
// reads the old elements.
template <class T>
void writeRecord(TypedArray<T>& array, std::span<const Index> indices, const TypedArray<T>& value) {
  const SizeVector size = grownSize(array.size(), indices);
  const Index& first = indices.front();
  if (indices.size() == 1 && first.form() == Index::Form::mask && value.isScalar()) {
    if (!(size == array.size())) grow(array, size);
    return fillMask(array.writable(), first, value.scalar());
  }
  const IndexWalk walk(indexExtents(size, static_cast<int64_t>(indices.size())), indices);
  if (!(size == array.size())) grow(array, size);
  T* to = array.writable();
  const auto inOrder = [&](auto&& write) {
    if (walk.run().count < platform::kParallelThreshold && walk.isPlainlyOneToOne())
      walk.forEachRunSideBySide(write);
    else
      walk.forEachRun(write);
  };
  if (value.isScalar()) {
    inOrder([&](int64_t start, int64_t) { fillRun(to + start, walk.run(), value.scalar()); });
  } else {
    inOrder([&](int64_t start, int64_t done) { writeRun(to + start, walk.run(), value.data() + done); });
  }
}

void writeSameKind(NumericArray& array, std::span<const Index> indices, const NumericArray& value) {
  switch (array.kind()) {
    case Kind::Double: return writeRecord(array.as<double>(), indices, value.asDouble());
    case Kind::Int: return writeRecord(array.as<int64_t>(), indices, value.asInt());
    case Kind::Logical: return writeRecord(array.as<bool>(), indices, value.asLogical());
    case Kind::Complex: return writeRecord(array.as<ComplexDouble>(), indices, value.asComplex());
    case Kind::Char: return writeRecord(array.as<Character>(), indices, value.asChar());
  }
}

// A character may become several numbers, so the count is looked at again behind the conversion.
NumericArray converted(const NumericArray& value, Kind kind) {
  NumericArray result = value.toKind(kind);
  if (result.numElements() != value.numElements()) throw problem(text::kSameLengthsExpected);
  return result;
}

void writeNumbers(NumericArray& array, std::span<const Index> indices, const NumericArray& given) {
  const Kind kind = commonKind(array, given);
  const NumericArray value = given.is(kind) ? given : converted(given, kind);
  if (array.is(kind)) return writeSameKind(array, indices, value);
  NumericArray result = array.toKind(kind);
  writeSameKind(result, indices, value);
  array = std::move(result);
}

// Structure arrays.

void writeStructures(StructArray& array, std::span<const Index> indices, const StructArray& given) {
  if (!array.isEmpty() && !array.hasSameFields(given)) throw problem(text::kSameFieldsExpected);
  const StructArray value = given;
  const SizeVector size = grownSize(array.size(), indices);
  const IndexWalk walk(indexExtents(size, static_cast<int64_t>(indices.size())), indices);
  if (!(size == array.size())) grow(array, size, value.fields());
  const int64_t step = value.size().isScalar() ? 0 : 1;
  walk.forEachRun([&](int64_t start, int64_t done) {
    for (int64_t k = 0; k < walk.run().count; ++k) array.setElement(start + walk.run().at(k), value, step * (done + k));
  });
}

}  // namespace

bool appendScalar(NumericArray& a, double value) {
  if (!a.is(Kind::Double) || !a.isUnshared() || a.isScalar() || a.isEmpty() || !a.size().isVector()) return false;
  DoubleArray& vector = a.as<double>();
  const int64_t count = vector.numElements();
  vector.resizeVector(vector.size().isRow() ? SizeVector(1, count + 1) : SizeVector(count + 1, 1));
  vector.writable()[count] = value;
  return true;
}

void writeElements(Storable& target, std::span<const Index> indices, const Storable& value) {
  if (!value.isArray()) throw problem(text::kAssignedNotArray);
  if (!target.isArray()) throw problem(text::kAssignmentTargetNotArray);
  if (target.isNumeric() != value.isNumeric()) {
    throw problem(text::kDataTypesMismatch, text::kDataTypesMismatchExpected);
  }
  if (indices.empty()) throw problem(text::kNoIndex);
  checkSizes(indices, value);
  if (target.isNumeric()) {
    writeNumbers(*target.numeric(), indices, *value.numeric());
  } else {
    writeStructures(*target.structure(), indices, *value.structure());
  }
}

}  // namespace kelo
