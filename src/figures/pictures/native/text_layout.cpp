#include "figures/pictures/native/text_layout.h"

#include <dlfcn.h>
#include <pango/pangocairo.h>

#include <algorithm>

#include "figures/drawing/text_fit.h"

namespace kelo::pictures::native {
namespace {

#define KELO_PANGO_FUNCTIONS(F)                                                                                       \
  F(pango_cairo_context_set_font_options)                                                                             \
  F(pango_cairo_create_layout) F(pango_cairo_show_layout) F(pango_context_set_round_glyph_positions)                  \
      F(pango_font_description_free) F(pango_font_description_new) F(pango_font_description_set_absolute_size)        \
          F(pango_font_description_set_family_static) F(pango_layout_get_baseline) F(pango_layout_get_context)        \
              F(pango_layout_get_size) F(pango_layout_set_font_description) F(pango_layout_set_single_paragraph_mode) \
                  F(pango_layout_set_text) F(g_object_unref)

struct PangoLibrary {
#define KELO_FIELD(name) decltype(&::name) name = nullptr;
  KELO_PANGO_FUNCTIONS(KELO_FIELD)
#undef KELO_FIELD

  /// Null when it is not there. It stays loaded to the end of the program.
  static const PangoLibrary* loaded() {
    static const PangoLibrary library;
    return library.isWhole_ ? &library : nullptr;
  }

 private:
  PangoLibrary() {
    void* library = dlopen("libpangocairo-1.0.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return;
    isWhole_ = true;
#define KELO_FIND(name)                                           \
  name = reinterpret_cast<decltype(name)>(dlsym(library, #name)); \
  isWhole_ = isWhole_ && name != nullptr;
    KELO_PANGO_FUNCTIONS(KELO_FIND)
#undef KELO_FIND
  }
  bool isWhole_ = false;
};

/// From Hebrew to the scripts of south-east Asia, joiners and directions, the forms for the eye,
/// and the marks and scripts beyond.
bool isShaped(char32_t c) {
  return (c >= 0x590 && c <= 0x109f) || (c >= 0x1780 && c <= 0x18af) || (c >= 0x200b && c <= 0x200f) ||
         (c >= 0x202a && c <= 0x202e) || (c >= 0xfb1d && c <= 0xfdff) || (c >= 0xfe00 && c <= 0xfe0f) ||
         (c >= 0xfe70 && c <= 0xfefe) || (c >= 0x10800 && c <= 0x10fff) || (c >= 0x1e800 && c <= 0x1efff);
}

}  // namespace

bool needsLayout(const CairoLibrary& cairo, const std::string& utf8) {
  const std::u32string text = drawing::codePoints(utf8);
  return std::any_of(text.begin(), text.end(), [&](char32_t c) { return isShaped(c) || !cairo.hasGlyph(c); });
}

bool paintLaidOut(const CairoLibrary& cairo, cairo_t* context, const std::string& utf8, double size, double share) {
  const PangoLibrary* const pango = PangoLibrary::loaded();
  if (pango == nullptr) return false;
  PangoLayout* layout = pango->pango_cairo_create_layout(context);
  PangoContext* settings = pango->pango_layout_get_context(layout);
  cairo_font_options_t* options = cairo.plainFontOptions();
  pango->pango_cairo_context_set_font_options(settings, options);
  cairo.font_options_destroy(options);
  pango->pango_context_set_round_glyph_positions(settings, FALSE);
  PangoFontDescription* font = pango->pango_font_description_new();
  pango->pango_font_description_set_family_static(font, "DejaVu Sans");
  pango->pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
  pango->pango_layout_set_font_description(layout, font);
  pango->pango_font_description_free(font);
  pango->pango_layout_set_single_paragraph_mode(layout, TRUE);
  pango->pango_layout_set_text(layout, utf8.data(), static_cast<int>(utf8.size()));
  int width = 0;
  pango->pango_layout_get_size(layout, &width, nullptr);
  const double scale = 1.0 / PANGO_SCALE;
  cairo.move_to(context, -share * width * scale, -pango->pango_layout_get_baseline(layout) * scale);
  pango->pango_cairo_show_layout(context, layout);
  pango->g_object_unref(layout);
  return true;
}

}  // namespace kelo::pictures::native
