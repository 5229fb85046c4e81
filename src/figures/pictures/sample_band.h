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
  static constexpr int kFine = 16, kCoarse = 4;  ///< rows of samples a pixel
  static constexpr int kFull = 32;               ///< the coverage of a whole pixel

  /// For pixel columns 0 to width - 1.
  explicit SampleBand(int width);

  /// How many rows of samples a pixel has, kFine or kCoarse. REQUIRES: all rows were taken
  void setDown(int down);
  int down() const { return down_; }
  /// What is to be added to places in kFine rows from a pixel's first one on, in samples, before
  /// the fraction is cut off.
  const float* shifts() const { return shifts_; }
  /// The samples of pixel row y; `kDown` is down().
  template <int kDown>
  class Rows {
   public:
    /// Sets samples first to end - 1 of a row. REQUIRES: 0 <= first < end <= width * kAcross;
    /// touch() is called for them
    void set(int row, int first, int end) const {
      uint64_t* at = words_ + (first >> 6) * kDown + row;
      const int begin = first & 63, length = end - first;
      if (length > 64) return setLong<kDown>(at, begin, begin + length);
      const uint64_t ones = kAll >> (64 - length);
      at[0] |= ones << begin;
      at[kDown] |= ones >> 1 >> (63 - begin);  // what is left over for the word after
    }

   private:
    friend SampleBand;
    explicit Rows(uint64_t* words) : words_(words) {}
    uint64_t* words_;
  };
  template <int kDown>
  Rows<kDown> rows(int y) {
    return Rows<kDown>(wordAt(y, 0));
  }
  /// Between these samples of a row of pixels some may have been set.
  void touch(int y, int first, int end) {
    const int firstWord = first >> 6, lastWord = (end - 1) >> 6;
    for (int word = firstWord; word <= lastWord; ++word) touched_[static_cast<size_t>(y * words_ + word)] = 1;
    ranges_[y] = {std::min(ranges_[y].first, firstWord), std::max(ranges_[y].end, lastWord + 1)};
  }
  /// Calls body(x, coverages) for each eight pixels of row y that shapes touch, with the coverages
  /// of pixels x to x + 7 in a byte each; clears what it reads.
  template <class Body>
  void takeRow(int y, Body body) {
    uint8_t* touched = touched_.data() + y * words_;
    const Range range = std::exchange(ranges_[y], {});
    for (int word = range.first; word < range.end; ++word) {
      if (touched[word] != 0) body(8 * word, take(wordAt(y, word)));
      touched[word] = 0;
    }
  }

 private:
  static constexpr uint64_t kAll = ~uint64_t{0};

  /// The rows of samples of eight pixels stand side by side.
  uint64_t* wordAt(int y, int word) { return bits_.data() + (y * words_ + word) * down_; }
  template <int kDown>
  static void setLong(uint64_t* at, int begin, int last) {
    *at |= kAll << begin;
    for (at += kDown; last > 128; last -= 64, at += kDown) *at = kAll;
    *at |= kAll >> (128 - last);
  }
  uint64_t take(uint64_t* rows);

  struct Range {
    int first = std::numeric_limits<int>::max(), end = 0;  // words of 64 samples
  };

  int down_ = 0, words_;
  float shifts_[kFine];
  std::vector<uint64_t> bits_;
  std::vector<uint8_t> touched_;
  Range ranges_[kHeight];
};

}  // namespace kelo::pictures
