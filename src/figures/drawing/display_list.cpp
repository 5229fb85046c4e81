#include "figures/drawing/display_list.h"

#include <array>
#include <string_view>

namespace kelo::drawing {
namespace {

constexpr std::array<std::string_view, 25> kPartNames = {
    "background", "plot area",   "x axis", "x tick", "x tick label", "x axis power", "x label", "y axis", "y tick",
    "y tick label", "y axis power", "y label", "z axis", "z tick", "z tick label", "z axis power", "z label", "grid",
    "title", "line", "markers", "legend", "legend line", "legend text", "surface",
};

}  // namespace

std::string Role::text() const {
  std::string text(kPartNames[static_cast<size_t>(part)]);
  return number == 0 ? text : text + " " + std::to_string(number);
}

DisplayList::Item DisplayList::operator[](size_t i) const {
  const size_t first = firstPoint_[i], end = i + 1 < count() ? firstPoint_[i + 1] : points_.size();
  return {kinds_[i],
          roles_[i],
          paints_[paintOf_[i]],
          std::span(points_).subspan(first, end - first),
          kinds_[i] == Kind::text ? &texts_[payloads_[i]] : nullptr,
          kinds_[i] == Kind::marker ? &markers_[payloads_[i]] : nullptr};
}

void DisplayList::begin(Kind kind, Role role, const Paint& paint) {
  kinds_.push_back(kind);
  roles_.push_back(role);
  firstPoint_.push_back(static_cast<uint32_t>(points_.size()));
  payloads_.push_back(0);
  if (paints_.empty() || paints_.back() != paint) paints_.push_back(paint);
  paintOf_.push_back(static_cast<uint32_t>(paints_.size() - 1));
}

void DisplayList::segment(Role role, const Paint& paint, Vec2 from, Vec2 to) {
  begin(Kind::path, role, paint);
  point(from);
  point(to);
}

void DisplayList::rectangle(Role role, const Paint& paint, const Rect& rect) {
  begin(Kind::polygon, role, paint);
  point(rect.left, rect.top);
  point(rect.right, rect.top);
  point(rect.right, rect.bottom);
  point(rect.left, rect.bottom);
}

void DisplayList::text(Role role, Vec2 at, Text text) {
  if (text.text.empty()) return;
  begin(Kind::text, role, {});
  payloads_.back() = static_cast<uint32_t>(texts_.size());
  texts_.push_back(std::move(text));
  point(at);
}

void DisplayList::clip(const Rect& rect) {
  begin(Kind::clip, {Role::Part::plotArea, 0}, {});
  point(rect.left, rect.top);
  point(rect.right, rect.bottom);
}

void DisplayList::dropIfEmpty() {
  if (kinds_.empty() || firstPoint_.back() != points_.size()) return;
  kinds_.pop_back();
  roles_.pop_back();
  firstPoint_.pop_back();
  payloads_.pop_back();
  paintOf_.pop_back();
}

}  // namespace kelo::drawing
