// TypedArray<T>: an array of one element kind, in column-major order; the record behind every
// numeric value.
//
// Storage. A 1 x 1 array holds its element inline and never allocates. Any other array is one
// counted block that holds size and elements together. A copy shares the block; writable() makes it
// this array's own first. An array whose block nobody else holds is therefore written in place:
// results of operators reuse the blocks of their temporaries. What was moved from is some scalar:
// it may be read, and says nothing.
//
// A block may also show elements of another block under a size of its own, all of them or those of
// a run: a large array that is reshaped, or of which most is read in one piece, copies nothing
// either. A write to any of them copies first as long as another one holds the elements.
//
// "Empty" means that some length is 0; a default-made array is 0 x 0. Trailing 1s behind ndim are
// dropped from the size when an array is made.
//
// Invariant: numElements() == size().numElements(); the size is 1 x 1 exactly when no block is
// held.
#pragma once

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <new>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include "values/counted.h"
#include "values/size_vector.h"

namespace kelo {

/// A block of elements behind a size. Its own elements are aligned to 16 bytes, those of large
/// blocks to 64.
///
/// Invariant: the elements are the block's own, or they lie in `owner_`, which has its own and is
/// held as long as this block is.
class ArrayBlock : public Counted {
 public:
  /// throws OutOfMemory; FatalFault for a negative size, which is a defect of the caller
  static ArrayBlock* create(SizeVector size, int64_t elementBytes);
  /// A block that shows elements of `source`, from `offset` bytes on.
  static ArrayBlock* createView(ArrayBlock* source, SizeVector size, int64_t offset);
  static void destroy(ArrayBlock* block) noexcept;
  /// The shared block of all 0 x 0 arrays of any kind, retained.
  static ArrayBlock* empty();

  const SizeVector& size() const { return size_; }
  void setSize(SizeVector size) { size_ = std::move(size); }
  void* elements() { return elements_; }
  /// Room from the first element on.
  int64_t elementCapacityBytes() const {
    return reinterpret_cast<const std::byte*>(&owner()) + owner().capacity_ - elements_;
  }
  /// Whether somebody else holds the elements, be it under another size.
  bool isShared() const { return Counted::isShared() || (owner_ && owner_->Counted::isShared()); }
  /// Whether so many bytes are worth showing in place of copying them: they are many, and most of
  /// what would be kept for their sake.
  bool isWorthShowing(int64_t bytes) const;

 private:
  static constexpr int64_t kHeaderBytes = 128;  // elements of large blocks begin at a cache line
  ArrayBlock(SizeVector size, int64_t capacity)
      : Counted(Body::arrayBlock), elements_(reinterpret_cast<std::byte*>(this) + kHeaderBytes),
        size_(std::move(size)), capacity_(capacity) {}
  ~ArrayBlock() {
    if (owner_) owner_->release();
  }
  const ArrayBlock& owner() const { return owner_ ? *owner_ : *this; }

  std::byte* elements_;
  SizeVector size_;
  int64_t capacity_;  // in bytes, with the header
  ArrayBlock* owner_ = nullptr;
};

/// What the typed arrays have in common: the block, or the bytes of the one inline element.
class ArrayCell {
 public:
  ArrayCell() : block_(ArrayBlock::empty()), scalar_{} {}
  ArrayCell(const ArrayCell& other) : block_(other.block_) {
    std::memcpy(scalar_, other.scalar_, sizeof scalar_);
    if (block_) block_->retain();
  }
  ArrayCell(ArrayCell&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {
    std::memcpy(scalar_, other.scalar_, sizeof scalar_);
  }
  ArrayCell& operator=(const ArrayCell& other) {
    if (other.block_) other.block_->retain();
    if (block_) block_->release();
    block_ = other.block_;
    std::memcpy(scalar_, other.scalar_, sizeof scalar_);
    return *this;
  }
  ArrayCell& operator=(ArrayCell&& other) noexcept {
    // First, so that a move to itself changes nothing.
    ArrayBlock* taken = std::exchange(other.block_, nullptr);
    ArrayBlock* old = std::exchange(block_, taken);
    std::memcpy(scalar_, other.scalar_, sizeof scalar_);
    if (old) old->release();
    return *this;
  }
  ~ArrayCell() {
    if (block_) block_->release();
  }

  bool isScalar() const { return block_ == nullptr; }
  const SizeVector& size() const { return block_ ? block_->size() : kScalarSize; }
  int64_t numElements() const { return block_ ? block_->size().numElements() : 1; }
  bool isEmpty() const { return block_ && block_->size().hasZeroLength(); }
  /// Whether a write needs no copy: inline, or a block that nobody else holds.
  bool isUnshared() const { return block_ == nullptr || !block_->isShared(); }
  /// The block itself, for tests of sharing.
  const void* identity() const { return block_; }

 protected:
  explicit ArrayCell(ArrayBlock* block) : block_(block), scalar_{} {}
  /// An inline element. OPTIMIZATION: all 16 bytes are written at once, for they are read at once
  /// when the cell moves, and a read that spans two recent writes waits for both.
  template <class T>
    requires(sizeof(T) <= sizeof(double))
  ArrayCell(std::in_place_t, T element) : block_(nullptr) {
    using Pair = double __attribute__((vector_size(16)));
    double low = 0;
    std::memcpy(&low, &element, sizeof element);
    const Pair pair = {low, 0};
    std::memcpy(scalar_, &pair, sizeof scalar_);
  }
  template <class T>
    requires(sizeof(T) > sizeof(double))
  ArrayCell(std::in_place_t, T element) : block_(nullptr) {
    std::memcpy(scalar_, &element, sizeof element);
  }
  static const SizeVector kScalarSize;

  friend class Storable;
  ArrayBlock* block_;
  alignas(8) std::byte scalar_[16];
};

template <class T>
class TypedArray : public ArrayCell {
  static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= 16);

 public:
  using Element = T;

  /// 0 x 0.
  TypedArray() = default;
  explicit TypedArray(T scalar) : ArrayCell(std::in_place, scalar) {}
  /// `size` filled with one value.
  TypedArray(const SizeVector& size, T fill) : TypedArray(uninitialized(size)) {
    std::fill_n(writable(), numElements(), fill);
  }
  /// `size` with the given elements. throws Problem in the record's own words when the counts
  /// differ
  TypedArray(const SizeVector& size, std::span<const T> elements);
  template <std::same_as<T> U>
    requires(!std::is_same_v<U, bool>)
  TypedArray(const SizeVector& size, const std::vector<U>& elements) : TypedArray(size, std::span<const T>(elements)) {}
  TypedArray(const SizeVector& size, std::initializer_list<T> elements)
      : TypedArray(size, std::span<const T>(elements.begin(), elements.size())) {}

  /// `size` with elements yet to be written.
  static TypedArray uninitialized(const SizeVector& size) {
    TypedArray result(T{});
    if (!size.isScalar()) result.block_ = ArrayBlock::create(size.trimmed(), sizeof(T));
    return result;
  }
  /// A row or a column of the given elements; `row({})` is 1 x 0.
  static TypedArray row(std::span<const T> elements) {
    return TypedArray(SizeVector(1, static_cast<int64_t>(elements.size())), elements);
  }
  static TypedArray column(std::span<const T> elements) {
    return TypedArray(SizeVector(static_cast<int64_t>(elements.size()), 1), elements);
  }

  const T* data() const { return block_ ? static_cast<const T*>(block_->elements()) : inlineElement(); }
  std::span<const T> values() const { return {data(), static_cast<size_t>(numElements())}; }
  const T& operator[](int64_t i) const { return data()[i]; }
  /// REQUIRES: isScalar()
  T scalar() const { return *inlineElement(); }

  /// The elements for writing, this array's own: a shared block is copied first.
  T* writable() {
    if (block_ == nullptr) return std::launder(reinterpret_cast<T*>(scalar_));
    if (block_->isShared()) unshare();
    return static_cast<T*>(block_->elements());
  }

  /// The same elements in another shape; large ones are not copied. REQUIRES: size.numElements() ==
  /// numElements()
  TypedArray reshaped(const SizeVector& size) &&;
  TypedArray reshaped(const SizeVector& size) const& { return TypedArray(*this).reshaped(size); }
  /// The elements from `first` on in this size without a copy; absent where a copy is better.
  /// REQUIRES: they are there
  std::optional<TypedArray> shown(int64_t first, const SizeVector& size) const;

  /// Makes a vector (or an empty array or a scalar) longer or shorter along the dimension that it
  /// extends in, in place where it may, with spare room, so that appending is cheap on average. New
  /// elements are yet to be written.
  /// REQUIRES: newSize has one dimension that is not 1, at the place where this array's is
  void resizeVector(const SizeVector& newSize);
  /// Adds elements behind a row where it lies. False, and nothing is done, where it has no spare
  /// room or somebody else holds it. REQUIRES: it is a row
  bool appendInPlace(const T* more, int64_t count) {
    if (block_ == nullptr || block_->isShared()) return false;
    const int64_t before = numElements(), after = before + count;
    if (after > block_->elementCapacityBytes() / static_cast<int64_t>(sizeof(T))) return false;
    std::copy_n(more, count, static_cast<T*>(block_->elements()) + before);
    block_->setSize(SizeVector(1, after));
    return true;
  }

 private:
  explicit TypedArray(ArrayBlock* block) : ArrayCell(block) {}
  const T* inlineElement() const { return std::launder(reinterpret_cast<const T*>(scalar_)); }
  void unshare() { *this = copyOf(block_->size()); }
  TypedArray copyOf(const SizeVector& size) const {  // REQUIRES: as many elements
    TypedArray copy = uninitialized(size);
    std::memcpy(static_cast<void*>(copy.writable()), data(), static_cast<size_t>(numElements()) * sizeof(T));
    return copy;
  }
};

}  // namespace kelo
