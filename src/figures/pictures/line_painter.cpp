// A row of samples is cut from each shape as an interval; the picture is made in bands of a few
// rows of pixels, whose samples stay in the processor's cache.
#include "figures/pictures/line_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelo::pictures {

using drawing::Rect;
using drawing::Vec2;

namespace {

/// Where strokes are so long, in pixels, that their edges run into one another, fewer rows of
/// samples tell the same.
constexpr double kLongStroke = 20000;

}  // namespace

/// The places x at a height y where |x * rate + y * slope + offset| <= reach.
struct LinePainter::Strip {
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

LinePainter::LinePainter(Bitmap& bitmap, double scale)
    : bitmap_(bitmap), scale_(scale), samples_(bitmap.width), layer_(bitmap.width) {}

void LinePainter::add(std::span<const float> points, const drawing::Paint& paint, const Rect& clip) {
  StrokeParts parts = strokeParts(points, paint, scale_);
  if (parts.bars.empty()) return;
  const Rect inside{std::max(clip.left * scale_, 0.0), std::max(clip.top * scale_, 0.0),
                    std::min(clip.right * scale_, bitmap_.width + 0.0),
                    std::min(clip.bottom * scale_, bitmap_.height + 0.0)};
  const int down = isCrowded_ || isLong(parts) ? SampleBand::kCoarse : SampleBand::kFine;
  strokes_.push_back({std::move(parts), inside, paint.stroke, down});
}

void LinePainter::flush() {
  sort();
  for (size_t band = 0; band + 1 < first_.size(); ++band) {
    if (first_[band] != first_[band + 1]) paintBand(band);
  }
  strokes_.clear();
}

/// The last stroke first, all of its parts at once.
void LinePainter::paintBand(size_t band) {
  top_ = static_cast<int>(band) * SampleBand::kHeight;
  for (size_t i = first_[band]; i < first_[band + 1];) {
    const uint32_t number = entries_[i].stroke;
    const Stroke& stroke = strokes_[number];
    const size_t numBars = stroke.parts.bars.size();
    samples_.setDown(stroke.down);
    for (; i < first_[band + 1] && entries_[i].stroke == number; ++i) {
      const size_t part = entries_[i].part;
      part < numBars ? add(stroke, stroke.parts.bars[part]) : add(stroke, stroke.parts.discs[part - numBars]);
    }
    for (int y = 0; y < SampleBand::kHeight; ++y) {
      samples_.takeRow(y, [&](int x, uint64_t coverages) { layer_.paintBehind(y, x, coverages, stroke.color); });
    }
  }
  layer_.putOver(bitmap_, top_);
}

LinePainter::Interval LinePainter::common(Interval a, Interval b) {
  return {std::max(a.from, b.from), std::min(a.to, b.to)};
}

bool LinePainter::isLong(const StrokeParts& parts) const {
  double height = 0;
  for (const StrokeParts::Bar& bar : parts.bars) height += std::fabs(bar.to.y - bar.from.y);
  return height > kLongStroke;
}

/// How far a part reaches up and down.
LinePainter::Interval LinePainter::extentOf(const StrokeParts::Bar& bar, double half) {
  const double aside = half * std::fabs(bar.along.x);
  return {std::min(bar.from.y, bar.to.y) - aside, std::max(bar.from.y, bar.to.y) + aside};
}
LinePainter::Interval LinePainter::extent(const StrokeParts& parts, size_t part) {
  if (part >= parts.bars.size()) {
    const double y = parts.discs[part - parts.bars.size()].y;
    return {y - parts.half, y + parts.half};
  }
  return extentOf(parts.bars[part], parts.half);
}

template <class Body>
void LinePainter::forEachBand(const Stroke& stroke, size_t part, Body body) const {
  const Interval reach = common(extent(stroke.parts, part), {stroke.clip.top, stroke.clip.bottom});
  if (!(reach.from < reach.to)) return;
  const auto last = static_cast<size_t>(std::ceil(reach.to / SampleBand::kHeight));
  for (auto k = static_cast<size_t>(reach.from / SampleBand::kHeight); k < last; ++k) body(k);
}

/// Sorts the parts by the bands that they touch.
void LinePainter::sort() {
  const size_t numBands = static_cast<size_t>(bitmap_.height) / SampleBand::kHeight + 1;
  const auto forEach = [this](auto body) {
    for (size_t stroke = strokes_.size(); stroke-- > 0;) {
      const StrokeParts& parts = strokes_[stroke].parts;
      for (size_t part = 0; part < parts.bars.size() + parts.discs.size(); ++part) {
        forEachBand(strokes_[stroke], part, [&](size_t band) {
          body(band, Entry{static_cast<uint32_t>(stroke), static_cast<uint32_t>(part)});
        });
      }
    }
  };
  first_.assign(numBands + 2, 0);
  forEach([this](size_t band, Entry) { ++first_[band + 2]; });
  for (size_t k = 2; k < first_.size(); ++k) first_[k] += first_[k - 1];
  entries_.resize(first_.back());
  forEach([this](size_t band, Entry entry) { entries_[first_[band + 1]++] = entry; });
  first_.pop_back();
}

/// Whether all of the band between two places is behind other strokes.
bool LinePainter::isHidden(const Stroke& stroke, double from, double to) const {
  from = std::max(from, stroke.clip.left);
  to = std::min(to, stroke.clip.right);
  if (!(from < to)) return true;
  return layer_.hides(static_cast<int>(from), static_cast<int>(std::ceil(to)));
}

/// Sets the samples that the intervals of a shape hold, from the highest to the lowest of its rows
/// in the band.
template <class IntervalAt>
void LinePainter::add(const Stroke& stroke, Interval heights, IntervalAt intervalAt) {
  const Rect& clip = stroke.clip;
  const double down = samples_.down(), middle = 0.5, height = 1 / down;
  const Interval rows = common(heights, {clip.top, clip.bottom});
  const int first = static_cast<int>(std::max(std::ceil((rows.from - top_) * down - middle), 0.0));
  const int end = static_cast<int>(std::min(std::ceil((rows.to - top_) * down - middle), samples_.numRows() + 0.0));
  for (int row = first; row < end;) {
    const int y = row / samples_.down(), endOfPixels = std::min(end, (y + 1) * samples_.down());
    int least = std::numeric_limits<int>::max(), most = 0;
    for (; row < endOfPixels; ++row) {
      const Interval x = common(intervalAt(top_ + (row + middle) * height), {clip.left, clip.right});
      if (!(x.from < x.to)) continue;
      const int from = static_cast<int>(x.from * SampleBand::kAcross + samples_.shift(row));
      const int to = static_cast<int>(x.to * SampleBand::kAcross + samples_.shift(row));
      if (from >= to) continue;
      samples_.set(row, from, to);
      least = std::min(least, from);
      most = std::max(most, to);
    }
    if (most > 0) samples_.touch(y, least, most);
  }
}

/// A bar is where a strip along the line meets one across it; between its inner corners the first
/// one alone decides.
void LinePainter::add(const Stroke& stroke, const StrokeParts::Bar& bar) {
  const double half = stroke.parts.half;
  const Vec2 u = bar.along, center = (bar.from + bar.to) * 0.5, way = bar.to - bar.from;
  const Strip sides(u.y, -u.x, center.y * u.x - center.x * u.y, half);
  const Interval all = extentOf(bar, half);
  const Interval here = common(all, {top_ + 0.0, top_ + 0.0 + SampleBand::kHeight});
  const Interval upper = sides.at(here.from), lower = sides.at(here.to);
  if (isHidden(stroke, std::max(std::min(upper.from, lower.from), std::min(bar.from.x, bar.to.x) - half),
               std::min(std::max(upper.to, lower.to), std::max(bar.from.x, bar.to.x) + half))) {
    return;
  }
  const Strip ends(u.x, u.y, -center.x * u.x - center.y * u.y, std::fabs(way.x * u.x + way.y * u.y) / 2);
  const auto both = [&](double y) { return common(sides.at(y), ends.at(y)); };
  const double corner = 2 * half * std::fabs(u.x);
  const Interval inner{all.from + corner, all.to - corner};
  if (!(inner.from < inner.to)) return add(stroke, all, both);
  add(stroke, {all.from, inner.from}, both);
  add(stroke, inner, [&](double y) { return sides.at(y); });
  add(stroke, {inner.to, all.to}, both);
}

void LinePainter::add(const Stroke& stroke, Vec2 disc) {
  const double half = stroke.parts.half;
  if (isHidden(stroke, disc.x - half, disc.x + half)) return;
  add(stroke, {disc.y - half, disc.y + half}, [&](double y) {
    const double aside = std::sqrt(std::max(half * half - (y - disc.y) * (y - disc.y), 0.0));
    return Interval{disc.x - aside, disc.x + aside};
  });
}

}  // namespace kelo::pictures
