// Sorting slice by slice.
//
// Each kind of element has unsigned keys in its order; the keys are sorted, alone or with
// positions, and turned back into values. Descending order is the order of the inverted keys, so
// that it is stable as well. Complex numbers have two keys: they are sorted by the first, then the
// groups that agree in it by the second. A dimension that does not run along memory is brought to
// the front first and put back afterwards.
#include "builtins/arrays/sort_array.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "builtins/arrays/radix_sort.h"
#include "builtins/slices.h"
#include "messages/fatal_fault.h"
#include "values/element_view.h"
#include "values/memory.h"

namespace kelo::builtins {
namespace {

/// Memory for a computation, not initialised, from the store of array blocks.
template <class T>
class Scratch {
 public:
  explicit Scratch(int64_t count) : block_(allocateBlock(checkedMultiply(count, sizeof(T)) + 64, &capacity_)) {}
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { freeBlock(block_, capacity_); }
  T* data() { return static_cast<T*>(block_); }

 private:
  int64_t capacity_ = 0;
  void* block_;
};

// ---- Keys

constexpr uint64_t kTopBit = uint64_t{1} << 63;

bool isMissing(double x) { return x != x; }
bool isMissing(ComplexDouble z) { return z.hasNaN(); }
template <class T> bool isMissing(T) { return false; }

struct DoubleByValue {
  using Element = double;
  static uint64_t key(double x) {
    const auto bits = std::bit_cast<uint64_t>(x + 0.0);  // -0 + 0 is 0
    return bits ^ ((0 - (bits >> 63)) | kTopBit);
  }
  static double value(uint64_t key) { return std::bit_cast<double>(key ^ (((key >> 63) - 1) | kTopBit)); }
};

// The angle of a positive number is 0, that of a negative one pi.
struct DoubleByMagnitude {
  using Element = double;
  static uint64_t key(double x) { return std::rotl(std::bit_cast<uint64_t>(x + 0.0), 1); }
  static double value(uint64_t key) { return std::bit_cast<double>(std::rotr(key, 1)); }
};

struct IntByValue {
  using Element = int64_t;
  static uint64_t key(int64_t n) { return static_cast<uint64_t>(n) ^ kTopBit; }
  static int64_t value(uint64_t key) { return static_cast<int64_t>(key ^ kTopBit); }
};

struct IntByMagnitude {
  using Element = int64_t;
  static uint64_t key(int64_t n) {
    return n < 0 ? ((0 - static_cast<uint64_t>(n)) << 1) | 1 : static_cast<uint64_t>(n) << 1;
  }
  static int64_t value(uint64_t key) {
    const auto magnitude = static_cast<int64_t>(key >> 1);
    return (key & 1) != 0 ? -magnitude : magnitude;
  }
};

struct LogicalByValue {
  using Element = bool;
  static uint64_t key(bool b) { return b; }
  static bool value(uint64_t key) { return key != 0; }
};

struct CharacterByCode {  // clusters stand after their first code point
  using Element = Character;
  static uint64_t key(Character c) { return uint64_t{c.firstCodePoint()} << 32 | c.word(); }
  static Character value(uint64_t key) { return Character(static_cast<char32_t>(key & 0xFFFFFFFF)); }
};

struct ComplexByValue {
  using Element = ComplexDouble;
  static uint64_t key(ComplexDouble z) { return DoubleByValue::key(z.real); }
  static uint64_t secondKey(ComplexDouble z) { return DoubleByValue::key(z.imaginary); }
};

struct ComplexByMagnitude {
  using Element = ComplexDouble;
  static uint64_t key(ComplexDouble z) { return DoubleByValue::key(z.magnitude()); }
  static uint64_t secondKey(ComplexDouble z) { return DoubleByValue::key(std::atan2(z.imaginary, z.real)); }
};

// ---- Slices

template <class Keys>
class SliceSorter {
  using T = typename Keys::Element;
  using Missing = SortOrder::MissingPlacement;
  static constexpr bool kTwoKeys = std::is_same_v<T, ComplexDouble>;
  static constexpr bool kZerosOfTwoSigns = std::is_same_v<T, double>;

 public:
  SliceSorter(const SortOrder& order, int64_t length, bool withPositions)
      : flip_(order.isDescending() ? ~uint64_t{0} : 0),
        missingFirst_(order.missingPlacement == Missing::auto_ ? order.isDescending()
                                                               : order.missingPlacement == Missing::first),
        length_(length),
        keys_(usesPairs(withPositions) ? 0 : 2 * length),
        pairs_(usesPairs(withPositions) ? 2 * length : 0) {}

  void sortValues(const T* in, T* out) {
    if constexpr (kTwoKeys) {
      sortPairs(in, out, nullptr);
    } else {
      uint64_t* keys = keys_.data();
      int64_t count = 0;
      for (int64_t i = 0; i < length_; ++i) {
        keys[count] = Keys::key(in[i]) ^ flip_;
        count += !isMissing(in[i]);
      }
      radixSort(keys, keys + length_, count);
      T* present = placeMissing(in, out, nullptr, count);
      for (int64_t i = 0; i < count; ++i) present[i] = Keys::value(keys[i] ^ flip_);
      if constexpr (kZerosOfTwoSigns) restoreZeros(in, present, count);
    }
  }

  void sortPairs(const T* in, T* out, double* positions) {
    KeyAndPosition* pairs = pairs_.data();
    int64_t count = 0;
    for (int64_t i = 0; i < length_; ++i) {
      pairs[count] = {Keys::key(in[i]) ^ flip_, i};
      count += !isMissing(in[i]);
    }
    radixSort(pairs, pairs + length_, count);
    if constexpr (kTwoKeys) sortTies(in, pairs, count);
    T* present = placeMissing(in, out, positions, count);
    for (int64_t i = 0; i < count; ++i) present[i] = valueOf(in, pairs[i]);
    if (positions == nullptr) return;
    double* numbers = positions + (present - out);
    for (int64_t i = 0; i < count; ++i) numbers[i] = static_cast<double>(pairs[i].position + 1);
  }

 private:
  static bool usesPairs(bool withPositions) { return withPositions || kTwoKeys; }

  T valueOf(const T* in, const KeyAndPosition& pair) const {
    if constexpr (kTwoKeys) return in[pair.position];
    else if (kZerosOfTwoSigns && pair.key == (Keys::key(T{}) ^ flip_)) return in[pair.position];
    else return Keys::value(pair.key ^ flip_);
  }

  /// Writes the missing elements to their end of the slice and gives the place of the others.
  T* placeMissing(const T* in, T* out, double* positions, int64_t present) const {
    const int64_t missing = length_ - present;
    if (missing == 0) return out;
    int64_t place = missingFirst_ ? 0 : present;
    for (int64_t i = 0; i < length_; ++i) {
      if (!isMissing(in[i])) continue;
      if (positions != nullptr) positions[place] = static_cast<double>(i + 1);
      out[place++] = in[i];
    }
    return missingFirst_ ? out + missing : out;
  }

  void sortTies(const T* in, KeyAndPosition* pairs, int64_t count) const {
    for (int64_t first = 0; first < count;) {
      int64_t end = first + 1;
      while (end < count && pairs[end].key == pairs[first].key) ++end;
      if (end - first > 1) {
        for (int64_t i = first; i < end; ++i) pairs[i].key = Keys::secondKey(in[pairs[i].position]) ^ flip_;
        radixSort(pairs + first, pairs + length_, end - first);
      }
      first = end;
    }
  }

  // Keys do not tell -0 from 0: the zeros stand together, and get their signs back in the order of
  // the slice.
  void restoreZeros(const T* in, T* sorted, int64_t count) const {
    const auto isNegativeZero = [](T x) { return std::bit_cast<uint64_t>(x) == kTopBit; };
    if (std::none_of(in, in + length_, isNegativeZero)) return;
    T* zero = std::find(sorted, sorted + count, T{});
    for (int64_t i = 0; i < length_; ++i) {
      if (in[i] == 0) *zero++ = in[i];
    }
  }

  uint64_t flip_;
  bool missingFirst_;
  int64_t length_;
  Scratch<uint64_t> keys_;
  Scratch<KeyAndPosition> pairs_;
};

// ---- Dimensions

/// The elements with those of each slice side by side, and the way back.
std::vector<ViewAxis> toFront(const Slices& s) {
  return {{s.length, s.inner}, {s.inner, 1}, {s.outer, s.inner * s.length}};
}
std::vector<ViewAxis> toPlace(const Slices& s) {
  return {{s.inner, s.length}, {s.length, 1}, {s.outer, s.inner * s.length}};
}

template <class T>
void putBack(TypedArray<T>& array, const Slices& slices) {
  auto result = TypedArray<T>::uninitialized(array.size());
  copyView(result.writable(), array.data(), toPlace(slices));
  array = std::move(result);
}

template <class Keys, class T = typename Keys::Element>
SortedArray sortedBy(TypedArray<T> array, const Slices& slices, const SortOrder& order, bool withPositions) {
  const SizeVector size = array.size();
  if (slices.inner > 1) {
    auto front = TypedArray<T>::uninitialized(size);
    copyView(front.writable(), array.data(), toFront(slices));
    array = std::move(front);
  }
  auto values = TypedArray<T>::uninitialized(size);
  auto positions = withPositions ? DoubleArray::uninitialized(size) : DoubleArray();
  const T* in = array.data();
  T* out = values.writable();
  double* numbers = withPositions ? positions.writable() : nullptr;
  SliceSorter<Keys> sorter(order, slices.length, withPositions);
  for (int64_t first = 0; first < size.numElements(); first += slices.length) {
    if (withPositions) sorter.sortPairs(in + first, out + first, numbers + first);
    else sorter.sortValues(in + first, out + first);
  }
  if (slices.inner > 1) {
    putBack(values, slices);
    if (withPositions) putBack(positions, slices);
  }
  return {std::move(values), std::move(positions)};
}

}  // namespace

SortedArray sortedAlong(const NumericArray& array, int64_t dimension, const SortOrder& order, bool withPositions) {
  const SizeVector& size = array.size();
  if (size.hasZeroLength() || size.dimensionLength(dimension) == 1) {
    return {array, withPositions ? DoubleArray(size, 1.0) : DoubleArray()};
  }
  const Slices slices(size, dimension);
  using Method = SortOrder::ComparisonMethod;
  const bool byMagnitude = order.comparisonMethod == Method::abs ||
                           (order.comparisonMethod == Method::auto_ && !array.has(Property::allReals));
  switch (array.kind()) {
    case Kind::Int:
      return byMagnitude ? sortedBy<IntByMagnitude>(array.asInt(), slices, order, withPositions)
                         : sortedBy<IntByValue>(array.asInt(), slices, order, withPositions);
    case Kind::Logical: return sortedBy<LogicalByValue>(array.asLogical(), slices, order, withPositions);
    case Kind::Char: return sortedBy<CharacterByCode>(array.asChar(), slices, order, withPositions);
    case Kind::Complex:
      return byMagnitude ? sortedBy<ComplexByMagnitude>(array.asComplex(), slices, order, withPositions)
                         : sortedBy<ComplexByValue>(array.asComplex(), slices, order, withPositions);
    case Kind::Double: break;
  }
  return byMagnitude ? sortedBy<DoubleByMagnitude>(array.asDouble(), slices, order, withPositions)
                     : sortedBy<DoubleByValue>(array.asDouble(), slices, order, withPositions);
}

}  // namespace kelo::builtins
