#include "figures/coding/decoder.h"

#include "figures/coding/keyed_archive.h"
#include "messages/catalogue/figures.h"

namespace kelo::figures {

std::string Decoder::bytes() {
  std::optional<std::string> bytes = bytesOfBase64(in_.string());
  if (!bytes) in_.fail("a text is no base64");
  return std::move(*bytes);
}

template <class T>
std::vector<T> Decoder::pointList() {
  std::vector<T> points;
  in_.array([&] {
    if (--pointsLeft_ < 0) in_.fail("too many points");
    read(points.emplace_back());
  });
  points.shrink_to_fit();
  return points;
}

void Decoder::read(Point& point) {
  int count = 0;
  in_.array([&] {
    if (count == 2) in_.fail("a point has two numbers");
    read(count++ == 0 ? point.x : point.y);
  });
  if (count != 2) in_.fail("a point has two numbers");
}

void Decoder::read(Points& points) {
  if (!in_.nextIsString()) {
    points = pointList<Point>();
    return;
  }
  std::optional<std::vector<Point>> older = pointsOfArchive(bytes());
  if (!older || static_cast<int64_t>(older->size()) > pointsLeft_) in_.fail("an archive without points");
  pointsLeft_ -= static_cast<int64_t>(older->size());
  points = std::move(*older);
}

void Decoder::read(SharedPoints<SCNVector3>& points) { points = pointList<SCNVector3>(); }

void Decoder::check(const Limits& limits) const {
  if (limits.upper < limits.lower) in_.fail(text::kLimitsReversed);
}

void Decoder::check(const SurfData::Surface& surface) const {
  const auto [columns, rows, type] = surface.attributes;
  const int64_t count = surface.points.size();
  const bool fits = rows >= 0 && columns >= 0 && (rows == 0 || columns <= count / rows) && rows * columns == count;
  if (!fits) in_.fail("rows and columns do not fit the points");
}

void Decoder::check(const FigureData& data) const {
  if (data.plotData.has_value() == data.surfData.has_value()) in_.fail("one model is expected");
}

}  // namespace kelo::figures
