// Texts that the figures' font alone, letter by letter, cannot show: scripts that run from right to
// left or whose letters change beside others, and characters that only other fonts have.
#pragma once

#include <string>

#include "figures/pictures/native/cairo_library.h"

namespace kelo::pictures::native {

/// Whether a text is more than letters of the figures' font from left to right.
bool needsLayout(const CairoLibrary& cairo, const std::string& utf8);

/// Paints it with its baseline on the context's origin, which stands at a share of its width, 0 to
/// 1, in letters of that size. Fonts of the system take the place of missing letters; where there
/// is none, a box. False: the library for it is missing and nothing was painted.
bool paintLaidOut(const CairoLibrary& cairo, cairo_t* context, const std::string& utf8, double size, double share);

}  // namespace kelo::pictures::native
