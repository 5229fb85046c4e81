// Where packing is to be fast, rows are stored as differences to the row above: most of a plot is
// as what is above it, and what remains are runs of zeros. Rows are packed some at a time, each by
// themselves, on all cores.
#include "figures/pictures/png.h"

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

#include "figures/pictures/pieces.h"
#include "figures/pictures/run_packer.h"

namespace kelo::pictures {
namespace {

constexpr int kCompression = 3;  // the highest without a second look at every match, which takes twice as long
constexpr char kNone = 0, kUp = 2;  // filters; the second one is the difference to the row above
constexpr double kPointsPerMetre = 72 / 0.0254;
constexpr size_t kPieceBytes = 1 << 18;
constexpr int kWindowBits = 15;

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

/// Some rows of a picture, each behind its filter byte. OPTIMIZATION: stretches that are as what is
/// above them are zeros already.
template <class Pixel, int kBytes>
std::string filteredRows(const Pixel* pixels, size_t width, size_t first, size_t end, char filter) {
  static constexpr size_t kStretch = 32 / sizeof(Pixel);
  std::string rows((end - first) * (kBytes * width + 1), '\0');
  const std::vector<Pixel> nothing(width);
  char* to = rows.data();
  for (size_t y = first; y < end; ++y) {
    const Pixel *row = pixels + y * width, *above = y == 0 || filter == kNone ? nothing.data() : row - width;
    *to++ = filter;
    for (size_t x = 0; x < width;) {
      const size_t stretchEnd = std::min(x + kStretch, width);
      if (std::memcmp(row + x, above + x, (stretchEnd - x) * sizeof(Pixel)) == 0) {
        to += kBytes * (stretchEnd - x);
        x = stretchEnd;
        continue;
      }
      for (; x < stretchEnd; ++x) {
        for (int k = kBytes - 1; k >= 0; --k) *to++ = static_cast<char>((row[x] >> 8 * k) - (above[x] >> 8 * k));
      }
    }
  }
  return rows;
}

/// Blocks of DEFLATE that are not the last ones and end at a whole byte.
std::string packed(const std::string& rows, int pixelBytes, Packing packing) {
  if (packing == Packing::fast) {
    if (std::optional<std::string> runs = packedRuns(rows, pixelBytes)) return std::move(*runs);
  }
  z_stream stream{};
  if (deflateInit2(&stream, kCompression, Z_DEFLATED, -kWindowBits, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
  std::string bytes(deflateBound(&stream, rows.size()) + 16, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rows.data()));
  stream.avail_in = static_cast<uInt>(rows.size());
  stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
  stream.avail_out = static_cast<uInt>(bytes.size());
  deflate(&stream, Z_SYNC_FLUSH);
  bytes.resize(stream.total_out);
  deflateEnd(&stream);
  return bytes;
}

/// The form of zlib of all rows. `rowsOf(first, end)` gives some of them.
template <class RowsOf>
std::string packedRows(size_t height, size_t rowBytes, int pixelBytes, Packing packing, RowsOf rowsOf) {
  const size_t numRows = std::max<size_t>(kPieceBytes / rowBytes, 1), numPieces = (height + numRows - 1) / numRows;
  std::vector<std::string> pieces(numPieces);
  std::vector<uLong> sums(numPieces);
  forPieces(static_cast<int64_t>(numPieces), kPieceBytes, [&](int64_t begin, int64_t end) {
    for (auto k = static_cast<size_t>(begin); k < static_cast<size_t>(end); ++k) {
      const std::string rows = rowsOf(k * numRows, std::min((k + 1) * numRows, height));
      sums[k] = adler32(1, reinterpret_cast<const Bytef*>(rows.data()), static_cast<uInt>(rows.size()));
      pieces[k] = packed(rows, pixelBytes, packing);
    }
  });
  std::string all = "\x78\x01";
  uLong sum = 1;
  for (size_t k = 0; k < numPieces; ++k) {
    all += pieces[k];
    const size_t count = std::min(numRows, height - k * numRows);
    sum = adler32_combine(sum, sums[k], static_cast<z_off_t>(count * rowBytes));
  }
  all.append({3, 0});  // an empty block, the last one
  appendNumber(all, static_cast<uint32_t>(sum));
  return all;
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
  const auto rowsOf = [&](size_t first, size_t end) {
    return numbers ? filteredRows<uint8_t, 1>(numbers->data(), width, first, end, filter)
                   : filteredRows<uint32_t, 3>(bitmap.pixels.data(), width, first, end, filter);
  };
  const int pixelBytes = numbers ? 1 : 3;
  appendChunk(png, "IDAT",
              packedRows(height, static_cast<size_t>(pixelBytes) * width + 1, pixelBytes, packing, rowsOf));
  appendChunk(png, "IEND", "");
  return png;
}

}  // namespace kelo::pictures
