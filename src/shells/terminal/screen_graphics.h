// What the terminal can show besides text, found out by asking it.
#pragma once

#include <string>

#include "figures/pictures/bitmap.h"

namespace kelo::terminal {

struct ScreenGraphics {
  enum class Protocol { none, kitty, sixel };
  Protocol protocol = Protocol::none;
  double cellWidth = 8, cellHeight = 16;  ///< pixels, where the terminal tells
};

/// Asks the terminal behind standard input and output; keys that are typed meanwhile may be lost. A
/// terminal that does not answer within a fifth of a second shows no pictures. REQUIRES: both are
/// terminals, nothing else reads
ScreenGraphics askForGraphics();

/// What shows a PNG there and goes to the next line.
std::string kittyPicture(const std::string& png);
/// The same of pixels, by the sixel library. throws Problem, when it is missing
std::string sixelPicture(const pictures::Bitmap& bitmap);

}  // namespace kelo::terminal
