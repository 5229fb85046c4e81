#include "docs/builder/figure_svg.h"

namespace kelo::docs {

std::string figureSvg(player::Player&) { return ""; }

}  // namespace kelo::docs
