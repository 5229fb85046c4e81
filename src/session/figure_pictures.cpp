#include "session/figure_pictures.h"

#include <fmt/format.h>

#include "figures/coding/base64.h"
#include "figures/drawing/color_map.h"
#include "figures/drawing/display_list_json.h"
#include "figures/pictures/png.h"
#include "figures/pictures/svg.h"
#include "messages/message.h"
#include "session/panels.h"

namespace kelo::session {
namespace {

using figures::Figure;
using figures::SurfData;

constexpr double kMostPoints = 20'000;  // of a side of a view
constexpr double kMostPixels = 64e6;    // of a picture
constexpr drawing::Size kThumbnail = {320, 240};

double lengthOf(const Call& call, const char* name, double fallback) {
  const double length = call.has(name) ? call.number(name) : fallback;
  if (!(length >= 1 && length <= kMostPoints)) throw wrongParameter(name, "a number from 1 to 20000");
  return length;
}

drawing::DisplayList drawn(const Call& call, const drawing::Size& size, double pixelsPerPoint, bool cached) {
  drawing::DrawingOptions options;
  options.size = size;
  options.theme = drawing::Theme::named(call.textOr("theme", "light"));
  options.pixelsPerPoint = pixelsPerPoint;
  return drawing::draw(call.panels.app.figures.figure(), options, cached ? &call.panels.drawingCache : nullptr);
}

Json limitsJson(const figures::Limits& limits) { return {{"lower", limits.lower}, {"upper", limits.upper}}; }

std::string bytesOf(std::span<const figures::SCNVector3> points) {
  static_assert(sizeof(figures::SCNVector3) == 3 * sizeof(float));
  return {reinterpret_cast<const char*>(points.data()), points.size_bytes()};
}

/// The colours of faces, from the lower limit of z to the upper one.
Json heightColors() {
  constexpr int kColors = 64;
  Json colors = Json::array();
  for (int k = 0; k < kColors; ++k) {
    const drawing::Rgba color = drawing::heightColor(static_cast<double>(k) / (kColors - 1));
    colors.push_back(fmt::format("#{:02x}{:02x}{:02x}", color.red, color.green, color.blue));
  }
  return colors;
}

pictures::Renderer& rendererOf(const Call& call) {
  if (call.panels.setup.renderer == nullptr) throw alert("No picture can be made here");
  return *call.panels.setup.renderer;
}

}  // namespace

drawing::Size viewOf(const Call& call) { return {lengthOf(call, "width", 640), lengthOf(call, "height", 480)}; }

Json drawingJson(const Call& call) {
  constexpr double kPixelsPerPoint = 2;
  return Json::parse(drawing::json(drawn(call, viewOf(call), kPixelsPerPoint, true)));
}

Json meshJson(const Call& call) {
  const int64_t revision = call.panels.app.figures.revision();
  const Figure figure = call.panels.app.figures.figure();
  const auto* surface = std::get_if<SurfData>(&figure);
  if (surface == nullptr) throw alert("There is no surface");
  Json surfaces = Json::array();
  for (const SurfData::Surface& part : surface->surfaces) {
    surfaces.push_back({{"numRows", part.attributes.numRows},
                        {"numCols", part.attributes.numCols},
                        {"points", figures::base64Of(bytesOf(part.points.values()))}});
  }
  const auto& [x, y, z] = surface->rotationAngles;
  return {{"surfaces", std::move(surfaces)},
          {"view",
           {{"rotation", {x, y, z}},
            {"translation", {surface->translation.x, surface->translation.y}},
            {"zoom", surface->zoomFactor}}},
          {"colors", heightColors()},
          {"xlims", limitsJson(surface->xlims)},
          {"ylims", limitsJson(surface->ylims)},
          {"zlims", limitsJson(surface->zlims)},
          {"revision", revision}};
}

std::string pictureBytes(const Call& call, const std::string& format) {
  const drawing::Size size = viewOf(call);
  const double scale = call.has("scale") ? call.number("scale") : 2;
  if (!(scale >= 0.1 && scale <= 10)) throw wrongParameter("scale", "a number from 0.1 to 10");
  if (size.width * size.height * scale * scale > kMostPixels) {
    throw wrongParameter("scale", "smaller: the picture is too large");
  }
  const drawing::DisplayList list = drawn(call, size, scale, false);
  if (format == "svg") return pictures::svg(list);
  if (format == "pdf") return rendererOf(call).pdf(list);
  return pictures::png(rendererOf(call).bitmap(list, scale), scale);
}

std::string thumbnailOf(const Call& call) {
  if (call.panels.setup.renderer == nullptr) return "";
  try {
    return pictures::png(call.panels.setup.renderer->bitmap(drawn(call, kThumbnail, 1, false), 1), 1);
  } catch (const Problem&) {
    return "";
  }
}

}  // namespace kelo::session
