#include "figures/pictures/svg_path.h"

#include "figures/drawing/hundredths.h"

namespace kelo::pictures {

using drawing::appendHundredths;
using drawing::hundredths;

void SvgPath::add(std::span<const float> points, bool closes) {
  bool isOpen = false;
  for (size_t i = 0; i + 1 < points.size(); i += 2) {
    if (std::isnan(points[i])) {
      if (isOpen && closes) close();
      isOpen = false;
      continue;
    }
    isOpen ? lineTo(points[i], points[i + 1]) : moveTo(points[i], points[i + 1]);
    isOpen = true;
  }
  if (isOpen && closes) close();
}

void SvgPath::addPiece(std::span<const drawing::Vec2> points, drawing::Vec2 offset, bool closes) {
  for (size_t i = 0; i < points.size(); ++i) {
    const drawing::Vec2 p = points[i] + offset;
    i == 0 ? moveTo(p.x, p.y) : lineTo(p.x, p.y);
  }
  if (closes) close();
}

void SvgPath::addCircle(drawing::Vec2 center, double radius) {
  const int64_t r = hundredths(radius);
  moveTo(center.x - radius, center.y);
  for (const int64_t step : {2 * r, -2 * r}) {
    command('a');
    for (const int64_t value : {r, r, int64_t{0}, int64_t{100}, int64_t{0}, step, int64_t{0}}) number(value);
  }
  close();
}

void SvgPath::moveTo(double x, double y) {
  const int64_t toX = hundredths(x), toY = hundredths(y);
  command(data_.empty() ? 'M' : 'm');
  number(toX - x_);
  number(toY - y_);
  x_ = startX_ = toX;
  y_ = startY_ = toY;
}

/// A step to the point where the path stands already says nothing, unless it is all of a piece.
void SvgPath::lineTo(double x, double y) {
  const int64_t toX = hundredths(x), toY = hundredths(y);
  if (toX == x_ && toY == y_ && last_ != 'm' && last_ != 'M') return;
  if (toY == y_) {
    command('h');
    number(toX - x_);
  } else if (toX == x_) {
    command('v');
    number(toY - y_);
  } else {
    command('l');
    number(toX - x_);
    number(toY - y_);
  }
  x_ = toX;
  y_ = toY;
}

void SvgPath::close() {
  data_ += 'z';
  last_ = 'z';
  x_ = startX_;
  y_ = startY_;
}

/// A letter is said once for the same command again; after a move, steps to a point need none.
void SvgPath::command(char letter) {
  const bool isImplied = letter == last_ ? letter != 'm' : letter == 'l' && last_ == 'm';
  if (!isImplied) data_ += letter;
  last_ = letter;
}

void SvgPath::number(int64_t value) {
  const char before = data_.empty() ? ' ' : data_.back();
  if (value >= 0 && (before == '.' || (before >= '0' && before <= '9'))) data_ += ' ';
  appendHundredths(data_, value);
}

}  // namespace kelo::pictures
