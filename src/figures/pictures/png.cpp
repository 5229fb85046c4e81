// Rows are stored without a filter: plots have long even stretches, which pack best as they are.
#include "figures/pictures/png.h"

#include <zlib.h>

#include <cmath>
#include <optional>
#include <string_view>

namespace kelo::pictures {
namespace {

constexpr int kCompression = 3;  // the highest without a second look at every match, which takes twice as long
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

/// Rows of palette numbers, each behind its filter byte; nothing when there are too many colours.
std::optional<std::string> indexedRows(const Bitmap& bitmap, Palette& palette) {
  std::string rows(static_cast<size_t>(bitmap.height) * static_cast<size_t>(bitmap.width + 1), '\0');
  char* to = rows.data();
  const uint32_t* pixel = bitmap.pixels.data();
  uint32_t last = ~0u;
  char lastNumber = 0;
  for (int y = 0; y < bitmap.height; ++y) {
    ++to;
    for (int x = 0; x < bitmap.width; ++x, ++pixel) {
      const uint32_t color = *pixel & 0xffffff;
      if (color != last) {
        const std::optional<uint8_t> number = palette.numberOf(color);
        if (!number) return std::nullopt;
        last = color;
        lastNumber = static_cast<char>(*number);
      }
      *to++ = lastNumber;
    }
  }
  return rows;
}

std::string colorRows(const Bitmap& bitmap) {
  const auto width = static_cast<size_t>(bitmap.width);
  std::string rows(static_cast<size_t>(bitmap.height) * (3 * width + 1), '\0');
  char* to = rows.data();
  const uint32_t* pixel = bitmap.pixels.data();
  for (int y = 0; y < bitmap.height; ++y) {
    ++to;
    for (size_t x = 0; x < width; ++x, ++pixel) {
      for (int shift = 16; shift >= 0; shift -= 8) *to++ = static_cast<char>(*pixel >> shift);
    }
  }
  return rows;
}

std::string deflated(const std::string& rows) {
  uLongf length = compressBound(rows.size());
  std::string bytes(length, '\0');
  compress2(reinterpret_cast<Bytef*>(bytes.data()), &length, reinterpret_cast<const Bytef*>(rows.data()), rows.size(),
            kCompression);
  bytes.resize(length);
  return bytes;
}

}  // namespace

std::string png(const Bitmap& bitmap, double pixelsPerPoint) {
  Palette palette;
  const std::optional<std::string> indexed = indexedRows(bitmap, palette);
  std::string header;
  appendNumber(header, static_cast<uint32_t>(bitmap.width));
  appendNumber(header, static_cast<uint32_t>(bitmap.height));
  header += indexed ? std::string{8, 3, 0, 0, 0} : std::string{8, 2, 0, 0, 0};
  std::string resolution;
  const auto perMetre = static_cast<uint32_t>(std::lround(pixelsPerPoint * kPointsPerMetre));
  appendNumber(resolution, perMetre);
  appendNumber(resolution, perMetre);
  resolution += '\1';

  std::string png = "\x89PNG\r\n\x1a\n";
  appendChunk(png, "IHDR", header);
  appendChunk(png, "pHYs", resolution);
  if (indexed) appendChunk(png, "PLTE", palette.bytes());
  appendChunk(png, "IDAT", deflated(indexed ? *indexed : colorRows(bitmap)));
  appendChunk(png, "IEND", "");
  return png;
}

}  // namespace kelo::pictures
