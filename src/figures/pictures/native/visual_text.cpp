// FriBidi gives Arabic letters as presentation forms, which the figures' font has, so no shaping of
// glyphs is needed.
#include "figures/pictures/native/visual_text.h"

#include <dlfcn.h>
#include <fribidi.h>
#include <utf8proc.h>

#include <algorithm>
#include <vector>

#include "figures/drawing/text_fit.h"

namespace kelo::pictures::native {
namespace {

/// Hebrew, Arabic and their neighbours, their presentation forms, and the marks and scripts beyond.
bool runsFromRight(char32_t c) {
  return (c >= 0x590 && c <= 0x8ff) || (c >= 0xfb1d && c <= 0xfdff) || (c >= 0xfe70 && c <= 0xfefe) ||
         (c >= 0x10800 && c <= 0x10fff) || (c >= 0x1e800 && c <= 0x1efff) || c == 0x200f;
}

/// Takes up the place of a letter that has become one with its neighbour, or directs: nothing to
/// paint.
bool isUnseen(FriBidiChar c) { return c == 0xfeff || (c >= 0x200b && c <= 0x200f) || (c >= 0x202a && c <= 0x202e); }

/// Null when the library is not there. It stays loaded to the end of the program.
decltype(&::fribidi_log2vis) loaded() {
  void* library = dlopen("libfribidi.so.0", RTLD_NOW | RTLD_LOCAL);
  return library ? reinterpret_cast<decltype(&::fribidi_log2vis)>(dlsym(library, "fribidi_log2vis")) : nullptr;
}

}  // namespace

std::string visualText(const std::string& utf8) {
  const std::u32string logical = drawing::codePoints(utf8);
  if (std::none_of(logical.begin(), logical.end(), runsFromRight)) return utf8;
  static const auto toVisual = loaded();
  if (toVisual == nullptr) return utf8;
  const std::vector<FriBidiChar> from(logical.begin(), logical.end());
  std::vector<FriBidiChar> visual(from.size() + 1);
  FriBidiParType direction = FRIBIDI_PAR_ON;
  const auto length = static_cast<FriBidiStrIndex>(from.size());
  if (toVisual(from.data(), length, &direction, visual.data(), nullptr, nullptr, nullptr) == 0) return utf8;
  std::string text;
  for (size_t i = 0; i < from.size(); ++i) {
    if (isUnseen(visual[i])) continue;
    utf8proc_uint8_t bytes[4];
    const auto count = utf8proc_encode_char(static_cast<utf8proc_int32_t>(visual[i]), bytes);
    text.append(reinterpret_cast<char*>(bytes), static_cast<size_t>(count));
  }
  return text;
}

}  // namespace kelo::pictures::native
