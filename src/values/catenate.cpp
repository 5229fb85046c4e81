// Concatenation. The rule is a fold from the left, two arrays at a time; the work is done in one
// pass: lengths are compared with those of the first piece, kinds are folded, and every piece is
// copied once into one block.
//
// Only text needs care. A character may give two numbers, and all columns of a text must give the
// same count, so text that numbers follow is joined first and converted as a whole, as the fold
// would.
#include <algorithm>
#include <cstring>

#include "messages/catalogue/operators.h"
#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "platform/parallel.h"
#include "values/operators.h"

namespace kelo {
namespace {

size_t at(int64_t i) { return static_cast<size_t>(i); }

// The joined size, grown piece by piece.
class JoinedSize {
 public:
  JoinedSize(const SizeVector& first, int64_t dim) : first_(first), dim_(dim), length_(first.dimensionLength(dim)) {}
  void add(const SizeVector& piece) {
    for (int64_t d = 1; d <= std::max(first_.ndim(), piece.ndim()); ++d) {
      if (d != dim_ && piece.dimensionLength(d) != first_.dimensionLength(d)) throw problem(text::kDimensionMismatch);
    }
    length_ = checkedAdd(length_, piece.dimensionLength(dim_));
  }
  SizeVector size() const { return first_.withDimension(dim_, length_); }

 private:
  SizeVector first_;
  int64_t dim_;
  int64_t length_;
};

// Runs of elements that stand together in both a piece and the result, in the order of the result:
// of each slab, one run of each piece.
template <class Piece>
class JoinedRuns {
 public:
  JoinedRuns(std::span<const Piece> pieces, const SizeVector& size, int64_t dim)
      : pieces_(pieces),
        dim_(dim),
        stride_(size.strideOf(dim)),
        count_(size.numElements() / (stride_ * size.dimensionLength(dim)) * std::ssize(pieces)) {}

  int64_t count() const { return count_; }

  /// Calls copy(to, piece, from, count) for the runs `begin` to `end` - 1.
  template <class Copy>
  void forEach(int64_t begin, int64_t end, Copy&& copy) const {
    int64_t slab = begin / std::ssize(pieces_);
    size_t k = at(begin % std::ssize(pieces_));
    int64_t to = 0;
    for (size_t j = 0; j < pieces_.size(); ++j) to += lengthOf(j) * (slab + (j < k ? 1 : 0));
    for (int64_t run = begin; run < end; ++run) {
      copy(to, pieces_[k], slab * lengthOf(k), lengthOf(k));
      to += lengthOf(k);
      if (++k == pieces_.size()) k = 0, ++slab;
    }
  }

 private:
  int64_t lengthOf(size_t k) const { return stride_ * pieces_[k].size().dimensionLength(dim_); }

  std::span<const Piece> pieces_;
  int64_t dim_;
  int64_t stride_;
  int64_t count_;
};

template <class T>
Storable joinNumbers(std::span<const TypedArray<T>> pieces, const SizeVector& size, int64_t dim) {
  auto result = TypedArray<T>::uninitialized(size);
  T* out = result.writable();
  const JoinedRuns<TypedArray<T>> runs(pieces, size, dim);
  const auto join = [&](int64_t begin, int64_t end) {
    runs.forEach(begin, end, [out](int64_t to, const TypedArray<T>& piece, int64_t from, int64_t count) {
      if (count == 1)
        out[to] = piece.data()[from];
      else
        std::memcpy(static_cast<void*>(out + to), piece.data() + from, at(count) * sizeof(T));
    });
  };
  platform::parallelForUnits(runs.count(), size.numElements() / runs.count(), join);
  return result;
}

// Pieces of any kinds but text that turns into numbers: each is converted by itself.
template <class T>
Storable joinAs(std::span<Storable> list, int64_t dim) {
  std::vector<TypedArray<T>> pieces;
  pieces.reserve(list.size());
  std::optional<JoinedSize> joined;
  for (Storable& piece : list) {
    pieces.push_back(std::move(*piece.numeric()).toKind(KindOf<T>::value).template take<T>());
    if (joined)
      joined->add(pieces.back().size());
    else
      joined.emplace(pieces.back().size(), dim);
  }
  return joinNumbers<T>(pieces, joined->size(), dim);
}

Storable joinInKind(std::span<Storable> list, Kind kind, int64_t dim) {
  switch (kind) {
    case Kind::Double: return joinAs<double>(list, dim);
    case Kind::Int: return joinAs<int64_t>(list, dim);
    case Kind::Logical: return joinAs<bool>(list, dim);
    case Kind::Complex: return joinAs<ComplexDouble>(list, dim);
    case Kind::Char: break;
  }
  return joinAs<Character>(list, dim);
}

Storable joinNumeric(std::span<Storable> list, int64_t dim) {
  Kind kind = list[0].numeric()->kind();
  size_t textEnd = kind == Kind::Char ? 1 : 0;  // of the longest beginning that joins to text
  for (size_t k = 1; k < list.size(); ++k) {
    kind = rulingKind(kind, list[k].numeric()->kind());
    if (kind == Kind::Char) textEnd = k + 1;
  }
  if (textEnd > 1 && textEnd < list.size()) {
    list[textEnd - 1] = joinInKind(list.first(textEnd), Kind::Char, dim);
    list = list.subspan(textEnd - 1);
  }
  return joinInKind(list, kind, dim);
}

Storable joinStructures(std::span<Storable> list, int64_t dim) {
  const StructArray& first = *list[0].structure();
  JoinedSize joined(first.size(), dim);
  for (const Storable& piece : list.subspan(1)) {
    joined.add(piece.size());
    if (!first.hasSameFields(*piece.structure())) throw problem(text::kCatenateMixed, text::kCatenateMixedExpected);
  }
  StructArray result(joined.size(), first.fields());
  const JoinedRuns<Storable> runs(list, joined.size(), dim);
  runs.forEach(0, runs.count(), [&](int64_t to, const Storable& piece, int64_t from, int64_t count) {
    for (int64_t k = 0; k < count; ++k) result.setElement(to + k, *piece.structure(), from + k);
  });
  return result;
}

// The commonest bracket: a row or a column of plain numbers.
std::optional<Storable> joinScalars(std::span<const Storable> list, int64_t dim) {
  if (dim > 2 || !std::all_of(list.begin(), list.end(), [](const Storable& s) { return s.isDoubleScalar(); }))
    return {};
  const auto n = static_cast<int64_t>(list.size());
  DoubleArray result = DoubleArray::uninitialized(dim == 1 ? SizeVector(n, 1) : SizeVector(1, n));
  std::transform(list.begin(), list.end(), result.writable(), [](const Storable& s) { return s.doubleScalar(); });
  return result;
}

}  // namespace

Storable catenate(std::span<Storable> list, int64_t dim) {
  if (!std::all_of(list.begin(), list.end(), [](const Storable& s) { return s.isArray(); })) {
    throw problem(text::kCatenateUnexpected);
  }
  const auto end = std::remove_if(list.begin(), list.end(), [](const Storable& s) { return s.isEmpty(); });
  list = list.first(static_cast<size_t>(end - list.begin()));
  if (list.empty()) return DoubleArray();
  if (list.size() == 1) return std::move(list[0]);
  if (auto row = joinScalars(list, dim)) return *std::move(row);
  const auto structures = std::count_if(list.begin(), list.end(), [](const Storable& s) { return s.isStructure(); });
  if (structures == 0) return joinNumeric(list, dim);
  if (structures != std::ssize(list)) throw problem(text::kCatenateMixed, text::kCatenateMixedExpected);
  return joinStructures(list, dim);
}

}  // namespace kelo
