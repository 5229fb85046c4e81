// Packed pictures, unpacked again.
#include "figures/pictures/png.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

namespace kelo::pictures {
namespace {

uint32_t numberAt(const std::string& bytes, size_t at) {
  uint32_t number = 0;
  for (size_t k = 0; k < 4; ++k) number = number << 8 | static_cast<uint8_t>(bytes[at + k]);
  return number;
}

/// The content of the first chunk of a type; its sum is checked.
std::string chunk(const std::string& png, const std::string& type) {
  for (size_t at = 8; at < png.size(); at += 12 + numberAt(png, at)) {
    if (png.compare(at + 4, 4, type) != 0) continue;
    const uint32_t length = numberAt(png, at);
    EXPECT_EQ(crc32(0, reinterpret_cast<const Bytef*>(png.data()) + at + 4, length + 4),
              numberAt(png, at + 8 + length));
    return png.substr(at + 8, length);
  }
  return "";
}

std::vector<uint32_t> pixelsOf(const std::string& png) {
  const std::string header = chunk(png, "IHDR"), packed = chunk(png, "IDAT"), palette = chunk(png, "PLTE");
  const size_t width = numberAt(header, 0), height = numberAt(header, 4), each = header[9] == 3 ? 1 : 3;
  const size_t rowBytes = width * each + 1;
  std::string rows(height * rowBytes, '\0');
  uLongf length = rows.size();
  EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(rows.data()), &length, reinterpret_cast<const Bytef*>(packed.data()),
                       packed.size()),
            Z_OK);
  EXPECT_EQ(length, rows.size());
  std::vector<uint32_t> pixels;
  for (size_t y = 0; y < height; ++y) {
    const bool isDifference = rows[y * rowBytes] == 2;
    EXPECT_TRUE(isDifference || rows[y * rowBytes] == 0);
    for (size_t k = 1; k < rowBytes; ++k) {
      if (y > 0 && isDifference)
        rows[y * rowBytes + k] = static_cast<char>(rows[y * rowBytes + k] + rows[(y - 1) * rowBytes + k]);
    }
    for (size_t x = 0; x < width; ++x) {
      const char* color = rows.data() + y * rowBytes + 1 + x * each;
      if (each == 1) color = palette.data() + 3 * static_cast<uint8_t>(*color);
      pixels.push_back(static_cast<uint32_t>(static_cast<uint8_t>(color[0]) << 16 |
                                             static_cast<uint8_t>(color[1]) << 8 | static_cast<uint8_t>(color[2])));
    }
  }
  return pixels;
}

TEST(Png, holdsEveryPixel) {
  std::mt19937 random(3);
  for (int round = 0; round < 40; ++round) {
    Bitmap bitmap{1 + static_cast<int>(random() % 700), 1 + static_cast<int>(random() % 40), {}};
    const uint32_t numColors = round % 4 == 0 ? 1 : round % 4 == 1 ? 200 : 1 << 24;
    const uint32_t seldom = round % 3 == 0 ? 1 : 60;  // a new colour at every pixel, or long runs
    uint32_t color = 0xffffff;
    for (int k = 0; k < bitmap.width * bitmap.height; ++k) {
      if (random() % seldom == 0) color = static_cast<uint32_t>(random()) % numColors;
      bitmap.pixels.push_back(color);
    }
    EXPECT_EQ(pixelsOf(png(bitmap, 1)), bitmap.pixels) << "round " << round;
    EXPECT_EQ(pixelsOf(png(bitmap, 1, Packing::small)), bitmap.pixels) << "round " << round;
  }
}

/// Colours that are ever rarer make codes as long as they can be.
TEST(Png, rareColorsHaveCodes) {
  Bitmap bitmap{4096, 64, {}};
  uint64_t count = 1, next = 1;
  for (uint32_t color = 0; bitmap.pixels.size() < 4096 * 64; color += 7) {
    for (uint64_t k = 0; k < count && bitmap.pixels.size() < 4096 * 64; ++k) {
      bitmap.pixels.push_back(color & 0xff);
      bitmap.pixels.push_back(0);
    }
    count = std::exchange(next, count + next);
  }
  bitmap.pixels.resize(4096 * 64);
  EXPECT_EQ(pixelsOf(png(bitmap, 1)), bitmap.pixels);
}

}  // namespace
}  // namespace kelo::pictures
