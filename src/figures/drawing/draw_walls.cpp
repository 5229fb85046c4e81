#include <cmath>

#include "figures/drawing/draw_surface.h"

namespace kelo::drawing {
namespace {

using figures::Axis;
using figures::SurfData;

constexpr double Vec3::*kCoordinates[] = {&Vec3::x, &Vec3::y, &Vec3::z};

double halfEdge(int axis) { return axis == 2 ? BoxView::kHeight : 1; }

/// A wall stands across one axis, at its lower or upper end.
struct Wall {
  int axis;
  double at;

  Vec3 point(int along, double a, int across, double b) const {
    Vec3 p;
    p.*kCoordinates[axis] = at;
    p.*kCoordinates[along] = a;
    p.*kCoordinates[across] = b;
    return p;
  }
};

void drawGridAcross(Sheet& sheet, const SurfData& surface, const BoxView& view, const Wall& wall, int along,
                    int across) {
  const figures::AxisReading axis = surface.axis(static_cast<Axis>(along));
  double before = -HUGE_VAL;
  for (const double tick : axis.ticks) {
    const double share = (tick / 2 - axis.limits.lower / 2) / (axis.limits.upper / 2 - axis.limits.lower / 2);
    if (!(share > 0.004 && share < 0.996) || share - before < 0.01) continue;
    before = share;
    const double place = (2 * share - 1) * halfEdge(along), end = halfEdge(across);
    sheet.list.point(view.place(wall.point(along, place, across, -end)));
    sheet.list.point(view.place(wall.point(along, place, across, end)));
    sheet.list.breakPath();
  }
}

void drawWall(Sheet& sheet, const SurfData& surface, const BoxView& view, const Wall& wall) {
  const int along = (wall.axis + 1) % 3, across = (wall.axis + 2) % 3;
  const double a = halfEdge(along), b = halfEdge(across);
  Paint paint = sheet.stroke(sheet.theme.grid, 0.8);
  paint.fill = sheet.theme.wall;
  sheet.list.begin(DisplayList::Kind::polygon, {Part::plotArea}, paint);
  for (const Vec2 corner : {Vec2{-a, -b}, Vec2{a, -b}, Vec2{a, b}, Vec2{-a, b}}) {
    sheet.list.point(view.place(wall.point(along, corner.x, across, corner.y)));
  }
  if (!surface.showGrid) return;
  sheet.list.begin(DisplayList::Kind::path, {Part::grid}, sheet.stroke(sheet.theme.grid, 0.6));
  drawGridAcross(sheet, surface, view, wall, along, across);
  drawGridAcross(sheet, surface, view, wall, across, along);
  sheet.list.dropIfEmpty();
}

}  // namespace

void drawWalls(Sheet& sheet, const SurfData& surface, const BoxView& view) {
  for (int axis = 0; axis < 3; ++axis) {
    Vec3 normal;
    normal.*kCoordinates[axis] = 1;
    const double facing = view.facing(normal);
    if (std::fabs(facing) < 1e-6) continue;
    drawWall(sheet, surface, view, {axis, facing < 0 ? halfEdge(axis) : -halfEdge(axis)});
  }
}

}  // namespace kelo::drawing
