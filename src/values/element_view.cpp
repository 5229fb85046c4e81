// The copying of views.
//
// Dimensions of length 1 drop out, and neighbours that walk on as one are joined; what is left are
// a few levels of loops. The innermost level is a plain run: a copy, a fill, or elements at a
// distance. Where the innermost reads at a distance but another level reads along memory, the two
// are copied in tiles together, so that neither reads nor writes jump from line to line. A level
// that repeats is copied from its own first piece, which is still in the cache.
#include "values/element_view.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#include "platform/parallel.h"

namespace kelo {
namespace {

struct Level {
  int64_t length, in, out;     // strides
  bool outIsContiguous = true;  // whether one step writes all before the next step's place
};

using Axes = std::vector<ViewAxis>;

Axes joined(const Axes& axes) {
  Axes result;
  for (const ViewAxis axis : axes) {
    if (axis.length == 1) continue;
    if (!result.empty() && axis.stride == result.back().stride * result.back().length) {
      result.back().length *= axis.length;
    } else {
      result.push_back(axis);
    }
  }
  if (result.empty()) result.push_back({1, 1});
  return result;
}

bool isAlongMemory(int64_t stride) { return stride == 1 || stride == -1; }

template <class T>
class ViewCopier {
 public:
  explicit ViewCopier(const Axes& axes) {
    int64_t out = 1;
    for (const ViewAxis axis : axes) {
      levels_.push_back({axis.length, axis.stride, out});
      out *= axis.length;
    }
    pairTiledLevels();
    int64_t below = 1;
    for (Level& level : levels_) {
      level.outIsContiguous = level.out == below;
      below *= level.length;
    }
    total_ = below;
  }

  void run(T* out, const T* in) const {
    const size_t top = levels_.size() - 1;
    const int64_t count = levels_[top].length;
    const auto body = [&](int64_t begin, int64_t end) { copy(top, out, in, begin, end); };
    platform::parallelForUnits(count, total_ / count, body);
  }

 private:
  static constexpr int64_t kShortRun = 16;
  static constexpr int64_t kTileReads = 64;  // along the memory of the source
  static constexpr int64_t kTileWrites = 8;  // along that of the result: a line of doubles

  void pairTiledLevels() {
    if (levels_[0].in == 0 || isAlongMemory(levels_[0].in)) return;
    const auto along = std::find_if(levels_.begin(), levels_.end(), [](const Level& l) { return isAlongMemory(l.in); });
    if (along == levels_.end()) return;
    std::rotate(levels_.begin() + 1, along, along + 1);
    tiled_ = true;
  }

  // Steps `begin` to `end` - 1 of a level, with all levels below.
  void copy(size_t level, T* out, const T* in, int64_t begin, int64_t end) const {
    const Level& own = levels_[level];
    out += begin * own.out;
    in += begin * own.in;
    const int64_t count = end - begin;
    if (level == 0) return copyRun(out, in, count, own.in);
    if (level == 1 && tiled_) return copyTiles(out, in, count);
    const int64_t inner = levels_[level - 1].length;
    if (own.in == 0 && own.outIsContiguous) {
      copy(level - 1, out, in, 0, inner);
      return repeat(out, own.out, count);
    }
    if (level == 1 && levels_[0].in == 0) return copyEach(out, own.out, in, own.in, count, inner);
    for (int64_t i = 0; i < count; ++i) copy(level - 1, out + i * own.out, in + i * own.in, 0, inner);
  }

  // Writes each of `count` elements `times` times in a row.
  static void copyEach(T* __restrict out, int64_t outStride, const T* __restrict in, int64_t inStride, int64_t count,
                       int64_t times) {
    for (int64_t i = 0; i < count; ++i, out += outStride, in += inStride) {
      const T element = *in;
      for (int64_t k = 0; k < times; ++k) out[k] = element;
    }
  }

  // OPTIMIZATION: the result never overlaps the source, which lets the compiler work on several
  // elements at once.
  static void copyRun(T* __restrict out, const T* __restrict in, int64_t n, int64_t stride) {
    if (stride == 1 && n >= kShortRun) {
      std::memcpy(static_cast<void*>(out), in, static_cast<size_t>(n) * sizeof(T));
    } else if (stride == 0) {
      std::fill_n(out, n, *in);
    } else if (stride == -1) {
      for (int64_t i = 0; i < n; ++i) out[i] = in[-i];
    } else {
      for (int64_t i = 0; i < n; ++i) out[i] = in[i * stride];
    }
  }

  void copyTiles(T* out, const T* in, int64_t reads) const {
    const Level write = levels_[0];
    const Level read = levels_[1];
    for (int64_t j0 = 0; j0 < reads; j0 += kTileReads) {
      const int64_t count = std::min(kTileReads, reads - j0);
      T* to = out + j0 * read.out;
      const T* from = in + j0 * read.in;
      int64_t i = 0;
      for (; i + kTileWrites <= write.length; i += kTileWrites) {
        copyTile<kTileWrites>(to + i, from + i * write.in, write.in, count, read.in, read.out);
      }
      for (; i < write.length; ++i) copyTile<1>(to + i, from + i * write.in, write.in, count, read.in, read.out);
    }
  }

  template <int64_t kWrites>
  static void copyTile(T* __restrict out, const T* __restrict in, int64_t stride, int64_t reads, int64_t readStride,
                       int64_t writeStride) {
    for (int64_t j = 0; j < reads; ++j, in += readStride, out += writeStride) {
#pragma GCC unroll 16
      for (int64_t i = 0; i < kWrites; ++i) out[i] = in[i * stride];
    }
  }

  // Copies a block, which stands at `out`, until it stands there `times` times.
  static void repeat(T* out, int64_t block, int64_t times) {
    constexpr int64_t kCached = 128 << 10;
    const int64_t total = block * times;
    const int64_t most = block * std::max<int64_t>(1, kCached / (block * static_cast<int64_t>(sizeof(T))));
    for (int64_t done = block; done < total;) {
      const int64_t n = std::min({done, most, total - done});
      std::memcpy(static_cast<void*>(out + done), out, static_cast<size_t>(n) * sizeof(T));
      done += n;
    }
  }

  std::vector<Level> levels_;
  int64_t total_;
  bool tiled_ = false;
};

bool hasNoElements(const Axes& axes) {
  return std::any_of(axes.begin(), axes.end(), [](ViewAxis axis) { return axis.length == 0; });
}

bool showsAllInOrder(const Axes& axes, int64_t first, int64_t numElements) {
  const Axes levels = joined(axes);
  return first == 0 && levels.size() == 1 && levels[0].length == numElements && levels[0].stride == 1;
}

template <class Array>
Array inShape(Array source, const SizeVector& size) {
  return source.size() == size ? std::move(source) : std::move(source).reshaped(size);
}

StructArray viewedStructures(const StructArray& source, const SizeVector& size, const Axes& axes, int64_t first) {
  std::vector<int64_t> positions(static_cast<size_t>(source.numElements()));
  std::iota(positions.begin(), positions.end(), int64_t{0});
  std::vector<int64_t> picked(static_cast<size_t>(size.numElements()));
  if (!picked.empty()) copyView(picked.data(), positions.data() + first, axes);
  return source.gathered(picked, size);
}

template <class T>
Storable viewedNumbers(TypedArray<T> source, const SizeVector& size, const Axes& axes, int64_t first) {
  if (hasNoElements(axes)) return TypedArray<T>::uninitialized(size);
  if (showsAllInOrder(axes, first, source.numElements())) return inShape(std::move(source), size);
  auto result = TypedArray<T>::uninitialized(size);
  copyView(result.writable(), source.data() + first, axes);
  return result;
}

}  // namespace

template <class T>
void copyView(T* out, const T* in, std::vector<ViewAxis> axes) {
  if (!hasNoElements(axes)) ViewCopier<T>(joined(axes)).run(out, in);
}

template void copyView(double*, const double*, Axes);
template void copyView(int64_t*, const int64_t*, Axes);
template void copyView(bool*, const bool*, Axes);
template void copyView(ComplexDouble*, const ComplexDouble*, Axes);
template void copyView(Character*, const Character*, Axes);

Storable viewed(Storable source, const SizeVector& size, const Axes& axes, int64_t first) {
  if (const StructArray* structures = source.structure()) {
    if (!hasNoElements(axes) && showsAllInOrder(axes, first, structures->numElements())) {
      return inShape(*structures, size);
    }
    return viewedStructures(*structures, size, axes, first);
  }
  return std::move(*source.numeric()).visit([&](auto&& array) {
    return viewedNumbers(std::move(array), size, axes, first);
  });
}

std::vector<ViewAxis> axesOf(const SizeVector& size, int64_t n) {
  Axes axes;
  int64_t stride = 1;
  for (int64_t d = 1; d <= std::max(n, size.ndim()); ++d) {
    axes.push_back({size.dimensionLength(d), stride});
    if (!size.hasZeroLength()) stride *= axes.back().length;  // within the count of elements
  }
  return axes;
}

}  // namespace kelo
