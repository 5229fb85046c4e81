// Two steps: faces of different surfaces that pierce each other are cut along the line where they
// meet; then, for each two faces that overlap on the screen, the one behind at a point they share
// has to come first, and the faces are sorted so that all these demands are met (Newell, Newell and
// Sancha, 1972, as a graph). Where demands run in a circle, which plane faces that do not pierce
// rarely do, the furthest face goes first.
#include "figures/drawing/face_order.h"

#include <algorithm>
#include <numeric>
#include <queue>

#include "figures/drawing/face_pairs.h"

namespace kelo::drawing {
namespace {

/// Beyond this the demands are too many, and faces are sorted by the depth of their middle alone.
constexpr size_t kMostFaces = 60000;

bool pierce(const Face& a, const Face& b) {
  return a.surface != b.surface && pierces(a, planeOf(a), b, planeOf(b));
}

/// Each face with the faces that pierce it, cut at their planes.
std::vector<Face> cutWherePierced(const std::vector<Face>& faces) {
  std::vector<std::vector<uint32_t>> piercers(faces.size());
  forEachPair(faces, [&](uint32_t a, uint32_t b) {
    if (!pierce(faces[a], faces[b])) return;
    piercers[a].push_back(b);
    piercers[b].push_back(a);
  });
  std::vector<Face> result;
  result.reserve(faces.size());
  for (size_t i = 0; i < faces.size(); ++i) {
    const size_t first = result.size();
    result.push_back(faces[i]);
    for (const uint32_t k : piercers[i]) {
      const Plane plane = planeOf(faces[k]);
      for (size_t piece = first, end = result.size(); piece < end; ++piece) {
        if (!pierce(result[piece], faces[k])) continue;
        Face behind = cut(result[piece], plane, -1);
        Face front = cut(result[piece], plane, 1);
        if (behind.count < 3 || front.count < 3) continue;
        result[piece] = behind;
        result.push_back(front);
      }
    }
  }
  return result;
}

std::vector<uint32_t> byDepth(const std::vector<Face>& faces, const std::vector<double>& depths) {
  std::vector<uint32_t> order(faces.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) { return depths[a] < depths[b]; });
  return order;
}

/// The faces in an order in which none comes before one that it covers, the furthest of the
/// possible ones each time.
std::vector<uint32_t> inOrderOfDemands(const std::vector<Face>& faces) {
  std::vector<double> depths(faces.size());
  for (size_t i = 0; i < faces.size(); ++i) depths[i] = faces[i].depth();
  std::vector<std::vector<uint32_t>> covers(faces.size());  // those in front of each
  std::vector<uint32_t> numBehind(faces.size(), 0);
  forEachPair(faces, [&](uint32_t a, uint32_t b) {
    const int nearer = nearerOf(faces[a], faces[b]);
    if (nearer == 0) return;
    const uint32_t back = nearer > 0 ? b : a, front = nearer > 0 ? a : b;
    covers[back].push_back(front);
    ++numBehind[front];
  });
  const std::vector<uint32_t> sorted = byDepth(faces, depths);
  const auto isNearer = [&](uint32_t a, uint32_t b) { return depths[a] != depths[b] ? depths[a] > depths[b] : a > b; };
  std::priority_queue<uint32_t, std::vector<uint32_t>, decltype(isNearer)> ready(isNearer);
  for (const uint32_t i : sorted) {
    if (numBehind[i] == 0) ready.push(i);
  }
  std::vector<uint32_t> order;
  std::vector<bool> isDone(faces.size());
  for (size_t next = 0; order.size() < faces.size();) {
    if (ready.empty()) {  // a circle
      while (isDone[sorted[next]]) ++next;
      ready.push(sorted[next]);
    }
    const uint32_t i = ready.top();
    ready.pop();
    if (isDone[i]) continue;
    isDone[i] = true;
    order.push_back(i);
    for (const uint32_t front : covers[i]) {
      if (!isDone[front] && --numBehind[front] == 0) ready.push(front);
    }
  }
  return order;
}

}  // namespace

std::vector<Face> inPaintingOrder(std::vector<Face> faces) {
  if (faces.size() > kMostFaces) {
    std::stable_sort(faces.begin(), faces.end(), [](const Face& a, const Face& b) { return a.depth() < b.depth(); });
    return faces;
  }
  const std::vector<Face> pieces = cutWherePierced(faces);
  faces.clear();
  for (const uint32_t i : inOrderOfDemands(pieces)) faces.push_back(pieces[i]);
  return faces;
}

}  // namespace kelo::drawing
