// Transposition. A vector only changes its size; a matrix is moved in narrow tiles: eight columns give whole cache
// lines of the result, and are as many streams as the processor reads ahead. Measured against square tiles of 8 to 64.
#include <algorithm>

#include "messages/catalogue/operators.h"
#include "messages/message.h"
#include "values/operators.h"

namespace kelo {
namespace {

constexpr int64_t kTileRows = 64;
constexpr int64_t kTileColumns = 8;

template <class T>
void transposeTiles(T* out, const T* in, int64_t rows, int64_t columns) {
  for (int64_t j0 = 0; j0 < columns; j0 += kTileColumns) {
    const int64_t j1 = std::min(j0 + kTileColumns, columns);
    for (int64_t i0 = 0; i0 < rows; i0 += kTileRows) {
      const int64_t i1 = std::min(i0 + kTileRows, rows);
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
  transposeTiles(result.writable(), array.data(), rows, columns);
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
