#include "figures/pictures/picture.h"

#include "figures/pictures/png.h"
#include "figures/pictures/svg.h"

namespace kelo::pictures {

std::optional<Format> formatNamed(std::string_view name) {
  if (name == "png") return Format::png;
  if (name == "svg") return Format::svg;
  if (name == "pdf") return Format::pdf;
  return std::nullopt;
}

std::string picture(const figures::Figure& figure, Format format, const PictureOptions& options, Renderer& renderer) {
  drawing::DrawingOptions drawing{options.size, options.theme};
  if (format == Format::png) drawing.pixelsPerPoint = options.scale;
  const drawing::DisplayList list = drawing::draw(figure, drawing);
  switch (format) {
    case Format::png: {
      const Packing packing = std::holds_alternative<figures::SurfData>(figure) ? Packing::small : Packing::fast;
      return png(renderer.bitmap(list, options.scale), options.scale, packing);
    }
    case Format::svg: return svg(list);
    case Format::pdf: return renderer.pdf(list);
  }
  return {};
}

std::string thumbnail(const figures::Figure& figure, Renderer& renderer) {
  PictureOptions options;
  options.size = {240, 180};
  return picture(figure, Format::png, options, renderer);
}

}  // namespace kelo::pictures
