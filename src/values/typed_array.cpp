// Blocks, and the few operations of typed arrays that are not worth inlining.
#include "values/typed_array.h"

#include "messages/catalogue/values.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "values/memory.h"
#include "values/numeric_array.h"
#include "values/refused_size.h"

namespace kelo {

const SizeVector ArrayCell::kScalarSize{1, 1};

ArrayBlock* ArrayBlock::create(SizeVector size, int64_t elementBytes) {
  static_assert(sizeof(ArrayBlock) <= kHeaderBytes && kHeaderBytes % 16 == 0);
  if (size.numElements() < 0) throwFatalFault("negative array size");
  // Also where the bytes pass 64 bits.
  if (size.numElements() > arrayByteLimit() / elementBytes) {
    noteRefusedBytes(static_cast<double>(size.numElements()) * static_cast<double>(elementBytes));
    throw OutOfMemory();
  }
  const int64_t bytes = checkedAdd(size.numElements() * elementBytes, kHeaderBytes);
  int64_t capacity = 0;
  void* memory = allocateBlock(bytes, &capacity);
  return new (memory) ArrayBlock(std::move(size), capacity);
}

ArrayBlock* ArrayBlock::createView(ArrayBlock* source, SizeVector size, int64_t offset) {
  int64_t capacity = 0;
  void* memory = allocateBlock(kHeaderBytes, &capacity);
  auto* view = new (memory) ArrayBlock(std::move(size), capacity);
  view->owner_ = source->owner_ ? source->owner_ : source;
  view->owner_->retain();
  view->elements_ = source->elements_ + offset;
  return view;
}

bool ArrayBlock::isWorthShowing(int64_t bytes) const {
  const auto& hints = platform::memoryHints;
  return bytes > 0 && bytes >= hints.leastShownBytes && bytes >= owner().capacity_ / hints.mostKeptTimes;
}

void ArrayBlock::destroy(ArrayBlock* block) noexcept {
  const int64_t capacity = block->capacity_;
  block->~ArrayBlock();
  freeBlock(block, capacity);
}

ArrayBlock* ArrayBlock::empty() {
  static ArrayBlock* const block = create(SizeVector(0, 0), 1);
  block->retain();
  return block;
}

namespace {

template <class T> constexpr const char* kCountMismatch = text::kCountMismatchDouble;
template <> constexpr const char* kCountMismatch<int64_t> = text::kCountMismatchInt;
template <> constexpr const char* kCountMismatch<bool> = text::kCountMismatchLogical;
template <> constexpr const char* kCountMismatch<ComplexDouble> = text::kCountMismatchComplex;
template <> constexpr const char* kCountMismatch<Character> = text::kCountMismatchChar;

}  // namespace

template <class T>
TypedArray<T>::TypedArray(const SizeVector& size, std::span<const T> elements) : ArrayCell(nullptr) {
  if (size.numElements() != static_cast<int64_t>(elements.size())) throw problem(kCountMismatch<T>);
  *this = uninitialized(size);
  std::copy(elements.begin(), elements.end(), writable());
}

template <class T>
TypedArray<T> TypedArray<T>::reshaped(const SizeVector& size) && {
  if (block_ == nullptr) return std::move(*this);  // one element: 1 x 1 x ... is 1 x 1
  if (block_->isShared()) {
    std::optional<TypedArray> same = shown(0, size);
    return same ? std::move(*same) : copyOf(size);
  }
  block_->setSize(size.trimmed());
  return std::move(*this);
}

template <class T>
std::optional<TypedArray<T>> TypedArray<T>::shown(int64_t first, const SizeVector& size) const {
  const auto bytes = static_cast<int64_t>(sizeof(T));
  if (block_ == nullptr || size.isScalar() || !block_->isWorthShowing(size.numElements() * bytes)) return std::nullopt;
  return TypedArray(ArrayBlock::createView(block_, size.trimmed(), first * bytes));
}

namespace {

// Spare room of half the length, as far as the limit for one array allows.
int64_t lengthWithRoom(int64_t wanted, int64_t elementBytes) {
  constexpr int64_t kHeaderElements = 128;  // at least, of whatever kind
  constexpr int64_t kLeastRoom = 6;
  const int64_t most = arrayByteLimit() / elementBytes - kHeaderElements;
  return wanted < most ? std::min(most, wanted + std::max(wanted / 2, kLeastRoom)) : wanted;
}

}  // namespace

template <class T>
void TypedArray<T>::resizeVector(const SizeVector& newSize) {
  const int64_t wanted = newSize.numElements();
  const bool inPlace = block_ && !block_->isShared() && !newSize.isScalar() &&
                       wanted <= block_->elementCapacityBytes() / static_cast<int64_t>(sizeof(T));
  if (inPlace) {
    block_->setSize(newSize.trimmed());
    return;
  }
  const int64_t kept = std::min(numElements(), wanted);
  const int64_t room = wanted > numElements() ? lengthWithRoom(wanted, sizeof(T)) : wanted;
  TypedArray grown = uninitialized(SizeVector(room, 1));
  if (newSize.isScalar()) grown = TypedArray(T{});
  std::copy_n(data(), kept, grown.writable());
  if (grown.block_) grown.block_->setSize(newSize.trimmed());
  *this = std::move(grown);
}

template class TypedArray<double>;
template class TypedArray<int64_t>;
template class TypedArray<bool>;
template class TypedArray<ComplexDouble>;
template class TypedArray<Character>;

}  // namespace kelo
