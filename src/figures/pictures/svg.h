// A display list as SVG: text stays text, parts are groups with their role as class, a title and a
// description are there for screen readers. The same list gives the same bytes on every machine.
#pragma once

#include <string>

#include "figures/drawing/display_list.h"

namespace kelo::pictures {

std::string svg(const drawing::DisplayList& list);

}  // namespace kelo::pictures
