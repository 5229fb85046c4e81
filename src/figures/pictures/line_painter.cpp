// A row of samples is cut from each shape as an interval; the picture is made in bands of a few
// rows of pixels, whose samples stay in the processor's cache.
#include "figures/pictures/line_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "figures/pictures/sample_band.h"
#include "figures/pictures/stroke_parts.h"

namespace kelo::pictures {
namespace {

using drawing::Rect;
using drawing::Vec2;

/// Where strokes are so long, in pixels, that their edges run into one another, fewer rows of
/// samples tell the same.
constexpr double kLongStroke = 20000;

struct Interval {
  double from, to;
};

Interval common(Interval a, Interval b) { return {std::max(a.from, b.from), std::min(a.to, b.to)}; }

/// The places x at a height y where |x * rate + y * slope + offset| <= reach.
struct Strip {
  double middle, step, half;

  Strip(double rate, double slope, double offset, double reach) {
    static constexpr double kLeast = 1e-9;  // the edge of a level strip lies between two rows
    const double inverse = 1 / (std::fabs(rate) > kLeast ? rate : std::copysign(kLeast, rate));
    middle = -offset * inverse;
    step = -slope * inverse;
    half = std::fabs(reach * inverse);
  }
  Interval at(double y) const { return {middle + y * step - half, middle + y * step + half}; }
};

/// The pixels of a picture that a stroke can touch.
struct Bounds {
  int left, top, right, bottom;
  bool isEmpty() const { return left >= right || top >= bottom; }
};

/// A colour over pixels by its coverage.
class Mixture {
 public:
  explicit Mixture(drawing::Rgba color) {
    for (uint32_t coverage = 0; coverage <= SampleBand::kFull; ++coverage) {
      const uint32_t share = (coverage * (256 / SampleBand::kFull) * color.alpha + 127) / 255;  // of 256
      shares_[coverage] = {256 - share, (color.red << 16 | color.blue) * share + 0x800080, color.green * share + 128};
    }
  }
  /// Red and blue are reckoned side by side.
  uint32_t over(uint32_t pixel, uint64_t coverage) const {
    const Share& share = shares_[coverage];
    return (((pixel & 0xff00ff) * share.kept + share.redBlue) >> 8 & 0xff00ff) |
           (((pixel >> 8 & 0xff) * share.kept + share.green) & 0xff00);
  }

 private:
  struct Share {
    uint32_t kept, redBlue, green;
  };
  Share shares_[SampleBand::kFull + 1];
};

class LinePainter {
 public:
  LinePainter(const StrokeParts& parts, const Rect& clip, const Bounds& bounds)
      : parts_(parts), clip_(clip), bounds_(bounds), band_(bounds.right - bounds.left, rowsFor(parts)) {
    sort();
  }

  void paint(Bitmap& bitmap, const Mixture& mixture) {
    for (int k = 0; k < numBands(); ++k) {
      if (first_[k] == first_[k + 1]) continue;
      top_ = bounds_.top + k * SampleBand::kHeight;
      for (uint32_t i = first_[k]; i < first_[k + 1]; ++i) add(partsOfBands_[i]);
      blend(bitmap, mixture);
    }
  }

 private:
  static int rowsFor(const StrokeParts& parts) {
    double length = 0;
    for (const StrokeParts::Bar& bar : parts.bars) length += std::fabs(bar.to.y - bar.from.y);
    return length > kLongStroke ? SampleBand::kCoarse : SampleBand::kFine;
  }

  size_t numBars() const { return parts_.bars.size(); }
  int numBands() const { return (bounds_.bottom - bounds_.top + SampleBand::kHeight - 1) / SampleBand::kHeight; }

  /// How far a part reaches up and down.
  Interval extent(size_t part) const {
    if (part >= numBars()) {
      const double y = parts_.discs[part - numBars()].y;
      return {y - parts_.half, y + parts_.half};
    }
    return extentOf(parts_.bars[part]);
  }
  Interval extentOf(const StrokeParts::Bar& bar) const {
    const double aside = parts_.half * std::fabs(bar.along.x);
    return {std::min(bar.from.y, bar.to.y) - aside, std::max(bar.from.y, bar.to.y) + aside};
  }

  template <class Body>
  void forEachBand(size_t part, Body body) const {
    const Interval reach = extent(part);
    const auto bandOf = [this](double y) {
      return static_cast<int>(std::floor(std::clamp((y - bounds_.top) / SampleBand::kHeight, -1.0, numBands() + 0.0)));
    };
    const int last = std::min(bandOf(reach.to), numBands() - 1);
    for (int k = std::max(bandOf(reach.from), 0); k <= last; ++k) body(k);
  }

  /// Sorts the parts by the bands that they touch.
  void sort() {
    const size_t count = numBars() + parts_.discs.size();
    first_.assign(static_cast<size_t>(numBands()) + 2, 0);
    for (size_t part = 0; part < count; ++part) forEachBand(part, [this](int k) { ++first_[k + 2]; });
    for (size_t k = 2; k < first_.size(); ++k) first_[k] += first_[k - 1];
    partsOfBands_.resize(first_.back());
    for (size_t part = 0; part < count; ++part) {
      forEachBand(part, [&](int k) { partsOfBands_[first_[k + 1]++] = static_cast<uint32_t>(part); });
    }
  }

  void add(uint32_t part) { part < numBars() ? add(parts_.bars[part]) : add(parts_.discs[part - numBars()]); }

  /// Sets the samples that the intervals of a shape hold, from the highest to the lowest of its rows
  /// in the band.
  template <class IntervalAt>
  void add(Interval heights, IntervalAt intervalAt) {
    const double down = band_.down(), middle = 0.5, height = 1 / down;
    const Interval rows = common(heights, {clip_.top, clip_.bottom});
    const int first = static_cast<int>(std::max(std::ceil((rows.from - top_) * down - middle), 0.0));
    const int end = static_cast<int>(std::min(std::ceil((rows.to - top_) * down - middle), band_.numRows() + 0.0));
    for (int row = first; row < end;) {
      const int y = row / band_.down(), endOfPixels = std::min(end, (y + 1) * band_.down());
      int least = std::numeric_limits<int>::max(), most = 0;
      for (; row < endOfPixels; ++row) {
        const Interval x = common(intervalAt(top_ + (row + middle) * height), {clip_.left, clip_.right});
        if (!(x.from < x.to)) continue;
        const double shift = band_.shift(row) - bounds_.left * SampleBand::kAcross;
        const int from = static_cast<int>(x.from * SampleBand::kAcross + shift);
        const int to = static_cast<int>(x.to * SampleBand::kAcross + shift);
        if (from >= to) continue;
        band_.set(row, from, to);
        least = std::min(least, from);
        most = std::max(most, to);
      }
      if (most > 0) band_.touch(y, least, most);
    }
  }

  /// A bar is where a strip along the line meets one across it; between its inner corners the
  /// first one alone decides.
  void add(const StrokeParts::Bar& bar) {
    const Vec2 u = bar.along, center = (bar.from + bar.to) * 0.5, way = bar.to - bar.from;
    const Strip sides(u.y, -u.x, center.y * u.x - center.x * u.y, parts_.half);
    const Strip ends(u.x, u.y, -center.x * u.x - center.y * u.y, std::fabs(way.x * u.x + way.y * u.y) / 2);
    const auto both = [&](double y) { return common(sides.at(y), ends.at(y)); };
    const Interval all = extentOf(bar);
    const double corner = 2 * parts_.half * std::fabs(u.x);
    const Interval inner{all.from + corner, all.to - corner};
    if (!(inner.from < inner.to)) return add(all, both);
    add({all.from, inner.from}, both);
    add(inner, [&](double y) { return sides.at(y); });
    add({inner.to, all.to}, both);
  }

  void add(Vec2 disc) {
    const double half = parts_.half;
    add({disc.y - half, disc.y + half}, [&](double y) {
      const double aside = std::sqrt(std::max(half * half - (y - disc.y) * (y - disc.y), 0.0));
      return Interval{disc.x - aside, disc.x + aside};
    });
  }

  void blend(Bitmap& bitmap, const Mixture& mixture) {
    const int bottom = std::min(top_ + SampleBand::kHeight, bounds_.bottom);
    for (int y = top_; y < bottom; ++y) {
      uint32_t* row = bitmap.pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(bitmap.width) + bounds_.left;
      band_.takeRow(y - top_, [&](int x, uint64_t coverages) {
        for (uint32_t* pixel = row + x; coverages != 0; ++pixel, coverages >>= 8) {
          if ((coverages & 0xff) != 0) *pixel = mixture.over(*pixel, coverages & 0xff);
        }
      });
    }
  }

  const StrokeParts& parts_;
  Rect clip_;
  Bounds bounds_;
  SampleBand band_;
  int top_ = 0;  // of the band
  std::vector<uint32_t> first_, partsOfBands_;
};

Bounds boundsOf(const StrokeParts& parts, const Rect& clip, const Bitmap& bitmap) {
  Rect reach{clip.right, clip.bottom, clip.left, clip.top};
  const auto include = [&](Vec2 p) {
    reach = {std::min(reach.left, p.x), std::min(reach.top, p.y), std::max(reach.right, p.x),
             std::max(reach.bottom, p.y)};
  };
  for (const StrokeParts::Bar& bar : parts.bars) {
    include(bar.from);
    include(bar.to);
  }
  reach = reach.grownBy(parts.half + 1);
  return {static_cast<int>(std::floor(std::max({reach.left, clip.left, 0.0}))),
          static_cast<int>(std::floor(std::max({reach.top, clip.top, 0.0}))),
          static_cast<int>(std::ceil(std::min({reach.right, clip.right, bitmap.width + 0.0}))),
          static_cast<int>(std::ceil(std::min({reach.bottom, clip.bottom, bitmap.height + 0.0})))};
}

}  // namespace

void paintLine(Bitmap& bitmap, std::span<const float> points, const drawing::Paint& paint, double scale,
               const Rect& clip) {
  const StrokeParts parts = strokeParts(points, paint, scale);
  const Bounds bounds = boundsOf(parts, clip, bitmap);
  if (bounds.isEmpty()) return;
  LinePainter(parts, clip, bounds).paint(bitmap, Mixture(paint.stroke));
}

}  // namespace kelo::pictures
