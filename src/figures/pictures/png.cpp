// Where packing is to be fast, rows are stored as differences to the row above: most of a plot is
// as what is above it, and what remains are runs of zeros.
#include "figures/pictures/png.h"

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "figures/pictures/run_packer.h"

namespace kelo::pictures {
namespace {

constexpr int kCompression = 3;  // the highest without a second look at every match, which takes twice as long
constexpr char kNone = 0, kUp = 2;  // filters; the second one is the difference to the row above
constexpr double kPointsPerMetre = 72 / 0.0254;

void appendNumber(std::string& bytes, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
}

void appendChunk(std::string& png, std::string_view type, std::string_view content) {
  appendNumber(png, static_cast<uint32_t>(content.size()));
  const size_t begin = png.size();
  png += type;
  png += content;
  const auto* bytes = reinterpret_cast<const Bytef*>(png.data()) + begin;
  appendNumber(png, static_cast<uint32_t>(crc32(0, bytes, static_cast<uInt>(png.size() - begin))));
}

/// The colours of a picture in order of appearance, with a table to find them by.
class Palette {
 public:
  /// The number of a colour; nothing once there are more than 256.
  std::optional<uint8_t> numberOf(uint32_t color) {
    size_t slot = (color * 2654435761u) >> 22;
    while (entries_[slot] != 0) {
      if (entries_[slot] == (color | kUsed)) return numbers_[slot];
      slot = (slot + 1) & 1023;
    }
    if (colors_.size() == 256) return std::nullopt;
    entries_[slot] = color | kUsed;
    numbers_[slot] = static_cast<uint8_t>(colors_.size());
    colors_.push_back(color);
    return numbers_[slot];
  }
  std::string bytes() const {
    std::string bytes;
    for (const uint32_t color : colors_) {
      for (int shift = 16; shift >= 0; shift -= 8) bytes += static_cast<char>(color >> shift);
    }
    return bytes;
  }

 private:
  static constexpr uint32_t kUsed = 0xff000000;
  uint32_t entries_[1024] = {};
  uint8_t numbers_[1024] = {};
  std::vector<uint32_t> colors_;
};

/// The palette numbers of all pixels; nothing when there are too many colours.
std::optional<std::vector<uint8_t>> indexed(const Bitmap& bitmap, Palette& palette) {
  std::vector<uint8_t> numbers(bitmap.pixels.size());
  uint32_t last = ~0u;
  uint8_t lastNumber = 0;
  for (size_t i = 0; i < numbers.size(); ++i) {
    const uint32_t color = bitmap.pixels[i] & 0xffffff;
    if (color != last) {
      const std::optional<uint8_t> number = palette.numberOf(color);
      if (!number) return std::nullopt;
      last = color;
      lastNumber = *number;
    }
    numbers[i] = lastNumber;
  }
  return numbers;
}

/// The rows of a picture, each behind its filter byte. OPTIMIZATION: stretches that are as what is
/// above them are zeros already.
template <class Pixel, int kBytes>
std::string filteredRows(const Pixel* pixels, size_t width, size_t height, char filter) {
  static constexpr size_t kStretch = 32 / sizeof(Pixel);
  std::string rows(height * (kBytes * width + 1), '\0');
  const std::vector<Pixel> nothing(width);
  for (size_t y = 0; y < height; ++y) {
    const Pixel *row = pixels + y * width, *above = y == 0 || filter == kNone ? nothing.data() : row - width;
    char* to = rows.data() + y * (kBytes * width + 1);
    *to++ = filter;
    for (size_t x = 0; x < width;) {
      const size_t end = std::min(x + kStretch, width);
      if (std::memcmp(row + x, above + x, (end - x) * sizeof(Pixel)) == 0) {
        to += kBytes * (end - x);
        x = end;
        continue;
      }
      for (; x < end; ++x) {
        for (int k = kBytes - 1; k >= 0; --k) *to++ = static_cast<char>((row[x] >> 8 * k) - (above[x] >> 8 * k));
      }
    }
  }
  return rows;
}

std::string deflated(const std::string& rows, int pixelBytes, Packing packing) {
  if (packing == Packing::fast) {
    if (std::optional<std::string> packed = packedRuns(rows, pixelBytes)) return std::move(*packed);
  }
  uLongf length = compressBound(rows.size());
  std::string bytes(length, '\0');
  compress2(reinterpret_cast<Bytef*>(bytes.data()), &length, reinterpret_cast<const Bytef*>(rows.data()), rows.size(),
            kCompression);
  bytes.resize(length);
  return bytes;
}

}  // namespace

std::string png(const Bitmap& bitmap, double pixelsPerPoint, Packing packing) {
  Palette palette;
  const std::optional<std::vector<uint8_t>> numbers = indexed(bitmap, palette);
  std::string header;
  appendNumber(header, static_cast<uint32_t>(bitmap.width));
  appendNumber(header, static_cast<uint32_t>(bitmap.height));
  header += numbers ? std::string{8, 3, 0, 0, 0} : std::string{8, 2, 0, 0, 0};
  std::string resolution;
  const auto perMetre = static_cast<uint32_t>(std::lround(pixelsPerPoint * kPointsPerMetre));
  appendNumber(resolution, perMetre);
  appendNumber(resolution, perMetre);
  resolution += '\1';

  std::string png = "\x89PNG\r\n\x1a\n";
  appendChunk(png, "IHDR", header);
  appendChunk(png, "pHYs", resolution);
  if (numbers) appendChunk(png, "PLTE", palette.bytes());
  const auto width = static_cast<size_t>(bitmap.width), height = static_cast<size_t>(bitmap.height);
  const char filter = packing == Packing::fast ? kUp : kNone;
  const std::string rows = numbers ? filteredRows<uint8_t, 1>(numbers->data(), width, height, filter)
                                   : filteredRows<uint32_t, 3>(bitmap.pixels.data(), width, height, filter);
  appendChunk(png, "IDAT", deflated(rows, numbers ? 1 : 3, packing));
  appendChunk(png, "IEND", "");
  return png;
}

}  // namespace kelo::pictures
