#include "figures/pictures/native/cairo_library.h"

#include <dlfcn.h>

#include "messages/catalogue/figures.h"
#include "messages/message.h"

namespace kelo::pictures::native {
namespace {

constexpr const char* kFontFile = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/// Libraries stay loaded to the end of the program.
void* open(const char* name) {
  void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw problem(fmt::format(text::kLibraryMissing, name));
  return library;
}

template <class F>
F find(void* library, const char* name) {
  void* function = dlsym(library, name);
  if (function == nullptr) throw problem(fmt::format(text::kLibraryWithoutFunction, name));
  return reinterpret_cast<F>(function);
}

/// The font's file is read directly: asking for it by name would read the catalogue of all fonts
/// first.
void openFont(CairoLibrary& cairo) {
  void* freetype = open("libfreetype.so.6");
  FT_Library library = nullptr;
  if (find<decltype(&::FT_Init_FreeType)>(freetype, "FT_Init_FreeType")(&library) != 0) return;
  if (find<decltype(&::FT_New_Face)>(freetype, "FT_New_Face")(library, kFontFile, 0, &cairo.face) != 0) return;
  cairo.glyphOf = find<decltype(cairo.glyphOf)>(freetype, "FT_Get_Char_Index");
  cairo.font = cairo.ft_font_face_create_for_ft_face(cairo.face, 0);
}

CairoLibrary load() {
  CairoLibrary cairo;
  void* library = open("libcairo.so.2");
#define KELO_FIND(name) cairo.name = find<decltype(cairo.name)>(library, "cairo_" #name);
  KELO_CAIRO_FUNCTIONS(KELO_FIND)
#undef KELO_FIND
  openFont(cairo);
  return cairo;
}

}  // namespace

cairo_font_options_t* CairoLibrary::plainFontOptions() const {
  cairo_font_options_t* options = font_options_create();
  font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  return options;
}

const CairoLibrary& CairoLibrary::loaded() {
  static const CairoLibrary library = load();
  return library;
}

}  // namespace kelo::pictures::native
