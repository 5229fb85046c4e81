// The faces of surfaces as they are painted: cut at the box, projected, coloured by height, from
// the furthest to the nearest.
#pragma once

#include <vector>

#include "figures/drawing/box_view.h"
#include "figures/drawing/display_list.h"

namespace kelo::drawing {

struct Face {
  static constexpr int kMostCorners = 10;  // a triangle or a quadrilateral cut at six planes
  uint32_t surface = 0;   ///< from 1
  uint8_t count = 0;      ///< of corners
  uint16_t isOnMesh = 0;  ///< bit k: the edge from corner k to the next is a line of the mesh
  float height = 0;       ///< 0 to 1 between the limits of z
  std::array<Vec3, kMostCorners> corners;  ///< on the screen
  double depth() const;
};

/// All visible faces in painting order. `resolution`: the least extent in points that a cell of a
/// mesh should have; finer meshes are thinned.
std::vector<Face> facesOf(const figures::SurfData& surface, const BoxView& view, double resolution);

}  // namespace kelo::drawing
