// Hidden faces: of planes that cross, the nearest one is on top at every place of the screen.
#include <gtest/gtest.h>

#include "figures/drawing/box_view.h"
#include "figures_drawing/samples.h"

namespace kelo::drawing {
namespace {

using figures::SurfData;
using PlaneHeight = double (*)(double, double);

constexpr PlaneHeight kPlanes[] = {
    [](double x, double) { return x; },
    [](double, double y) { return y / 2; },
    [](double x, double y) { return (y - x) / 3 + 0.4; },
};

bool isInside(std::span<const float> p, Vec2 at) {
  bool inside = false;
  for (size_t i = 0, k = p.size() - 2; i + 1 < p.size(); k = i, i += 2) {
    const bool crosses = (p[i + 1] > at.y) != (p[k + 1] > at.y);
    if (crosses && at.x < (p[k] - p[i]) * (at.y - p[i + 1]) / (p[k + 1] - p[i + 1]) + p[i]) inside = !inside;
  }
  return inside;
}

/// The surface that is painted last over a place; 0: none.
uint32_t painted(const DisplayList& list, Vec2 at) {
  uint32_t top = 0;
  for (size_t i = 0; i < list.count(); ++i) {
    const DisplayList::Item item = list[i];
    const bool isFace = item.kind == DisplayList::Kind::polygon && item.role.part == Role::Part::surface;
    if (isFace && isInside(item.points, at)) top = item.role.number;
  }
  return top;
}

/// The plane that is nearest to the eye there, 0: none; -1 too near to an edge or a crossing to
/// tell.
int nearest(const BoxView& view, Vec2 at) {
  double best = -HUGE_VAL, second = -HUGE_VAL;
  int result = 0;
  for (int k = 0; k < 3; ++k) {
    const auto on = [&](double x, double y) {
      return view.onScreen(view.inBox({float(x), float(y), float(kPlanes[k](x, y))}));
    };
    const Vec3 o = on(0, 0), a = on(1, 0) - o, b = on(0, 1) - o;
    const double d = a.x * b.y - a.y * b.x, x = at.x - o.x, y = at.y - o.y;
    const double s = (x * b.y - y * b.x) / d, t = (a.x * y - a.y * x) / d,
                 reach = std::fmax(std::fabs(s), std::fabs(t));
    if (std::fabs(reach - 3) < 0.03) return -1;
    if (reach > 3) continue;
    const double depth = o.z + s * a.z + t * b.z;
    second = std::fmax(second, std::fmin(best, depth));
    if (depth > best) best = depth, result = k + 1;
  }
  return best - second < 0.02 ? -1 : result;
}

TEST(FaceOrder, crossingPlanes) {
  SurfData planes({sampleSurface(2, 2, kPlanes[0]), sampleSurface(9, 5, kPlanes[1]), sampleSurface(3, 30, kPlanes[2])});
  for (const float angle : {-45.0f, 10.0f, 100.0f, 215.0f}) {
    planes.rotationAngles = {-50, 0, angle};
    const DisplayList list = draw(planes, {});
    const BoxView view(planes, list.plotArea);
    std::mt19937 random(5);
    int wrong = 0;
    for (int round = 0; round < 2000; ++round) {
      const Vec2 at{static_cast<double>(random() % 6400) / 10, static_cast<double>(random() % 4800) / 10};
      const int expected = nearest(view, at);
      if (expected >= 0) wrong += painted(list, at) != static_cast<uint32_t>(expected);
    }
    EXPECT_EQ(wrong, 0) << angle;
  }
}

}  // namespace
}  // namespace kelo::drawing
