#include "figures/drawing/face_order.h"

#include <algorithm>

namespace kelo::drawing {

std::vector<Face> inPaintingOrder(std::vector<Face> faces) {
  std::stable_sort(faces.begin(), faces.end(), [](const Face& a, const Face& b) { return a.depth() < b.depth(); });
  return faces;
}

}  // namespace kelo::drawing
