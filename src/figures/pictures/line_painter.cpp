#include "figures/pictures/line_painter.h"

#include <algorithm>
#include <cmath>

#include "figures/pictures/pieces.h"

namespace kelo::pictures {

using drawing::Rect;

namespace {

/// Where strokes are so long, in pixels, that their edges run into one another, fewer rows of
/// samples tell the same.
constexpr double kLongStroke = 20000;
/// What a part costs beside the loops that are split over the cores by their elements.
constexpr int64_t kCostOfPart = 64;

bool isLong(const StrokeParts& parts) {
  double height = 0;
  for (const StrokeParts::Bar& bar : parts.bars) height += std::fabs(bar.to.y - bar.from.y);
  return height > kLongStroke;
}

}  // namespace

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
  const auto numBands = static_cast<int64_t>(first_.size()) - 1;
  const int64_t each = static_cast<int64_t>(entries_.size()) * kCostOfPart / numBands;
  forPieces(numBands, each, [this](int64_t begin, int64_t end) {
    BandPainter painter(bitmap_.width);
    for (int64_t band = begin; band < end; ++band) paintBand(static_cast<size_t>(band), painter);
  });
  strokes_.clear();
}

/// The last stroke first, all of its parts at once.
void LinePainter::paintBand(size_t band, BandPainter& painter) {
  if (first_[band] == first_[band + 1]) return;
  painter.begin(static_cast<int>(band) * SampleBand::kHeight);
  for (size_t i = first_[band]; i < first_[band + 1];) {
    const uint32_t number = entries_[i].stroke;
    const Stroke& stroke = strokes_[number];
    painter.begin(stroke);
    for (; i < first_[band + 1] && entries_[i].stroke == number; ++i) painter.add(stroke, entries_[i].part);
    painter.finish(stroke);
  }
  painter.putOver(bitmap_);
}

template <class Body>
void LinePainter::forEachBand(const Stroke& stroke, size_t part, Body body) const {
  const Interval heights = heightsOf(stroke.parts, part);
  const double from = std::max(heights.from, stroke.clip.top), to = std::min(heights.to, stroke.clip.bottom);
  if (!(from < to)) return;
  const auto last = static_cast<size_t>(std::ceil(to / SampleBand::kHeight));
  for (auto k = static_cast<size_t>(from / SampleBand::kHeight); k < last; ++k) body(k);
}

/// Sorts the parts by the bands that they touch.
void LinePainter::sort() {
  const size_t numBands = static_cast<size_t>(bitmap_.height) / SampleBand::kHeight + 1;
  const auto forEach = [this](auto body) {
    for (size_t stroke = strokes_.size(); stroke-- > 0;) {
      for (size_t part = 0; part < numParts(strokes_[stroke].parts); ++part) {
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

}  // namespace kelo::pictures
