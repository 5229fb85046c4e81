// A legend that is larger than the box shrinks: first the samples, then the names, then rows are
// left out and counted.
#include "figures/drawing/draw_legend.h"

#include <algorithm>

#include "figures/drawing/draw_lines.h"
#include "figures/drawing/text_fit.h"

namespace kelo::drawing {
namespace {

using figures::Legend;
using figures::Line;

struct Row {
  uint32_t number;  ///< of the line, from 1; 0: the row of what was left out
  std::string name;
};

class LegendDrawing {
 public:
  LegendDrawing(Sheet& sheet, const figures::PlotData& plot, const Rect& area)
      : sheet_(sheet), plot_(plot), legend_(plot.legendAttributes), area_(area) {
    textSize_ = sheet.options.fontSize > 0 ? sheet.em : 0.95 * sheet.em;
    const double wanted = std::clamp(legend_.rowHeight, 1.0, 200.0) * sheet.unit;
    rowHeight_ = std::max(wanted, sheet.measure.lineHeight(textSize_) * 1.05);
    padding_ = 0.5 * sheet.em;
    if (sheet.options.fontSize > 0) {  // whole cells
      rowHeight_ = sheet.measure.lineHeight(textSize_);
      padding_ = 0;
      margin_ = rowHeight_;
      return;
    }
    margin_ = std::min(std::clamp(legend_.contentToPlotViewMargin, 0.0, 200.0) * sheet.unit, 0.04 * area.width());
  }

  void run() {
    chooseRows();
    if (rows_.empty() || area_.width() < 6 * sheet_.em) return;
    chooseWidths();
    const Rect box = place();
    drawFrame(box);
    double y = box.top + padding_ + rowHeight_ / 2;
    for (const Row& row : rows_) {
      drawRow(row, box.left + padding_, y);
      y += rowHeight_;
    }
  }

 private:
  void chooseRows() {
    const double room = area_.height() - 2 * (margin_ + padding_);
    const auto most = static_cast<size_t>(std::max(room / rowHeight_, 0.0));
    size_t total = 0;
    for (size_t k = 0; k < plot_.lines.size(); ++k) {
      const Line::Attributes& attributes = plot_.lines[k].attribute;
      if (!attributes.shownInLegend) continue;
      if (++total > most) continue;
      const std::string number = std::to_string(k + 1);
      rows_.push_back({static_cast<uint32_t>(k + 1), attributes.name ? cleanLine(*attributes.name) : "Line " + number});
    }
    if (total <= most || rows_.empty()) return;
    rows_.back() = {0, "… " + std::to_string(total - rows_.size() + 1) + " more"};
  }

  void chooseWidths() {
    const double room = area_.width() - 2 * margin_ - 2 * padding_;
    sample_ =
        std::min({std::clamp(legend_.lineLength, 0.0, 1000.0) * sheet_.unit * 0.5, 0.1 * area_.width(), room / 3});
    gap_ = 0.6 * sheet_.em;
    if (sheet_.options.fontSize > 0) sample_ = 4 * sheet_.em, gap_ = sheet_.em;
    const double names = std::min(room - sample_ - gap_, std::max(0.6 * area_.width(), 8 * sheet_.em));
    for (Row& row : rows_) {
      row.name = fitted(row.name, sheet_.measure, textSize_, names);
      nameWidth_ = std::max(nameWidth_, sheet_.measure.width(row.name, textSize_));
    }
  }

  Rect place() const {
    const double width = 2 * padding_ + sample_ + gap_ + nameWidth_;
    const double height = 2 * padding_ + rowHeight_ * static_cast<double>(rows_.size());
    using Position = Legend::Position;
    const bool isLeft = legend_.position == Position::topLeft || legend_.position == Position::bottomLeft;
    const bool isTop = legend_.position == Position::topLeft || legend_.position == Position::topRight;
    const double left = isLeft ? area_.left + margin_ : area_.right - margin_ - width;
    const double top = isTop ? area_.top + margin_ : area_.bottom - margin_ - height;
    return {left, top, left + width, top + height};
  }

  void drawFrame(const Rect& box) {
    Paint paint;
    if (legend_.borderLineType != Line::Style::hidden) {
      paint = sheet_.stroke(sheet_.theme(legend_.borderColor), std::clamp(legend_.borderWidth, 0.01, 50.0) * 1.5);
      paint.dash = dashOf(legend_.borderLineType, paint.width);
    }
    paint.fill = sheet_.theme(legend_.fillColor);
    if (paint.fill.alpha == 255) paint.fill.alpha = 230;
    sheet_.list.rectangle({Part::legend}, paint, box);
  }

  void drawRow(const Row& row, double left, double y) {
    if (row.number != 0) drawSample(row.number, left, y);
    const Vec2 at{left + sample_ + gap_, y + sheet_.measure.capHeight(textSize_) / 2};
    sheet_.text({Part::legendText, row.number}, at, row.name, textSize_, Anchor::start, sheet_.theme.label);
  }

  void drawSample(uint32_t number, double left, double y) {
    const Line::Attributes& attributes = plot_.lines[number - 1].attribute;
    const Role role{Part::legendLine, number};
    Paint stroke = linePaint(sheet_, attributes);
    if (stroke.stroke.isVisible()) {
      stroke.width = std::min(stroke.width, static_cast<float>(rowHeight_ * 0.6));
      sheet_.list.segment(role, stroke, {left, y}, {left + sample_, y});
    }
    const Paint marker = markerPaint(sheet_, attributes);
    if (!marker.stroke.isVisible() && !marker.fill.isVisible()) return;
    MarkerShape shape = markerShape(sheet_, attributes);
    shape.size = std::min(shape.size, rowHeight_ * 0.7);
    sheet_.list.markers(role, marker, shape);
    sheet_.list.point(left + sample_ / 2, y);
  }

  Sheet& sheet_;
  const figures::PlotData& plot_;
  const Legend& legend_;
  Rect area_;
  double textSize_, rowHeight_, padding_, margin_, sample_ = 0, gap_ = 0, nameWidth_ = 0;
  std::vector<Row> rows_;
};

}  // namespace

void drawLegend(Sheet& sheet, const figures::PlotData& plot, const Rect& area) {
  if (plot.shouldShowLegend) LegendDrawing(sheet, plot, area).run();
}

}  // namespace kelo::drawing
