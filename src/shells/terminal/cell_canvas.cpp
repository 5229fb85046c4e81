#include "shells/terminal/cell_canvas.h"

#include <algorithm>
#include <cmath>

#include "display/cell_measure.h"

namespace kelo::terminal {
namespace {

using drawing::Rgba;

/// The bit of a dot in a braille character, by its place in the cell.
constexpr uint8_t kDotBits[4][2] = {{0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};

std::string braille(uint8_t dots) {
  return {'\xe2', static_cast<char>(0xa0 | dots >> 6), static_cast<char>(0x80 | (dots & 63))};
}

/// The nearest colour of the cube that terminals of 256 colours share.
std::string colorCode(Rgba color) {
  const auto level = [](uint8_t channel) { return (channel * 5 + 127) / 255; };
  return "\x1b[38;5;" + std::to_string(16 + 36 * level(color.red) + 6 * level(color.green) + level(color.blue)) + "m";
}

size_t lengthOfCharacter(const std::string& text, size_t at) {
  size_t end = at + 1;
  while (end < text.size() && (text[end] & 0xc0) == 0x80) ++end;
  return end - at;
}

}  // namespace

CellCanvas::CellCanvas(int columns, int rows)
    : columns_(columns), rows_(rows), cells_(static_cast<size_t>(columns) * static_cast<size_t>(rows)) {}

CellCanvas::Cell* CellCanvas::cellAt(int column, int row) {
  if (column < 0 || row < 0 || column >= columns_ || row >= rows_) return nullptr;
  return &cells_[static_cast<size_t>(row * columns_ + column)];
}

void CellCanvas::setDot(int x, int y, Rgba color) {
  if (x < 0 || y < 0) return;
  Cell* cell = cellAt(x / 2, y / 4);
  if (cell == nullptr) return;
  cell->dots |= kDotBits[y % 4][x % 2];
  cell->color = color;
}

void CellCanvas::dot(double x, double y, Rgba color) {
  setDot(static_cast<int>(std::floor(x / kDot)), static_cast<int>(std::floor(y / kDot)), color);
}

void CellCanvas::segment(double x0, double y0, double x1, double y1, Rgba color) {
  const double length = std::fmax(std::fabs(x1 - x0), std::fabs(y1 - y0));
  const int steps = static_cast<int>(std::fmin(std::ceil(length / kDot), 10000)) + 1;
  for (int i = 0; i <= steps; ++i) dot(x0 + (x1 - x0) * i / steps, y0 + (y1 - y0) * i / steps, color);
}

void CellCanvas::stroke(std::span<const float> p, Rgba color, bool closes) {
  for (size_t i = 2; i + 1 < p.size(); i += 2) {
    if (!std::isnan(p[i]) && !std::isnan(p[i - 2])) segment(p[i - 2], p[i - 1], p[i], p[i + 1], color);
  }
  if (closes && p.size() >= 4) segment(p[p.size() - 2], p[p.size() - 1], p[0], p[1], color);
}

/// Row by row of dots, between the crossings of the outline.
void CellCanvas::clearInside(std::span<const float> p) {
  for (int y = 0; y < rows_ * 4; ++y) {
    const double middle = (y + 0.5) * kDot;
    std::vector<double> crossings;
    for (size_t i = 0, k = p.size() - 2; i + 1 < p.size(); k = i, i += 2) {
      if ((p[i + 1] > middle) == (p[k + 1] > middle)) continue;
      crossings.push_back(p[i] + (middle - p[i + 1]) / (p[k + 1] - p[i + 1]) * (p[k] - p[i]));
    }
    std::sort(crossings.begin(), crossings.end());
    for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
      const int first = std::max(0, static_cast<int>(std::ceil(crossings[i] / kDot - 0.5)));
      const int last = std::min(columns_ * 2 - 1, static_cast<int>(std::floor(crossings[i + 1] / kDot - 0.5)));
      for (int x = first; x <= last; ++x) {
        if (Cell* cell = cellAt(x / 2, y / 4)) cell->dots &= static_cast<uint8_t>(~kDotBits[y % 4][x % 2]);
      }
    }
  }
}

void CellCanvas::clear(double left, double top, double right, double bottom) {
  for (int row = static_cast<int>(std::floor(top / kCellHeight)); row < bottom / kCellHeight; ++row) {
    for (int column = static_cast<int>(std::floor(left / kCellWidth)); column < right / kCellWidth; ++column) {
      if (Cell* cell = cellAt(column, row)) *cell = {};
    }
  }
}

void CellCanvas::write(int column, int row, const std::string& text, Rgba color) {
  for (size_t at = 0; at < text.size();) {
    const size_t length = lengthOfCharacter(text, at);
    const std::string character = text.substr(at, length);
    const auto width = static_cast<int>(CellMeasure::cells(character));
    Cell* cell = cellAt(column, row);
    if (width == 0 && column > 0) {  // a mark on the character before
      if (Cell* before = cellAt(column - 1, row)) before->character += character;
    } else if (cell != nullptr && cellAt(column + width - 1, row) != nullptr) {
      *cell = {0, character, false, color};
      for (int k = 1; k < width; ++k) *cellAt(column + k, row) = {0, "", true, color};
    }
    column += width;
    at += length;
  }
}

std::string CellCanvas::text(bool colour) const {
  std::string result;
  for (int row = 0; row < rows_; ++row) {
    std::string line;
    size_t inkEnd = 0;
    Rgba current;
    for (int column = 0; column < columns_; ++column) {
      const Cell& cell = cells_[static_cast<size_t>(row * columns_ + column)];
      if (cell.isCovered) continue;
      if (cell.dots == 0 && cell.character.empty()) {
        line += ' ';
        continue;
      }
      if (colour && cell.color != current) line += colorCode(current = cell.color);
      line += cell.character.empty() ? braille(cell.dots) : cell.character;
      inkEnd = line.size();
    }
    line.resize(inkEnd);
    if (current.isVisible()) line += "\x1b[0m";
    result += line + "\n";
  }
  return result;
}

}  // namespace kelo::terminal
