// The current figure of a played console as a picture for a page.
#pragma once

#include <string>

#include "player/player.h"

namespace kelo::docs {

/// An SVG document; empty when there is no figure.
std::string figureSvg(player::Player& player);

}  // namespace kelo::docs
