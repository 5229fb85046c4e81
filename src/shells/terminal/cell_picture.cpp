#include "shells/terminal/cell_picture.h"

#include <cmath>

#include "display/cell_measure.h"
#include "figures/drawing/drawing.h"
#include "shells/terminal/cell_canvas.h"

namespace kelo::terminal {
namespace {

using drawing::DisplayList;
using drawing::Rgba;
using Part = drawing::Role::Part;

/// Every text has the size of the terminal.
class CellFont : public platform::FontMeasure {
 public:
  double width(std::string_view utf8, double) const override {
    return static_cast<double>(CellMeasure::cells(utf8)) * CellCanvas::kCellWidth;
  }
  double capHeight(double) const override { return CellCanvas::kCellHeight; }
  double lineHeight(double) const override { return CellCanvas::kCellHeight; }
  double descent(double) const override { return 0; }
};

class Painter {
 public:
  Painter(const DisplayList& list, CellCanvas& canvas, bool isPlot) : list_(list), canvas_(canvas), isPlot_(isPlot) {}

  void paint() {
    for (size_t i = 0; i < list_.count(); ++i) paint(list_[i]);
    if (isPlot_) drawAxes();
    for (size_t i = 0; i < list_.count(); ++i) {
      if (list_[i].kind == DisplayList::Kind::text) write(list_[i]);
    }
  }

 private:
  using Item = DisplayList::Item;

  void paint(const Item& item) {
    const Part part = item.role.part;
    if (part == Part::legend) return canvas_.clear(item.points[0], item.points[1], item.points[4], item.points[5]);
    if (part == Part::background || part == Part::plotArea || part == Part::grid) return;
    const bool isAxis = part == Part::xAxis || part == Part::yAxis || part == Part::zAxis;
    if (isAxis && isPlot_) return;
    const Rgba color = item.paint.stroke.isVisible() ? item.paint.stroke : item.paint.fill;
    if (item.kind == DisplayList::Kind::path) canvas_.stroke(item.points, color, false);
    if (item.kind == DisplayList::Kind::polygon) paintFace(item);
    if (item.kind == DisplayList::Kind::marker) {
      for (size_t k = 0; k + 1 < item.points.size(); k += 2) canvas_.dot(item.points[k], item.points[k + 1], color);
    }
  }

  /// A face hides what is behind it; its outline is drawn where it is a line of the mesh.
  void paintFace(const Item& item) {
    canvas_.clearInside(item.points);
    if (item.paint.stroke != item.paint.fill) canvas_.stroke(item.points, item.paint.fill, true);
  }

  static int rowOfBaseline(double y) { return static_cast<int>(std::lround(y / CellCanvas::kCellHeight)) - 1; }

  void write(const Item& item) {
    const drawing::Text& text = *item.text;
    const auto cells = static_cast<int>(CellMeasure::cells(text.text));
    const int at = static_cast<int>(std::lround(item.points[0] / CellCanvas::kCellWidth));
    if (text.angle != 0) return writeUpright(item, at, cells);
    const int column = text.anchor == drawing::Anchor::start ? at
                       : text.anchor == drawing::Anchor::end ? at - cells
                                                             : at - cells / 2;
    canvas_.write(std::max(column, 0), rowOfBaseline(item.points[1]), text.text, text.color);
  }

  /// A label that reads upwards elsewhere stands above the axis here.
  void writeUpright(const Item& item, int, int) {
    const int row = static_cast<int>(list_.plotArea.top) / CellCanvas::kCellHeight - 1;
    canvas_.write(0, std::max(row, 0), item.text->text, item.text->color);
  }

  void drawAxes() {
    const drawing::Rect& area = list_.plotArea;
    const int left = static_cast<int>(area.left) / CellCanvas::kCellWidth - 1;
    const int right = static_cast<int>(area.right) / CellCanvas::kCellWidth;
    const int top = static_cast<int>(area.top) / CellCanvas::kCellHeight,
              bottom = static_cast<int>(area.bottom) / CellCanvas::kCellHeight;
    const Rgba color = drawing::Theme::light().axis;
    for (int row = top; row < bottom; ++row) canvas_.write(left, row, "│", color);
    for (int column = left + 1; column < right; ++column) canvas_.write(column, bottom, "─", color);
    canvas_.write(left, bottom, "└", color);
    for (size_t i = 0; i < list_.count(); ++i) {
      const Part part = list_[i].role.part;
      if (part == Part::yTickLabel) canvas_.write(left, rowOfBaseline(list_[i].points[1]), "┤", color);
      if (part != Part::xTickLabel) continue;
      const int column = static_cast<int>(std::lround(list_[i].points[0] / CellCanvas::kCellWidth));
      canvas_.write(std::min(std::max(column, left + 1), right - 1), bottom, "┬", color);
    }
  }

  const DisplayList& list_;
  CellCanvas& canvas_;
  bool isPlot_;
};

}  // namespace

std::string cellPicture(const figures::Figure& figure, const CellPictureOptions& options) {
  if (std::holds_alternative<std::monostate>(figure)) return "";
  static const CellFont font;
  drawing::DrawingOptions drawing;
  drawing.size = {double(options.columns * CellCanvas::kCellWidth), double(options.rows * CellCanvas::kCellHeight)};
  drawing.theme = options.theme;
  drawing.measure = &font;
  drawing.fontSize = CellCanvas::kCellWidth;
  drawing.pixelsPerPoint = 1.0 / CellCanvas::kDot;
  const DisplayList list = drawing::draw(figure, drawing);
  CellCanvas canvas(options.columns, options.rows);
  Painter(list, canvas, std::holds_alternative<figures::PlotData>(figure)).paint();
  return canvas.text(options.colour);
}

}  // namespace kelo::terminal
