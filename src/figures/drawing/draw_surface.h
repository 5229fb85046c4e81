// The parts of a surface's picture: the box with its walls, the faces, and the axes around it.
#pragma once

#include "figures/drawing/box_view.h"
#include "figures/drawing/sheet.h"
#include "figures/surf_data.h"

namespace kelo::drawing {

/// The three walls behind the surface, with the grid on them.
void drawWalls(Sheet& sheet, const figures::SurfData& surface, const BoxView& view);
void drawFaces(Sheet& sheet, const figures::SurfData& surface, const BoxView& view);
/// The axes along edges of the box's outline, with ticks, texts and labels.
void drawBoxAxes(Sheet& sheet, const figures::SurfData& surface, const BoxView& view);

}  // namespace kelo::drawing
