#include "figures/pictures/native/cairo_renderer.h"

#include <cmath>

#include "figures/pictures/native/cairo_painter.h"
#include "messages/catalogue/figures.h"
#include "messages/message.h"

namespace kelo::pictures::native {
namespace {

void check(const CairoLibrary& cairo, cairo_status_t status) {
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw problem(fmt::format(text::kPictureFailed, cairo.status_to_string(status)));
}

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

/// Paints the list on a surface, which is given back; `bitmap`: its pixels, where it has some.
void paintOn(const CairoLibrary& cairo, cairo_surface_t* surface, const drawing::DisplayList& list, double scale,
             Bitmap* bitmap) {
  cairo_t* context = cairo.create(surface);
  cairo.scale(context, scale, scale);
  CairoPainter(cairo, context, scale, bitmap).paint(list);
  const cairo_status_t status = cairo.status(context);
  cairo.destroy(context);
  cairo.surface_finish(surface);
  const cairo_status_t end = status != CAIRO_STATUS_SUCCESS ? status : cairo.surface_status(surface);
  cairo.surface_destroy(surface);
  check(cairo, end);
}

}  // namespace

Bitmap CairoRenderer::bitmap(const drawing::DisplayList& list, double scale) {
  const CairoLibrary& cairo = CairoLibrary::loaded();
  Bitmap bitmap;
  bitmap.width = static_cast<int>(std::lround(list.size.width * scale));
  bitmap.height = static_cast<int>(std::lround(list.size.height * scale));
  bitmap.pixels.resize(static_cast<size_t>(bitmap.width) * static_cast<size_t>(bitmap.height));
  auto* bytes = reinterpret_cast<unsigned char*>(bitmap.pixels.data());
  cairo_surface_t* surface =
      cairo.image_surface_create_for_data(bytes, CAIRO_FORMAT_RGB24, bitmap.width, bitmap.height, bitmap.width * 4);
  paintOn(cairo, surface, list, scale, &bitmap);
  return bitmap;
}

std::string CairoRenderer::pdf(const drawing::DisplayList& list) {
  const CairoLibrary& cairo = CairoLibrary::loaded();
  std::string bytes;
  cairo_surface_t* surface =
      cairo.pdf_surface_create_for_stream(append, &bytes, list.size.width, list.size.height);
  cairo.pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_TITLE, list.title.c_str());
  cairo.pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_SUBJECT, list.description.c_str());
  paintOn(cairo, surface, list, 1, nullptr);
  return bytes;
}

}  // namespace kelo::pictures::native
