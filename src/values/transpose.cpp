// Transposition. A vector only changes its size; a matrix is moved in square tiles, so that both the reads and the writes
// of a tile stay in the nearest cache.
#include <algorithm>

#include "messages/catalogue/operators.h"
#include "messages/message.h"
#include "values/operators.h"

namespace kelo {
namespace {

constexpr int64_t kTile = 32;

// Columns `first` to `last` - 1 of `in`, which become rows of `out`.
template <class T>
void transposeColumns(T* out, const T* in, int64_t rows, int64_t columns, int64_t first, int64_t last) {
  for (int64_t j0 = first; j0 < last; j0 += kTile) {
    const int64_t j1 = std::min(j0 + kTile, last);
    for (int64_t i0 = 0; i0 < rows; i0 += kTile) {
      const int64_t i1 = std::min(i0 + kTile, rows);
      for (int64_t i = i0; i < i1; ++i) {
        for (int64_t j = j0; j < j1; ++j) out[i * columns + j] = in[j * rows + i];
      }
    }
  }
}

template <class T>
TypedArray<T> transposed(TypedArray<T> array) {
  const int64_t rows = array.size().rows();
  const int64_t columns = array.size().columns();
  const SizeVector size(columns, rows);
  if (rows == 1 || columns == 1 || array.isEmpty()) return std::move(array).reshaped(size);
  auto result = TypedArray<T>::uninitialized(size);
  T* out = result.writable();
  const T* in = array.data();
  transposeColumns(out, in, rows, columns, 0, columns);
  return result;
}

StructArray transposed(const StructArray& array) {
  const int64_t rows = array.size().rows();
  const int64_t columns = array.size().columns();
  std::vector<int64_t> positions;
  for (int64_t i = 0; i < rows; ++i) {
    for (int64_t j = 0; j < columns; ++j) positions.push_back(j * rows + i);
  }
  return array.gathered(positions, SizeVector(columns, rows));
}

Storable transposedNumbers(NumericArray array, bool conjugate) {
  switch (array.kind()) {
    case Kind::Double: return transposed(std::move(array).take<double>());
    case Kind::Int: return transposed(std::move(array).take<int64_t>());
    case Kind::Logical: return transposed(std::move(array).take<bool>());
    case Kind::Char: return transposed(std::move(array).take<Character>());
    case Kind::Complex: break;
  }
  ComplexDoubleArray result = transposed(std::move(array).take<ComplexDouble>());
  if (!conjugate) return result;
  return unaryLoop(std::move(result), [](ComplexDouble z) noexcept { return conj(z); });
}

}  // namespace

Storable transpose(Storable value, bool conjugate) {
  if (!value.isArray()) throw problem(text::kTransposeOfNonArray);
  if (!value.size().isMatrix()) throw problem(text::kTransposeOfManyDimensions);
  if (value.isStructure()) return transposed(*value.structure());
  return transposedNumbers(std::move(*value.numeric()), conjugate);
}

}  // namespace kelo
