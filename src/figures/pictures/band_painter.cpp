// OPTIMIZATION: all rows of samples of a pixel at once, without a branch for each, in numbers of 32
// bits from the band's top: the compiler makes vectors of them.
#include "figures/pictures/band_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelo::pictures {

using drawing::Vec2;

namespace {

/// How far a bar reaches up and down.
Interval heightsOf(const StrokeParts::Bar& bar, double half) {
  const double aside = half * std::fabs(bar.along.x);
  return {std::min(bar.from.y, bar.to.y) - aside, std::max(bar.from.y, bar.to.y) + aside};
}

/// From left to right in a row.
struct Span {
  float from, to;
  /// What is in both; of numbers that are none, the first one's.
  friend Span common(Span a, Span b) { return {a.from < b.from ? b.from : a.from, b.to < a.to ? b.to : a.to}; }
};

/// The places x at a height y where |x * rate + y * slope + offset| <= reach.
struct Strip {
  float middle, step, half;

  Strip(double rate, double slope, double offset, double reach) {
    static constexpr double kLeast = 1e-9;  // the edge of a level strip lies between two rows
    const double inverse = 1 / (std::fabs(rate) > kLeast ? rate : std::copysign(kLeast, rate));
    middle = static_cast<float>(-offset * inverse);
    step = static_cast<float>(-slope * inverse);
    half = static_cast<float>(std::fabs(reach * inverse));
  }
  Span at(float y) const {
    const float x = middle + y * step;
    return {x - half, x + half};
  }
};

/// Where two strips cross.
struct Crossing {
  Strip sides, ends;
  Span at(float y) const { return common(sides.at(y), ends.at(y)); }
};

struct Disc {
  float x, y, square;  // of the radius
  Span at(float height) const {
    const float rest = square - (height - y) * (height - y), aside = std::sqrt(rest > 0 ? rest : 0);
    return {x - aside, x + aside};
  }
};

/// The rows of samples and the places in them that a shape may take.
struct Window {
  int first, end;
  Span clip;
};

/// Sets the samples that a shape holds.
template <int kDown, class Shape>
void setSamples(SampleBand& samples, const Window& window, const Shape& shape) {
  static constexpr int kBlock = SampleBand::kFine;  // a pixel's rows, or some pixels'
  static constexpr float kAcross = SampleBand::kAcross;
  const float* shifts = samples.shifts();
  for (int block = window.first / kBlock * kBlock; block < window.end; block += kBlock) {
    int from[kBlock], to[kBlock];
    for (int k = 0; k < kBlock; ++k) {
      const Span x = common(window.clip, shape.at((static_cast<float>(block + k) + 0.5f) / kDown));
      from[k] = static_cast<int>(x.from * kAcross + shifts[k]);
      to[k] = static_cast<int>(x.to * kAcross + shifts[k]);
    }
    int k = std::max(window.first - block, 0);
    for (const int endRow = std::min(window.end - block, kBlock); k < endRow;) {
      const int y = (block + k) / kDown, endOfPixels = std::min((y + 1) * kDown - block, endRow);
      const SampleBand::Rows<kDown> rows = samples.rows<kDown>(y);
      int least = std::numeric_limits<int>::max(), most = 0;
      for (; k < endOfPixels; ++k) {
        if (from[k] >= to[k]) continue;
        rows.set((block + k) & (kDown - 1), from[k], to[k]);
        least = std::min(least, from[k]);
        most = std::max(most, to[k]);
      }
      if (most > 0) samples.touch(y, least, most);
    }
  }
}

template <class Shape>
void setSamples(SampleBand& samples, const Window& window, const Shape& shape) {
  samples.down() == SampleBand::kFine ? setSamples<SampleBand::kFine>(samples, window, shape)
                                      : setSamples<SampleBand::kCoarse>(samples, window, shape);
}

}  // namespace

size_t numParts(const StrokeParts& parts) { return parts.bars.size() + parts.discs.size(); }

Interval heightsOf(const StrokeParts& parts, size_t part) {
  if (part < parts.bars.size()) return heightsOf(parts.bars[part], parts.half);
  const double y = parts.discs[part - parts.bars.size()].y;
  return {y - parts.half, y + parts.half};
}

void BandPainter::begin(const Stroke& stroke) { samples_.setDown(stroke.down); }

void BandPainter::add(const Stroke& stroke, size_t part) {
  const auto& [half, bars, discs] = stroke.parts;
  part < bars.size() ? add(stroke, bars[part]) : add(stroke, discs[part - bars.size()]);
}

void BandPainter::finish(const Stroke& stroke) {
  for (int y = 0; y < SampleBand::kHeight; ++y) {
    samples_.takeRow(y, [&](int x, uint64_t coverages) { layer_.paintBehind(y, x, coverages, stroke.color); });
  }
}

/// Whether all of the band between two places is behind other strokes.
bool BandPainter::isHidden(const Stroke& stroke, double from, double to) const {
  from = std::max(from, stroke.clip.left);
  to = std::min(to, stroke.clip.right);
  if (!(from < to)) return true;
  return layer_.hides(static_cast<int>(from), static_cast<int>(std::ceil(to)));
}

/// The rows of samples of the band between two heights.
struct BandPainter::Rows : Window {
  Rows(const BandPainter& band, const Stroke& stroke, Interval heights) {
    const auto clamped = [&](double y) { return std::clamp(y - band.top_, 0.0, SampleBand::kHeight + 0.0); };
    const auto rowAt = [&](double y) { return static_cast<int>(std::ceil(clamped(y) * stroke.down - 0.5)); };
    first = std::max(rowAt(std::max(heights.from, stroke.clip.top)), 0);
    end = rowAt(std::min(heights.to, stroke.clip.bottom));
    clip = {static_cast<float>(stroke.clip.left), static_cast<float>(stroke.clip.right)};
  }
};

/// A bar is where a strip along the line meets one across it.
void BandPainter::add(const Stroke& stroke, const StrokeParts::Bar& bar) {
  const double half = stroke.parts.half;
  const Vec2 u = bar.along, way = bar.to - bar.from, center = (bar.from + bar.to) * 0.5 - Vec2{0, top_ + 0.0};
  const Strip sides(u.y, -u.x, center.y * u.x - center.x * u.y, half);
  const Interval heights = heightsOf(bar, half);
  const Span upper = sides.at(static_cast<float>(std::max(heights.from - top_, 0.0)));
  const Span lower = sides.at(static_cast<float>(std::min(heights.to - top_, SampleBand::kHeight + 0.0)));
  if (isHidden(stroke, std::max<double>(std::min(upper.from, lower.from), std::min(bar.from.x, bar.to.x) - half),
               std::min<double>(std::max(upper.to, lower.to), std::max(bar.from.x, bar.to.x) + half))) {
    return;
  }
  const Strip ends(u.x, u.y, -center.x * u.x - center.y * u.y, std::fabs(way.x * u.x + way.y * u.y) / 2);
  setSamples(samples_, Rows(*this, stroke, heights), Crossing{sides, ends});
}

void BandPainter::add(const Stroke& stroke, Vec2 disc) {
  const double half = stroke.parts.half;
  if (isHidden(stroke, disc.x - half, disc.x + half)) return;
  const Disc shape{static_cast<float>(disc.x), static_cast<float>(disc.y - top_), static_cast<float>(half * half)};
  setSamples(samples_, Rows(*this, stroke, {disc.y - half, disc.y + half}), shape);
}

}  // namespace kelo::pictures
