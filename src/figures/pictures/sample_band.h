// The samples of a few rows of pixels, one bit each, in which shapes are united before anything is
// painted: where shapes overlap or touch within a pixel, its coverage is that of their union.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>
#include <vector>

namespace kelo::pictures {

/// A pixel has kAcross samples side by side in each of some rows of samples. The rows are shifted
/// against each other by parts of a sample, so that an upright edge is as smooth as a level one.
class SampleBand {
 public:
  static constexpr int kAcross = 8;
  static constexpr int kHeight = 8;              ///< in pixels
  static constexpr int kFine = 16, kCoarse = 4;  ///< powers of 2
  static constexpr int kFull = 32;               ///< the coverage of a whole pixel

  /// For pixel columns 0 to width - 1.
  explicit SampleBand(int width);

  /// How many rows of samples a pixel has, kFine or kCoarse. REQUIRES: all rows were taken
  void setDown(int down);
  int down() const { return down_; }
  int numRows() const { return kHeight * down_; }
  /// What is to be added to a place, in samples, before its fraction is cut off.
  double shift(int row) const { return shifts_[row & (down_ - 1)]; }
  /// Sets samples first to end - 1 of a row. REQUIRES: 0 <= first < end <= width * kAcross; touch()
  /// is called for them
  void set(int row, int first, int end) {
    uint8_t* at = bits_.data() + row * stride_ + (first >> 3);
    const int begin = first & 7, last = begin + end - first;
    if (last > 64) return setLong(at, begin, last);
    unite(at, kAll << begin & kAll >> (64 - last));
  }
  /// Between these samples of a row of pixels some may have been set.
  void touch(int y, int first, int end) {
    const int firstWord = first >> 6, lastWord = (end - 1) >> 6;
    std::memset(touched_.data() + y * words_ + firstWord, 1, static_cast<size_t>(lastWord - firstWord + 1));
    ranges_[y] = {std::min(ranges_[y].first, firstWord), std::max(ranges_[y].end, lastWord + 1)};
  }
  /// Calls body(x, coverages) for each eight pixels of row y that shapes touch, with the coverages
  /// of pixels x to x + 7 in a byte each; clears what it reads.
  template <class Body>
  void takeRow(int y, Body body) {
    uint8_t* touched = touched_.data() + y * words_;
    const Range range = std::exchange(ranges_[y], {});
    for (int word = range.first; word < range.end; ++word) {
      if (touched[word] != 0) body(8 * word, take(y, word));
      touched[word] = 0;
    }
  }

 private:
  static constexpr uint64_t kAll = ~uint64_t{0};

  static void unite(uint8_t* at, uint64_t bits) {
    uint64_t word;
    std::memcpy(&word, at, sizeof word);
    word |= bits;
    std::memcpy(at, &word, sizeof word);
  }
  static void setLong(uint8_t* at, int begin, int last);
  uint64_t take(int y, int word);

  struct Range {
    int first = std::numeric_limits<int>::max(), end = 0;  // words of 64 samples
  };

  int down_ = 0, words_, stride_;  // stride_: bytes a row
  double shifts_[kFine];
  std::vector<uint8_t> bits_, touched_;
  Range ranges_[kHeight];
};

}  // namespace kelo::pictures
