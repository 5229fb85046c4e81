// find: the places of the elements that are not zero. NaN is not zero; a complex number is zero
// when both parts are.
//
// The array is cut into pieces. A first pass counts the hits of each piece, so that a second one
// can write them where they belong, pieces side by side. Within a piece, blocks of 64 elements are
// written without branching, through a small buffer where the room of the piece ends.
#include <algorithm>
#include <numeric>

#include "builtins/arrays/handlers.h"
#include "interpreter/reader.h"
#include "messages/catalogue/arrays.h"
#include "platform/parallel.h"

namespace kelo::builtins::arrays {
namespace {

constexpr int64_t kPiece = 1 << 15;
constexpr int64_t kBlock = 64;

bool isHit(double x) { return x != 0; }
bool isHit(int64_t x) { return x != 0; }
bool isHit(bool x) { return x; }
bool isHit(ComplexDouble z) { return z.real != 0 || z.imaginary != 0; }
bool isHit(Character c) { return c.word() != 0; }

template <class T>
int64_t countHits(const T* x, int64_t n) {
  int64_t count = 0;
  while (n > 0) {  // in steps that fit a byte, so that logicals are counted 16 at a time
    const int64_t step = std::min<int64_t>(n, 240);
    if constexpr (sizeof(T) == 1) {
      uint8_t hits = 0;
      for (int64_t i = 0; i < step; ++i) hits = static_cast<uint8_t>(hits + isHit(x[i]));
      count += hits;
    } else {
      for (int64_t i = 0; i < step; ++i) count += isHit(x[i]);
    }
    x += step;
    n -= step;
  }
  return count;
}

/// Writes first, first + 1, ... for the hits among n <= kBlock elements and counts them. `out` has
/// room for n numbers.
template <class T>
int64_t writeBlock(const T* __restrict x, int n, double first, double* __restrict out) {
  int64_t count = 0;
  for (int i = 0; i < n; ++i) {
    out[count] = first + static_cast<double>(i);
    count += isHit(x[i]);
  }
  return count;
}

/// Writes the numbers, from 1, of the hits among elements `begin` to `end` - 1; at most as many as
/// there is room for.
template <class T>
void writeHits(const T* x, int64_t begin, int64_t end, double* out, int64_t room) {
  double hits[kBlock];
  for (int64_t b = begin; b < end && room > 0; b += kBlock) {
    const int n = static_cast<int>(std::min(kBlock, end - b));
    const auto first = static_cast<double>(b + 1);
    if (room >= kBlock) {
      const int64_t count = writeBlock(x + b, n, first, out);
      out += count;
      room -= count;
    } else {
      const int64_t count = std::min(writeBlock(x + b, n, first, hits), room);
      out = std::copy_n(hits, count, out);
      room -= count;
    }
  }
}

/// How many hits stand before each piece; behind the last piece that is looked at, how many in all.
/// No more pieces than `most` hits take.
template <class T>
std::vector<int64_t> hitsBeforePieces(const T* x, int64_t n, int64_t most) {
  std::vector<int64_t> counts = {0};
  if (most < n) {
    for (int64_t b = 0; b < n && counts.back() < most; b += kPiece) {
      counts.push_back(counts.back() + countHits(x + b, std::min(kPiece, n - b)));
    }
    return counts;
  }
  counts.resize(static_cast<size_t>((n + kPiece - 1) / kPiece) + 1);
  platform::parallelFor(n, [&](int64_t begin, int64_t end) {
    for (int64_t b = begin; b < end; b += kPiece) {
      counts[static_cast<size_t>(b / kPiece) + 1] = countHits(x + b, std::min(kPiece, end - b));
    }
  }, kPiece);
  std::partial_sum(counts.begin(), counts.end(), counts.begin());
  return counts;
}

/// The linear indexes, from 1, of the first hits, at most `most`.
template <class T>
DoubleArray indexesOfHits(const TypedArray<T>& array, int64_t most) {
  const T* x = array.data();
  const std::vector<int64_t> starts = hitsBeforePieces(x, array.numElements(), most);
  const int64_t n = std::min(array.numElements(), static_cast<int64_t>(starts.size() - 1) * kPiece);
  const int64_t count = std::min(starts.back(), most);
  auto result = DoubleArray::uninitialized(array.size().isRow() ? SizeVector(1, count) : SizeVector(count, 1));
  double* out = result.writable();
  platform::parallelFor(n, [&](int64_t begin, int64_t end) {
    for (int64_t b = begin; b < end; b += kPiece) {
      const int64_t start = std::min(starts[static_cast<size_t>(b / kPiece)], count);
      const int64_t next = std::min(starts[static_cast<size_t>(b / kPiece) + 1], count);
      writeHits(x, b, std::min(b + kPiece, end), out + start, next - start);
    }
  }, kPiece);
  return result;
}

Storable valuesAt(const NumericArray& array, const DoubleArray& indexes) {
  return array.visit([&](const auto& typed) -> Storable {
    auto result = std::remove_cvref_t<decltype(typed)>::uninitialized(indexes.size());
    auto* out = result.writable();
    for (int64_t i = 0; i < indexes.numElements(); ++i) out[i] = typed[static_cast<int64_t>(indexes[i]) - 1];
    return result;
  });
}

}  // namespace

// Column vectors unless the array is a row, also when nothing is found. NOTE: intended, so find([])
// is 0 x 1. Two outputs are rows and columns, the columns running on over all further dimensions.
NodeValue find(Call& call) {
  const char* signature = call.count() == 1 ? "X" : "X, n";
  const NumericArray& array = read::numeric(call, 0, {signature, "X", predicate::kNumericArray});
  int64_t most = INT64_MAX;
  if (call.count() == 2) most = read::integer(call, 1, {signature, "n", predicate::kPositiveInteger}, 1);
  DoubleArray indexes = array.visit([most](const auto& typed) { return indexesOfHits(typed, most); });
  if (call.outputCount() == 1) return indexes;

  std::vector<Storable> outputs(2);
  if (call.outputCount() == 3) outputs.push_back(valuesAt(array, indexes));
  const auto rows = static_cast<double>(array.size().rows());
  auto columns = DoubleArray::uninitialized(indexes.size());
  double* column = columns.writable();
  double* row = indexes.writable();
  for (int64_t i = 0; i < indexes.numElements(); ++i) {
    column[i] = std::floor((row[i] - 1) / rows) + 1;
    row[i] -= (column[i] - 1) * rows;
  }
  outputs[0] = std::move(indexes);
  outputs[1] = std::move(columns);
  return call.outputs(std::move(outputs));
}

}  // namespace kelo::builtins::arrays
