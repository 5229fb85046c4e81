// A figure as the bytes of a picture file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "figures/drawing/drawing.h"
#include "figures/pictures/renderer.h"

namespace kelo::pictures {

enum class Format { png, svg, pdf };

/// "png", "svg", "pdf"; nothing for another name.
std::optional<Format> formatNamed(std::string_view name);

struct PictureOptions {
  drawing::Size size;
  const drawing::Theme* theme = &drawing::Theme::light();
  double scale = 2;  ///< pixels a point, of PNG alone
};

/// How long each side of a picture may be, in points.
inline constexpr double kLeastSide = 16, kMostSide = 10000;

/// throws Problem
std::string picture(const figures::Figure& figure, Format format, const PictureOptions& options, Renderer& renderer);

/// The small PNG that a saved figure carries. throws Problem
std::string thumbnail(const figures::Figure& figure, Renderer& renderer);

}  // namespace kelo::pictures
