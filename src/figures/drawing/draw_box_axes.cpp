// Each axis runs along an edge of the box's outline, where nothing of the surface can lie over its
// texts: x and y along the lowest such edge on the screen, z along the leftmost. An axis that is
// seen end on is left out. Texts stand on the outer side of their edge; one that would lie over
// another or leave the picture is moved or left out.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "figures/drawing/draw_surface.h"
#include "figures/drawing/text_fit.h"
#include "figures/tick_labels.h"

namespace kelo::drawing {
namespace {

using figures::Axis;
using figures::SurfData;

constexpr double Vec3::*kCoordinates[] = {&Vec3::x, &Vec3::y, &Vec3::z};
constexpr double kShortestAxis = 1.5;  // em

struct AxisParts {
  Part axis, tick, tickLabel, power, label;
};
constexpr AxisParts kParts[] = {
    {Part::xAxis, Part::xTick, Part::xTickLabel, Part::xAxisPower, Part::xLabel},
    {Part::yAxis, Part::yTick, Part::yTickLabel, Part::yAxisPower, Part::yLabel},
    {Part::zAxis, Part::zTick, Part::zTickLabel, Part::zAxisPower, Part::zLabel},
};

double halfEdge(int axis) { return axis == 2 ? BoxView::kHeight : 1; }

struct Edge {
  Vec2 lower, upper;  ///< on the screen, at the axis's limits
  Vec2 outward;       ///< of length 1, away from the box

  Vec2 at(double share) const { return lower + (upper - lower) * share; }
  double length() const { return std::hypot(upper.x - lower.x, upper.y - lower.y); }
};

class BoxAxes {
 public:
  BoxAxes(Sheet& sheet, const SurfData& surface, const BoxView& view)
      : sheet_(sheet), surface_(surface), view_(view), center_(view.place({})) {}

  void draw() {
    std::array<std::optional<Edge>, 3> edges;
    for (int axis = 0; axis < 3; ++axis) edges[axis] = chooseEdge(axis);
    for (int axis = 0; axis < 3; ++axis) {
      if (edges[axis]) drawEdge(axis, *edges[axis]);
    }
    for (const int axis : {2, 0, 1}) {
      if (edges[axis]) drawTickLabels(axis, *edges[axis]);
    }
    for (const int axis : {2, 0, 1}) {
      if (edges[axis]) drawLabel(axis, *edges[axis]);
    }
  }

 private:
  bool facesEye(int axis, double side) const {
    Vec3 normal;
    normal.*kCoordinates[axis] = side;
    return view_.facing(normal) > 1e-6;
  }

  Edge edgeAt(int axis, int u, double sideU, int v, double sideV) const {
    Vec3 end;
    end.*kCoordinates[u] = sideU * halfEdge(u);
    end.*kCoordinates[v] = sideV * halfEdge(v);
    end.*kCoordinates[axis] = -halfEdge(axis);
    Edge edge;
    edge.lower = view_.place(end);
    end.*kCoordinates[axis] = halfEdge(axis);
    edge.upper = view_.place(end);
    const Vec2 along = edge.upper - edge.lower, away = edge.at(0.5) - center_;
    const double length = std::fmax(edge.length(), 1e-9);
    edge.outward = {along.y / length, -along.x / length};
    if (edge.outward.x * away.x + edge.outward.y * away.y < 0) edge.outward = edge.outward * -1;
    return edge;
  }

  /// Of the four edges along an axis, those where a face that is seen meets one that is not make
  /// the outline.
  std::optional<Edge> chooseEdge(int axis) const {
    const int u = (axis + 1) % 3, v = (axis + 2) % 3;
    std::optional<Edge> best;
    double bestPlace = -HUGE_VAL;
    for (const double sideU : {-1.0, 1.0}) {
      for (const double sideV : {-1.0, 1.0}) {
        if (facesEye(u, sideU) == facesEye(v, sideV)) continue;
        const Edge edge = edgeAt(axis, u, sideU, v, sideV);
        if (edge.length() < kShortestAxis * sheet_.em) continue;
        const Vec2 middle = edge.at(0.5);
        const double place = axis == 2 ? -middle.x + 0.01 * middle.y : middle.y - 0.01 * middle.x;
        if (place > bestPlace + 1e-6) best = edge, bestPlace = place;
      }
    }
    return best;
  }

  void drawEdge(int axis, const Edge& edge) {
    const Paint paint = sheet_.stroke(sheet_.theme.axis, 1);
    sheet_.list.segment({kParts[axis].axis}, paint, edge.lower, edge.upper);
    const figures::AxisReading reading = surface_.axis(static_cast<Axis>(axis));
    const double lower = reading.limits.lower / 2, width = reading.limits.upper / 2 - lower;
    double before = -HUGE_VAL;
    if (sheet_.tickLength() <= 0) return;
    for (const double tick : reading.ticks) {
      const double share = (tick / 2 - lower) / width;
      if (!(share >= 0 && share <= 1) || (share - before) * edge.length() < 2) continue;
      before = share;
      const Vec2 from = edge.at(share);
      sheet_.list.segment({kParts[axis].tick}, paint, from, from + edge.outward * sheet_.tickLength());
    }
  }

  /// Distance of a text's centre from a line that it touches with its box.
  static double support(Vec2 direction, double width, double height) {
    return std::fabs(direction.x) * width / 2 + std::fabs(direction.y) * height / 2;
  }

  Rect boxOf(Vec2 center, double width, double height) const {
    return {center.x - width / 2, center.y - height / 2, center.x + width / 2, center.y + height / 2};
  }

  bool isFree(const Rect& box) const {
    const Rect picture{0, 0, sheet_.list.size.width, sheet_.list.size.height};
    const bool isInside = picture.contains({box.left, box.top}) && picture.contains({box.right, box.bottom});
    return isInside &&
           std::none_of(taken_.begin(), taken_.end(), [&](const Rect& other) { return other.overlaps(box); });
  }

  /// A text around its centre; a turned one reads upwards.
  void place(Role role, Vec2 center, const std::string& text, double size, Rgba color, bool isTurned = false) {
    const double width = sheet_.measure.width(text, size), height = sheet_.measure.capHeight(size);
    const Vec2 baseline = isTurned ? Vec2{center.x + height / 2, center.y} : Vec2{center.x, center.y + height / 2};
    sheet_.text(role, baseline, text, size, Anchor::middle, color, isTurned ? -90 : 0);
    taken_.push_back(boxOf(center, isTurned ? height : width, isTurned ? width : height).grownBy(0.3 * sheet_.em));
  }

  void drawTickLabels(int axis, const Edge& edge) {
    const double size = sheet_.tickSize(), height = sheet_.measure.capHeight(size);
    const SizedMeasure measure(sheet_.measure, size);
    const bool isUpright = std::fabs(edge.upper.y - edge.lower.y) > std::fabs(edge.upper.x - edge.lower.x);
    std::optional<double> lineHeight;
    if (isUpright) lineHeight = sheet_.measure.lineHeight(size);
    figures::TickLabels labels = figures::tickLabels(surface_.axis(static_cast<Axis>(axis)), edge.length(),
                                                     {measure, lineHeight, kDigits});
    powers_[axis] = labels.power;
    if (labels.labels.size() > 2) std::rotate(labels.labels.begin() + 1, labels.labels.end() - 1, labels.labels.end());
    for (const figures::TickLabel& label : labels.labels) {  // the ends first: they are to be kept
      const double width = measure.width(label.text);
      const double distance = sheet_.tickLength() + 0.45 * sheet_.em + support(edge.outward, width, height);
      reach_[axis] = std::fmax(reach_[axis], distance + support(edge.outward, width, height));
      const Vec2 center = edge.at(label.along / edge.length()) + edge.outward * distance;
      if (!isFree(boxOf(center, width, height))) continue;
      place({kParts[axis].tickLabel}, center, label.text, size, sheet_.theme.tickLabel);
    }
  }

  const std::string& labelOf(int axis) const {
    return axis == 0 ? surface_.xLabelText : axis == 1 ? surface_.yLabelText : surface_.zLabelText;
  }

  /// The label beside the middle of its edge, with the power of ten after it; along the axis z it
  /// is turned.
  void drawLabel(int axis, const Edge& edge) {
    const double size = sheet_.em, height = sheet_.measure.capHeight(size);
    const bool isTurned = axis == 2 && std::fabs(edge.outward.x) > 0.8 && sheet_.options.fontSize == 0;
    const double room = isTurned ? edge.length() : 0.42 * sheet_.list.size.width;
    const std::string power = powerText(powers_[axis]);
    const std::string label = fitted(labelOf(axis), sheet_.measure, size, room);
    const double gap = label.empty() || power.empty() ? 0 : 0.5 * size;
    const double labelLength = sheet_.measure.width(label, size), powerLength = sheet_.measure.width(power, size);
    const double length = labelLength + gap + powerLength;
    if (length == 0) return;
    const Vec2 extent = isTurned ? Vec2{height, length} : Vec2{length, height};
    const double distance = reach_[axis] + 0.55 * sheet_.em + support(edge.outward, extent.x, extent.y);
    const std::optional<Vec2> free = freeNear(edge, distance, extent);
    if (!free) return;
    const Vec2 center = *free;
    const Vec2 reading = isTurned ? Vec2{0, -1} : Vec2{1, 0};
    const Vec2 start = center - reading * (length / 2), end = center + reading * (length / 2);
    const auto put = [&](Part part, Vec2 at, const std::string& text, Rgba color) {
      if (!text.empty()) place({part}, at, text, size, color, isTurned);
    };
    put(kParts[axis].label, start + reading * (labelLength / 2), label, sheet_.theme.label);
    put(kParts[axis].power, end - reading * (powerLength / 2), power, sheet_.theme.tickLabel);
  }

  /// A place in the picture that is free: beside the middle of the edge if it can be, else further
  /// along or further out.
  std::optional<Vec2> freeNear(const Edge& edge, double distance, Vec2 extent) const {
    const Size size = sheet_.list.size;
    const double margin = 0.3 * sheet_.em;
    const auto kept = [&](double at, double half, double length) {
      const double least = std::fmin(half + margin, length / 2);
      return std::clamp(at, least, length - least);
    };
    const Vec2 half = extent * 0.5;
    for (int step = 0; step < 8; ++step) {
      for (const double along : {0.5, 0.38, 0.62, 0.25, 0.75, 0.1, 0.9}) {
        const Vec2 wanted = edge.at(along) + edge.outward * (distance + 0.4 * sheet_.em * step);
        const Vec2 place{kept(wanted.x, half.x, size.width), kept(wanted.y, half.y, size.height)};
        if (isFree(boxOf(place, extent.x, extent.y))) return place;
      }
    }
    return std::nullopt;
  }

  Sheet& sheet_;
  const SurfData& surface_;
  const BoxView& view_;
  Vec2 center_;
  std::array<int, 3> powers_{};
  std::array<double, 3> reach_{};
  std::vector<Rect> taken_;
};

}  // namespace

void drawBoxAxes(Sheet& sheet, const SurfData& surface, const BoxView& view) { BoxAxes(sheet, surface, view).draw(); }

}  // namespace kelo::drawing
