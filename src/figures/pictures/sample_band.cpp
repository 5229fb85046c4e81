#include "figures/pictures/sample_band.h"

namespace kelo::pictures {
namespace {

/// Of each byte of some words how many bits are set, added up, at most 255; clears the words.
template <int kCount>
uint64_t sumOfBits(uint64_t* words) {
  uint64_t sum = 0;
  for (int k = 0; k < kCount; ++k) {
    uint64_t x = std::exchange(words[k], 0);
    x -= x >> 1 & 0x5555555555555555;
    x = (x & 0x3333333333333333) + (x >> 2 & 0x3333333333333333);
    sum += (x + (x >> 4)) & 0x0f0f0f0f0f0f0f0f;
  }
  return sum;
}

}  // namespace

/// Behind the last word there is room for one more.
SampleBand::SampleBand(int width)
    : words_((width + 7) / 8),
      bits_(static_cast<size_t>((words_ * kHeight + 1) * kFine)),
      touched_(static_cast<size_t>(words_ * kHeight)) {
  setDown(kFine);
}

void SampleBand::setDown(int down) {
  if (down == down_) return;
  down_ = down;
  // Steps that scatter: neighbouring rows are far apart.
  for (int row = 0; row < kFine; ++row) shifts_[row] = (static_cast<float>(row * 7 % down) + 0.5f) / down;
}

uint64_t SampleBand::take(uint64_t* rows) {
  const uint64_t counts = down_ == kFine ? sumOfBits<kFine>(rows) : sumOfBits<kCoarse>(rows);
  return down_ == kFine ? (counts + 0x0202020202020202) >> 2 & 0x3f3f3f3f3f3f3f3f : counts;
}

}  // namespace kelo::pictures
