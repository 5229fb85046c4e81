#include "figures/figure_data.h"

#include <fmt/format.h>

#include <random>

namespace kelo::figures {

FigureId FigureId::random() {
  std::random_device source;
  const auto word = [&] { return static_cast<uint32_t>(source()); };
  const uint32_t a = word(), b = word(), c = word(), d = word();
  constexpr uint32_t kVersion = 0x4000, kVariant = 0x8000;
  return {fmt::format("{:08X}-{:04X}-{:04X}-{:04X}-{:04X}{:08X}", a, b >> 16, (b & 0x0FFF) | kVersion,
                      (c >> 16 & 0x3FFF) | kVariant, c & 0xFFFF, d)};
}

Figure FigureData::figure() const {
  if (plotData) return *plotData;
  if (surfData) return *surfData;
  return std::monostate();
}

}  // namespace kelo::figures
