#include "interpreter/native/words.h"

#include <algorithm>
#include <cstring>

#include "values/indexing.h"
#include "values/operators.h"

namespace kelo::native {
namespace {

template <class T>
Storable arrayOf(const Word* array) {
  auto made = TypedArray<T>::uninitialized(SizeVector(array[2].whole, array[3].whole));
  std::memcpy(static_cast<void*>(made.writable()), array[0].data, static_cast<size_t>(array[1].whole) * sizeof(T));
  return made;
}

Storable arrayOf(Kind element, const Word* array) {
  switch (element) {
    case Kind::Int: return arrayOf<int64_t>(array);
    case Kind::Logical: return arrayOf<bool>(array);
    case Kind::Complex: return arrayOf<ComplexDouble>(array);
    case Kind::Char: return arrayOf<Character>(array);
    case Kind::Double: break;
  }
  return arrayOf<double>(array);
}

// Null where there is no room.
Word* allocate(Word* header, int64_t rows, int64_t columns, int64_t count, int64_t bytes) {
  auto* words = static_cast<Word*>(const_cast<void*>(header[Layout::kMemory / 8].data));
  const auto* end = static_cast<const std::byte*>(header[Layout::kMemoryEnd / 8].data);
  auto* elements = reinterpret_cast<std::byte*>(words + Layout::kWords);
  if (count > (end - elements) / bytes - 8) return nullptr;
  header[Layout::kMemory / 8].data = elements + (count * bytes + 15) / 16 * 16;
  words[0].data = elements;
  words[1].whole = count;
  words[2].whole = rows;
  words[3].whole = columns;
  return words;
}

}  // namespace

void pass(const Storable& value, const Type& type, Word* words) {
  switch (type.held) {
    case Held::real: words->number = value.doubleScalar(); return;
    case Held::logical: words->whole = value.numeric()->asLogical().scalar(); return;
    case Held::character: words->whole = value.numeric()->asChar().scalar().word(); return;
    case Held::integer: words->whole = value.numeric()->asInt().scalar(); return;
    case Held::complex:
      words[0].number = value.numeric()->asComplex().scalar().real;
      words[1].number = value.numeric()->asComplex().scalar().imaginary;
      return;
    default: describe(*value.numeric(), words);
  }
}

void take(const Type& type, const Word* words, Storable* to) {
  switch (type.held) {
    case Held::real: return to->setNumber(words->number);
    case Held::logical: return to->setLogical(words->whole != 0);
    case Held::integer: *to = IntArray(words->whole); return;
    case Held::character: *to = CharArray(Character(static_cast<char32_t>(words->whole))); return;
    case Held::complex: *to = ComplexDoubleArray(ComplexDouble{words[0].number, words[1].number}); return;
    case Held::array: *to = arrayOf(type.element, static_cast<const Word*>(words->data)); return;
    default: return;
  }
}

double rangeCount(double first, double step, double last) noexcept {
  try {
    const NumericArray stride(step);
    return static_cast<double>(rangeOf(NumericArray(first), &stride, NumericArray(last)).count);
  } catch (...) {
    return -1;
  }
}

int64_t appendToVector(Storable* variable, Word* words, double value) noexcept {
  try {
    if (!appendScalar(*variable->numeric(), value)) return 0;
    describe(*variable->numeric(), words);
    return 1;
  } catch (...) {
    return 0;
  }
}

int64_t appendToRow(Storable* variable, Word* words, double value) noexcept {
  return variable->numeric()->size().isRow() ? appendToVector(variable, words, value) : 0;
}

Word* copyArray(Word* header, const Word* array, int64_t bytes) noexcept {
  Word* const made = allocate(header, array[2].whole, array[3].whole, array[1].whole, bytes);
  if (made) std::memcpy(const_cast<void*>(made[0].data), array[0].data, static_cast<size_t>(array[1].whole * bytes));
  return made;
}

// A single element would be a scalar.
Word* makeArray(Word* header, double rows, double columns, double value) noexcept {
  constexpr double kMost = 1 << 16;
  if (!(rows >= 0 && columns >= 0 && rows <= kMost && columns <= kMost) || rows * columns == 1) return nullptr;
  const auto m = static_cast<int64_t>(rows), n = static_cast<int64_t>(columns);
  if (static_cast<double>(m) != rows || static_cast<double>(n) != columns) return nullptr;
  Word* const made = allocate(header, m, n, m * n, 8);
  if (made) std::fill_n(static_cast<double*>(const_cast<void*>(made[0].data)), m * n, value);
  return made;
}

}  // namespace kelo::native
