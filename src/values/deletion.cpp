// Deletes elements. What is deleted is turned round into what is kept, and that is read as any
// subscript reads. A range of a vector is closed up in place, so that taking elements off the end
// costs nothing.
#include <algorithm>

#include "messages/catalogue/indexing.h"
#include "messages/message.h"
#include "values/indexing.h"

namespace kelo {
namespace {

/// The positions of a dimension that a subscript does not select. REQUIRES: it is within the length
Index complementOf(const Index& index, int64_t length) {
  LogicalArray kept(SizeVector(1, length), true);
  bool* out = kept.writable();
  const int64_t* positions = index.positions();
  for (int64_t k = 0; k < index.count(); ++k) out[positions ? positions[k] : index.first() + k] = false;
  return Index::from(Storable(std::move(kept)));
}

SizeVector lineOf(const SizeVector& size, int64_t count) {
  return size.isColumn() && !size.isRow() ? SizeVector(count, 1) : SizeVector(1, count);
}

template <class T>
void closeUp(TypedArray<T>& vector, const Index& range) {
  const int64_t count = vector.numElements();
  const int64_t behind = range.needed();
  if (behind < count) {
    T* elements = vector.writable();
    std::copy(elements + behind, elements + count, elements + range.first());
  }
  vector.resizeVector(lineOf(vector.size(), count - range.count()));
}

void closeUp(NumericArray& vector, const Index& range) {
  switch (vector.kind()) {
    case Kind::Double: return closeUp(vector.as<double>(), range);
    case Kind::Int: return closeUp(vector.as<int64_t>(), range);
    case Kind::Logical: return closeUp(vector.as<bool>(), range);
    case Kind::Complex: return closeUp(vector.as<ComplexDouble>(), range);
    case Kind::Char: return closeUp(vector.as<Character>(), range);
  }
}

void deleteByOneIndex(Storable& target, const Index& index) {
  const SizeVector& size = target.size();
  if (index.needed() > size.numElements()) throw problem(text::kDeletionExceedsArray);
  if (index.count() == 0) return;
  if (target.isNumeric() && size.isVector() && index.form() == Index::Form::range) {
    return closeUp(*target.numeric(), index);
  }
  // A row of positions, so that a matrix becomes a row.
  const Index kept = complementOf(index, size.numElements());
  target = readElements(target, {&kept, 1});
}

// Which of the subscripts does not select its whole dimension; the first that is no bare colon when
// all do.
size_t partialSubscript(std::span<const Index> indices, const std::vector<Index>& kept) {
  const auto isPartial = [](const Index& rest) { return rest.count() > 0; };
  const auto partial = std::find_if(kept.begin(), kept.end(), isPartial);
  if (partial != kept.end()) {
    if (std::any_of(partial + 1, kept.end(), isPartial)) throw problem(text::kOnePartialDimension);
    return static_cast<size_t>(partial - kept.begin());
  }
  const auto given = std::find_if(indices.begin(), indices.end(), [](const Index& index) { return !index.isColon(); });
  return given == indices.end() ? 0 : static_cast<size_t>(given - indices.begin());
}

void deleteBySubscripts(Storable& target, std::span<const Index> indices) {
  const auto lengths = indexExtents(target.size(), static_cast<int64_t>(indices.size()));
  std::vector<Index> kept;
  for (size_t k = 0; k < indices.size(); ++k) {
    if (indices[k].needed() > lengths[k]) throw problem(text::deletionExceedsDimension(static_cast<int64_t>(k) + 1));
    kept.push_back(complementOf(indices[k], lengths[k]));
  }
  const size_t partial = partialSubscript(indices, kept);
  for (size_t k = 0; k < kept.size(); ++k) {
    if (k != partial) kept[k] = Index::range(0, lengths[k]);
  }
  target = readElements(target, kept);
}

}  // namespace

void deleteElements(Storable& target, std::span<const Index> indices) {
  if (!target.isArray()) throw problem(text::kAssignmentTargetNotArray);
  if (indices.empty()) throw problem(text::kNoIndex);
  if (indices.size() == 1) return deleteByOneIndex(target, indices.front());
  deleteBySubscripts(target, indices);
}

}  // namespace kelo
