#include "figures/pictures/sample_band.h"

namespace kelo::pictures {
namespace {

/// Of each byte how many bits are set.
uint64_t bitsOfBytes(uint64_t x) {
  x -= x >> 1 & 0x5555555555555555;
  x = (x & 0x3333333333333333) + (x >> 2 & 0x3333333333333333);
  return (x + (x >> 4)) & 0x0f0f0f0f0f0f0f0f;
}

}  // namespace

/// Behind each row there is room for a word.
SampleBand::SampleBand(int width)
    : words_((width + 7) / 8),
      stride_(8 * words_ + 8),
      bits_(static_cast<size_t>(stride_ * kHeight * kFine)),
      touched_(static_cast<size_t>(words_ * kHeight)) {
  setDown(kFine);
}

void SampleBand::setDown(int down) {
  down_ = down;
  // Steps that scatter: neighbouring rows are far apart.
  for (int row = 0; row < down; ++row) shifts_[row] = (row * 7 % down + 0.5) / down;
}

void SampleBand::setLong(uint8_t* at, int begin, int last) {
  unite(at, kAll << begin);
  std::memset(at + 8, 0xff, static_cast<size_t>(last / 8 - 8));
  if (last % 8 != 0) at[last / 8] |= static_cast<uint8_t>((1 << last % 8) - 1);
}

uint64_t SampleBand::take(int y, int word) {
  uint8_t* at = bits_.data() + y * down_ * stride_ + 8 * word;
  uint64_t counts = 0;
  for (int row = 0; row < down_; ++row, at += stride_) {
    uint64_t bits;
    std::memcpy(&bits, at, sizeof bits);
    counts += bitsOfBytes(bits);
    std::memset(at, 0, sizeof bits);
  }
  if (down_ == kCoarse) return counts;
  return (counts + 0x0202020202020202) >> 2 & 0x3f3f3f3f3f3f3f3f;
}

}  // namespace kelo::pictures
