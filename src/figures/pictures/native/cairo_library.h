// The graphics library, loaded when the first picture is made, so that a start without a picture
// pays nothing for it.
#pragma once

#include <cairo-ft.h>
#include <cairo-pdf.h>
#include <cairo.h>
#include <ft2build.h>
#include FT_FREETYPE_H

namespace kelo::pictures::native {

/// The functions in use, under their names without the prefix.
#define KELO_CAIRO_FUNCTIONS(F)                                                                                    \
  F(arc) F(clip) F(close_path) F(create) F(destroy) F(fill) F(fill_preserve) F(font_options_create)                \
  F(font_options_destroy) F(font_options_set_antialias) F(font_options_set_hint_metrics)                           \
  F(font_options_set_hint_style) F(ft_font_face_create_for_ft_face) F(get_target) F(image_surface_create_for_data) \
  F(line_to) F(move_to) F(new_path) F(new_sub_path) F(paint) F(pdf_surface_create_for_stream)                      \
  F(pdf_surface_set_metadata) F(rectangle) F(restore) F(rotate) F(save) F(scale) F(select_font_face)               \
  F(set_dash) F(set_font_face) F(set_font_options) F(set_font_size) F(set_line_join) F(set_line_width)             \
  F(set_source_rgb) F(set_source_rgba) F(set_tolerance) F(set_antialias) F(show_page) F(show_text) F(status)       \
  F(status_to_string) F(stroke) F(surface_destroy) F(surface_finish) F(surface_flush) F(surface_mark_dirty) \
  F(surface_status) F(text_extents) F(translate)

struct CairoLibrary {
#define KELO_FIELD(name) decltype(&::cairo_##name) name = nullptr;
  KELO_CAIRO_FUNCTIONS(KELO_FIELD)
#undef KELO_FIELD
  /// The face of the figures' font; null when its file is not there.
  cairo_font_face_t* font = nullptr;
  FT_Face face = nullptr;
  decltype(&::FT_Get_Char_Index) glyphOf = nullptr;

  /// Whether the figures' font has a character; true where that font is not known.
  bool hasGlyph(char32_t c) const { return face == nullptr || glyphOf(face, c) != 0; }
  /// Letters in grey, in their own shape and width at every size. To be destroyed by the caller.
  cairo_font_options_t* plainFontOptions() const;

  /// throws Problem, when the library is not there
  static const CairoLibrary& loaded();
};

}  // namespace kelo::pictures::native
