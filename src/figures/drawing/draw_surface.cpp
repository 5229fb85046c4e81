#include "figures/drawing/draw_surface.h"

#include "figures/drawing/color_map.h"
#include "figures/drawing/description.h"
#include "figures/drawing/drawing.h"
#include "figures/drawing/surface_faces.h"
#include "figures/drawing/text_fit.h"
#include "figures/tick_labels.h"

namespace kelo::drawing {
namespace {

using figures::SurfData;

/// Cells of a mesh that would be smaller, in points, are joined.
constexpr double kLeastCell = 2;
constexpr double kLeastCellOfDots = 26;
/// A face is painted a little larger than it is, so that no ground shines through between two.
constexpr double kOverlap = 0.5;

/// What the texts beside the axis z take.
double besideBox(const Sheet& sheet, const SurfData& surface) {
  const SizedMeasure measure(sheet.measure, sheet.tickSize());
  const double length = 0.45 * sheet.list.size.height;
  double widest = 0;
  for (const auto& label :
       figures::tickLabels(surface.axis(figures::Axis::z), length, {measure, {}, kDigits}).labels) {
    widest = std::fmax(widest, measure.width(label.text));
  }
  return sheet.tickLength() + widest + (surface.zLabelText.empty() ? 1.4 : 2.7) * sheet.em;
}

/// What the box leaves for the texts around it.
Rect roomForBox(const Sheet& sheet, const SurfData& surface, size_t titleLines) {
  const double em = sheet.em, title = static_cast<double>(titleLines) * sheet.measure.lineHeight(sheet.titleSize());
  const Size size = sheet.list.size;
  const bool isCells = sheet.options.fontSize > 0;
  double side = isCells ? 6 * em : std::fmax(besideBox(sheet, surface), 4.4 * em),
         bottom = isCells ? 2.5 * em : 4.4 * em;
  double top = title + (isCells ? 0 : 1.3 * em);
  side = std::fmin(side, 0.3 * size.width);
  bottom = std::fmin(bottom, 0.3 * size.height);
  top = std::fmin(top, 0.3 * size.height);
  return {side, top, size.width - side, size.height - bottom};
}

void drawTitle(Sheet& sheet, const std::vector<std::string>& lines) {
  const double step = sheet.measure.lineHeight(sheet.titleSize());
  const bool isCells = sheet.options.fontSize > 0;
  double baseline = isCells ? step : 0.9 * sheet.em + sheet.measure.capHeight(sheet.titleSize());
  for (const std::string& line : lines) {
    sheet.text({Part::title}, {sheet.list.size.width / 2, baseline}, line, sheet.titleSize(), Anchor::middle,
               sheet.theme.label);
    baseline += step;
  }
}

/// A single row or column of points has no faces and is drawn as a line.
void drawAsLine(Sheet& sheet, const SurfData::Surface& surface, Role role, const BoxView& view) {
  sheet.list.begin(DisplayList::Kind::path, role, sheet.stroke(heightColor(0.35), 1.6));
  bool isOpen = true;
  for (const auto& point : surface.points) {
    const Vec3 p = view.inBox(point);
    const bool isSeen =
        p.isFinite() && std::fabs(p.x) <= 1 && std::fabs(p.y) <= 1 && std::fabs(p.z) <= BoxView::kHeight;
    if (isSeen) sheet.list.point(view.place(p));
    if (!isSeen && isOpen) sheet.list.breakPath();
    isOpen = isSeen;
  }
  sheet.list.dropIfEmpty();
}

/// All edges on the mesh: one polygon. Some: the polygon, and a path for those.
void drawFace(Sheet& sheet, const Face& face, double meshWidth) {
  const Role role{Part::surface, face.surface};
  const Rgba color = heightColor(face.height), edge = mixed(color, {0, 0, 0, 255}, 0.38);
  const auto all = static_cast<uint16_t>((1u << face.count) - 1);
  const bool isOutlined = face.isOnMesh == all && meshWidth > 0;
  Paint paint = isOutlined ? Paint{edge, color, static_cast<float>(meshWidth), {}} : Paint{color, color, kOverlap, {}};
  sheet.list.begin(DisplayList::Kind::polygon, role, paint);
  for (int k = 0; k < face.count; ++k) sheet.list.point(face.corners[k].x, face.corners[k].y);
  if (isOutlined || meshWidth <= 0 || face.isOnMesh == 0) return;
  sheet.list.begin(DisplayList::Kind::path, role, {edge, {}, static_cast<float>(meshWidth), {}});
  bool isFirst = true;
  for (int k = 0; k < face.count; ++k) {
    if (!(face.isOnMesh >> k & 1)) continue;
    if (!isFirst) sheet.list.breakPath();
    isFirst = false;
    for (const Vec3& corner : {face.corners[k], face.corners[(k + 1) % face.count]})
      sheet.list.point(corner.x, corner.y);
  }
}

}  // namespace

void drawFaces(Sheet& sheet, const SurfData& surface, const BoxView& view) {
  for (size_t k = 0; k < surface.surfaces.size(); ++k) {
    const SurfData::Surface& one = surface.surfaces[k];
    if (one.attributes.numRows != 1 && one.attributes.numCols != 1) continue;
    drawAsLine(sheet, one, {Part::surface, static_cast<uint32_t>(k + 1)}, view);
  }
  const double meshWidth = 0.6 * std::fmin(sheet.unit, 1.5);
  for (const Face& face : facesOf(surface, view, sheet.options.fontSize > 0 ? kLeastCellOfDots : kLeastCell))
    drawFace(sheet, face, meshWidth);
}

DisplayList draw(const SurfData& surface, const DrawingOptions& options) {
  Sheet sheet(options);
  describe(surface, sheet.list);
  std::vector<std::string> title;
  if (surface.title) {
    const double width = sheet.list.size.width - 2 * sheet.em;
    title = wrapped(*surface.title, sheet.measure, sheet.titleSize(), width,
                    sheet.list.size.height < 14 * sheet.em ? 1 : 2);
  }
  const Rect room = roomForBox(sheet, surface, title.size());
  sheet.list.plotArea = room;
  const BoxView view(surface, room);
  drawWalls(sheet, surface, view);
  drawFaces(sheet, surface, view);
  drawBoxAxes(sheet, surface, view);
  drawTitle(sheet, title);
  return std::move(sheet.list);
}

}  // namespace kelo::drawing
