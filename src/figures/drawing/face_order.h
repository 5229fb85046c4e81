// The painting order of faces of any shape and number of surfaces.
#pragma once

#include <vector>

#include "figures/drawing/surface_faces.h"

namespace kelo::drawing {

/// The faces from the furthest to the nearest. Faces that pierce each other are cut where they do,
/// so that what is hidden is hidden.
std::vector<Face> inPaintingOrder(std::vector<Face> faces);

}  // namespace kelo::drawing
