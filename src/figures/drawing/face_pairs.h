// What two plane faces on the screen have to do with each other.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "figures/drawing/surface_faces.h"

namespace kelo::drawing {

/// normal * p = distance for all points of a face; the normal has length 1, or 0 for a face without
/// area.
struct Plane {
  Vec3 normal;
  double distance = 0;

  double above(Vec3 p) const { return normal.x * p.x + normal.y * p.y + normal.z * p.z - distance; }
};

Plane planeOf(const Face& face);

/// Each goes through the inside of the other.
bool pierces(const Face& a, const Plane& planeOfA, const Face& b, const Plane& planeOfB);

/// The part of a face above (side 1) or below (side -1) a plane; fewer than three corners: none.
Face cut(const Face& face, const Plane& plane, double side);

/// 1: where both are seen, a is nearer to the eye; -1: b is; 0: they share no place, or touch
/// there.
int nearerOf(const Face& a, const Face& b);

/// Calls for each two faces whose rectangles on the screen overlap, once.
void forEachPair(const std::vector<Face>& faces, const std::function<void(uint32_t, uint32_t)>& call);

}  // namespace kelo::drawing
