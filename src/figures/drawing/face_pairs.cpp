#include "figures/drawing/face_pairs.h"

#include <algorithm>
#include <cmath>

namespace kelo::drawing {
namespace {

/// Lengths below this, in points, are nothing to see.
constexpr double kTiny = 1e-6;
constexpr double kLeastShared = 0.01;  // of area
constexpr double kCellOfGrid = 12;

Vec3 cross(Vec3 a, Vec3 b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// The stretch of a face's cut with a plane along a direction; false when the plane passes it by.
bool stretchAlong(const Face& face, const Plane& plane, Vec3 direction, double& lower, double& upper) {
  lower = HUGE_VAL;
  upper = -HUGE_VAL;
  for (int i = 0; i < face.count; ++i) {
    const Vec3 a = face.corners[i], b = face.corners[(i + 1) % face.count];
    const double aboveA = plane.above(a), aboveB = plane.above(b);
    if ((aboveA > kTiny && aboveB > kTiny) || (aboveA < -kTiny && aboveB < -kTiny) || aboveA == aboveB) continue;
    const double t = std::clamp(aboveA / (aboveA - aboveB), 0.0, 1.0), at = dot(a + (b - a) * t, direction);
    lower = std::fmin(lower, at);
    upper = std::fmax(upper, at);
  }
  return lower < upper;
}

bool hasBothSides(const Face& face, const Plane& plane) {
  bool above = false, below = false;
  for (int i = 0; i < face.count; ++i) {
    const double distance = plane.above(face.corners[i]);
    above |= distance > kTiny;
    below |= distance < -kTiny;
  }
  return above && below;
}

struct ScreenPolygon {
  int count = 0;
  std::array<Vec2, 2 * Face::kMostCorners + 2> points;

  void add(Vec2 p) {
    if (count < static_cast<int>(points.size())) points[count++] = p;
  }
  double area() const {
    double twice = 0;
    for (int i = 0; i < count; ++i) {
      const Vec2 a = points[i], b = points[(i + 1) % count];
      twice += a.x * b.y - a.y * b.x;
    }
    return twice / 2;
  }
  Vec2 middle() const {
    Vec2 sum;
    for (int i = 0; i < count; ++i) sum = sum + points[i];
    return sum * (1.0 / count);
  }
};

ScreenPolygon polygonOf(const Face& face) {
  ScreenPolygon polygon;
  for (int i = 0; i < face.count; ++i) polygon.add({face.corners[i].x, face.corners[i].y});
  return polygon;
}

/// What two convex polygons share (Sutherland and Hodgman, 1974).
ScreenPolygon shared(ScreenPolygon a, const ScreenPolygon& b) {
  const double turn = b.area() > 0 ? 1 : -1;
  for (int i = 0; i < b.count && a.count > 0; ++i) {
    const Vec2 from = b.points[i], edge = b.points[(i + 1) % b.count] - from;
    const auto inside = [&](Vec2 p) { return turn * (edge.x * (p.y - from.y) - edge.y * (p.x - from.x)); };
    ScreenPolygon kept;
    for (int k = 0; k < a.count; ++k) {
      const Vec2 p = a.points[k], q = a.points[(k + 1) % a.count];
      const double inP = inside(p), inQ = inside(q);
      if (inP >= 0) kept.add(p);
      if ((inP >= 0) != (inQ >= 0)) kept.add(p + (q - p) * (inP / (inP - inQ)));
    }
    a = kept;
  }
  return a;
}

Rect boundsOf(const Face& face) {
  Rect bounds{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  for (int i = 0; i < face.count; ++i) {
    const Vec3 p = face.corners[i];
    bounds = {std::fmin(bounds.left, p.x), std::fmin(bounds.top, p.y), std::fmax(bounds.right, p.x),
              std::fmax(bounds.bottom, p.y)};
  }
  return bounds;
}

}  // namespace

Plane planeOf(const Face& face) {
  Vec3 normal;
  for (int i = 1; i + 1 < face.count; ++i) {
    normal = normal + cross(face.corners[i] - face.corners[0], face.corners[i + 1] - face.corners[0]);
  }
  const double length = std::sqrt(dot(normal, normal));
  if (length < kTiny) return {};
  normal = normal * (1 / length);
  return {normal, dot(normal, face.corners[0])};
}

bool pierces(const Face& a, const Plane& planeOfA, const Face& b, const Plane& planeOfB) {
  if (!hasBothSides(a, planeOfB) || !hasBothSides(b, planeOfA)) return false;
  const Vec3 line = cross(planeOfA.normal, planeOfB.normal);
  const double length = std::sqrt(dot(line, line));
  if (length < kTiny) return false;
  double lowerA, upperA, lowerB, upperB;
  const Vec3 direction = line * (1 / length);
  if (!stretchAlong(a, planeOfB, direction, lowerA, upperA)) return false;
  if (!stretchAlong(b, planeOfA, direction, lowerB, upperB)) return false;
  return std::fmin(upperA, upperB) - std::fmax(lowerA, lowerB) > kTiny;
}

Face cut(const Face& face, const Plane& plane, double side) {
  Face kept = face;
  kept.count = 0;
  kept.isOnMesh = 0;
  const auto add = [&](Vec3 p, bool onMesh) {
    if (kept.count >= Face::kMostCorners) return;
    if (onMesh) kept.isOnMesh |= static_cast<uint16_t>(1u << kept.count);
    kept.corners[kept.count++] = p;
  };
  for (int i = 0; i < face.count; ++i) {
    const Vec3 a = face.corners[i], b = face.corners[(i + 1) % face.count];
    const double inA = side * plane.above(a), inB = side * plane.above(b);
    const bool onMesh = face.isOnMesh >> i & 1;
    if (inA >= 0) add(a, onMesh);
    if ((inA >= 0) != (inB >= 0)) add(a + (b - a) * (inA / (inA - inB)), inA < 0 && onMesh);
  }
  return kept;
}

int nearerOf(const Face& a, const Face& b) {
  const ScreenPolygon both = shared(polygonOf(a), polygonOf(b));
  if (both.count < 3 || std::fabs(both.area()) < kLeastShared) return 0;
  const Plane planeA = planeOf(a), planeB = planeOf(b);
  if (std::fabs(planeA.normal.z) < kTiny || std::fabs(planeB.normal.z) < kTiny) return 0;
  const Vec2 at = both.middle();
  const auto depth = [at](const Plane& plane) {
    return (plane.distance - plane.normal.x * at.x - plane.normal.y * at.y) / plane.normal.z;
  };
  const double difference = depth(planeA) - depth(planeB);
  return std::fabs(difference) < 1e-9 ? 0 : difference > 0 ? 1 : -1;
}

/// Faces are sorted into the cells of a grid; a pair is met in the cell where its shared rectangle
/// begins.
void forEachPair(const std::vector<Face>& faces, const std::function<void(uint32_t, uint32_t)>& call) {
  if (faces.empty()) return;
  std::vector<Rect> bounds;
  Rect all{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  for (const Face& face : faces) {
    const Rect& b = bounds.emplace_back(boundsOf(face));
    all = {std::fmin(all.left, b.left), std::fmin(all.top, b.top), std::fmax(all.right, b.right),
           std::fmax(all.bottom, b.bottom)};
  }
  const double cell = std::fmax(kCellOfGrid, std::fmax(all.width(), all.height()) / 500);
  const auto column = [&](double x) { return static_cast<int>((x - all.left) / cell); };
  const auto row = [&](double y) { return static_cast<int>((y - all.top) / cell); };
  const int columns = column(all.right) + 1, rows = row(all.bottom) + 1;
  std::vector<std::vector<uint32_t>> cells(static_cast<size_t>(columns) * static_cast<size_t>(rows));
  for (uint32_t i = 0; i < faces.size(); ++i) {
    const Rect& b = bounds[i];
    for (int y = row(b.top); y <= row(b.bottom); ++y) {
      for (int x = column(b.left); x <= column(b.right); ++x) {
        std::vector<uint32_t>& inCell = cells[static_cast<size_t>(y * columns + x)];
        for (const uint32_t k : inCell) {
          const double left = std::fmax(b.left, bounds[k].left), top = std::fmax(b.top, bounds[k].top);
          if (b.overlaps(bounds[k]) && column(left) == x && row(top) == y) call(k, i);
        }
        inCell.push_back(i);
      }
    }
  }
}

}  // namespace kelo::drawing
