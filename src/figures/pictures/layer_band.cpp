#include "figures/pictures/layer_band.h"

#include <algorithm>
#include <utility>

namespace kelo::pictures {

LayerBand::LayerBand(int width)
    : width_(width),
      words_((width + 7) / 8),
      pixels_(static_cast<size_t>(8 * words_ * SampleBand::kHeight)),
      isTouched_(static_cast<size_t>(words_ * SampleBand::kHeight)),
      isHidden_(isTouched_.size()),
      hiddenRows_(static_cast<size_t>(words_)) {}

void LayerBand::paintBehind(int y, int x, uint64_t coverages, drawing::Rgba color) {
  const auto word = static_cast<size_t>(y * words_ + x / 8);
  if (isHidden_[word] != 0) return;
  isTouched_[word] = 1;
  const uint32_t redBlue = static_cast<uint32_t>(color.red << 16 | color.blue), green = color.green;
  Pixel* pixel = pixels_.data() + 8 * word;
  for (Pixel* p = pixel; coverages != 0; ++p, coverages >>= 8) {
    const auto coverage = static_cast<uint32_t>(coverages & 0xff) * (kAll / SampleBand::kFull);
    if (coverage == 0 || p->shown == 0) continue;
    const uint32_t share = (p->shown * coverage * color.alpha + 255 * kAll - 1) / (255 * kAll);
    p->shown -= share;
    p->redBlue += redBlue * share;
    p->green += green * share;
  }
  const int inside = std::min(8, width_ - x);
  if (std::any_of(pixel, pixel + inside, [](const Pixel& p) { return p.shown != 0; })) return;
  isHidden_[word] = 1;
  ++hiddenRows_[static_cast<size_t>(x / 8)];
}

void LayerBand::putOver(Bitmap& bitmap, int top) {
  const int height = std::min(SampleBand::kHeight, bitmap.height - top);
  for (int y = 0; y < height; ++y) {
    uint32_t* row = bitmap.pixels.data() + static_cast<size_t>(top + y) * static_cast<size_t>(width_);
    for (int word = 0; word < words_; ++word) {
      const auto at = static_cast<size_t>(y * words_ + word);
      if (isTouched_[at] == 0) continue;
      for (int k = 0; k < std::min(8, width_ - 8 * word); ++k) {
        Pixel& pixel = pixels_[8 * at + static_cast<size_t>(k)];
        if (pixel.shown == kAll) continue;
        const Pixel p = std::exchange(pixel, {});
        uint32_t& to = row[8 * word + k];
        to = ((p.redBlue + (to & 0xff00ff) * p.shown + 0x800080) >> 8 & 0xff00ff) |
             ((p.green + (to >> 8 & 0xff) * p.shown + 0x80) & 0xff00);
      }
      isTouched_[at] = isHidden_[at] = 0;
    }
  }
  std::fill(hiddenRows_.begin(), hiddenRows_.end(), 0);
}

}  // namespace kelo::pictures
