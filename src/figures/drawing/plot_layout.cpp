// The margins depend on the texts, the texts on the length of the axes, so the box is found in two
// rounds.
#include "figures/drawing/plot_layout.h"

#include <algorithm>

#include "figures/drawing/text_fit.h"

namespace kelo::drawing {
namespace {

using figures::Axis;

class Layout {
 public:
  Layout(const figures::PlotData& plot, const Sheet& sheet)
      : plot_(plot), sheet_(sheet), measure_(sheet.measure), em_(sheet.em), size_(sheet.list.size) {}

  PlotLayout run() {
    chooseTitle();
    double widest = measure_.width("0.00", sheet_.tickSize());
    for (int round = 0; round < 2; ++round) {
      placeBox(widest);
      chooseTickLabels();
      widest = widestOf(layout_.yTicks);
    }
    placeBox(widest);
    placeTexts();
    return std::move(layout_);
  }

 private:
  double gap() const { return 0.45 * em_; }
  double line() const { return measure_.lineHeight(em_); }
  bool isScreenOfCells() const { return sheet_.options.fontSize > 0; }
  double margin() const { return isScreenOfCells() ? 0 : 0.9 * em_; }

  void chooseTitle() {
    const size_t maxLines = size_.height < 14 * em_ ? 1 : 2;
    if (plot_.title) {
      layout_.title = wrapped(*plot_.title, measure_, sheet_.titleSize(), size_.width - 2 * margin(), maxLines);
    }
    showsXLabel_ = plot_.xLabel && size_.height > 9 * em_ && !cleanLine(*plot_.xLabel).empty();
    showsYLabel_ = plot_.yLabel && size_.width > 14 * em_ && !cleanLine(*plot_.yLabel).empty();
    xPower_ = figures::axisPower(plot_.xTickPositions) != 0;
    yPower_ = figures::axisPower(plot_.yTickPositions) != 0;
  }

  static SizedMeasure sized(const Sheet& sheet) { return {sheet.measure, sheet.tickSize()}; }

  double widestOf(const figures::TickLabels& ticks) const {
    double widest = 0;
    for (const auto& label : ticks.labels) widest = std::max(widest, measure_.width(label.text, sheet_.tickSize()));
    return widest;
  }

  void placeBox(double yTickWidth) {
    const double title = static_cast<double>(layout_.title.size()) * measure_.lineHeight(sheet_.titleSize());
    const double half = measure_.capHeight(sheet_.tickSize()) / 2 + 1;
    double top = margin() + title + (title > 0 ? 0.35 * em_ : 0) + (yPower_ ? line() : 0);
    double bottom = margin() + belowTicks() + (showsXLabel_ || xPower_ ? line() + 0.35 * em_ : 0);
    double left = margin() + (showsYLabel_ ? yLabelWidth() : 0) + yTickWidth + gap() + sheet_.tickLength();
    double right = margin() + lastLabelOverhang();
    top = std::max(top, half);
    left = std::max(left, firstLabelOverhang());
    if (isScreenOfCells()) return placeBoxInCells(yTickWidth);
    shrink(left, right, size_.width);
    shrink(top, bottom, size_.height);
    layout_.area = {left, top, size_.width - right, size_.height - bottom};
  }

  /// Whole rows and columns: a row for the title, one for the label and power of y, the axis, its
  /// ticks, its label.
  void placeBoxInCells(double yTickWidth) {
    const double cell = em_, row = line();
    const double top = row * (static_cast<double>(layout_.title.size()) + (yPower_ || showsYLabel_ ? 1 : 0));
    const double bottom = size_.height - row * (showsXLabel_ || xPower_ ? 3 : 2);
    const double left = std::ceil(yTickWidth / cell) * cell + cell;
    const double right = size_.width - std::ceil((lastLabelOverhang() + cell) / cell) * cell;
    layout_.area = {left, top, std::max(right, left + cell), std::max(bottom, top + row)};
  }

  double belowTicks() const {
    return sheet_.tickLength() + gap() + measure_.capHeight(sheet_.tickSize()) + measure_.descent(sheet_.tickSize());
  }

  double yLabelWidth() const { return measure_.lineHeight(em_) + 0.25 * em_; }

  /// The last text of x is centred at the box's end.
  double lastLabelOverhang() const {
    if (layout_.xTicks.labels.empty()) return em_;
    const double width = measure_.width(layout_.xTicks.labels.back().text, sheet_.tickSize());
    return std::max(0.0, width / 2 - 0.4 * em_);
  }

  /// The first text of x is centred at its tick, which may stand at the box's begin.
  double firstLabelOverhang() const {
    if (layout_.xTicks.labels.empty()) return 0;
    const figures::TickLabel& first = layout_.xTicks.labels.front();
    return 0.25 * em_ + measure_.width(first.text, sheet_.tickSize()) / 2 - first.along;
  }

  /// A box keeps a tenth of the picture, whatever stands around it.
  static void shrink(double& a, double& b, double length) {
    const double most = 0.9 * length;
    if (a + b <= most) return;
    const double factor = most / (a + b);
    a *= factor;
    b *= factor;
  }

  void chooseTickLabels() {
    const SizedMeasure measure = sized(sheet_);
    const auto& plot = plot_;
    layout_.xTicks =
        figures::tickLabels(plot.axis(Axis::x), layout_.area.width(), {measure, std::nullopt, kDigits});
    const double height = measure_.lineHeight(sheet_.tickSize());
    layout_.yTicks = figures::tickLabels(plot.axis(Axis::y), layout_.area.height(), {measure, height, kDigits});
    dropOverlapping();
  }

  /// Manual ticks come unthinned.
  void dropOverlapping() {
    const double size = sheet_.tickSize(), between = isScreenOfCells() ? em_ : 0.5 * em_;
    keepApart(layout_.xTicks.labels, [&](const auto& label) { return measure_.width(label.text, size) + between; });
    const double height = isScreenOfCells() ? 1.5 * line() : measure_.capHeight(size) * 1.5;
    keepApart(layout_.yTicks.labels, [&](const auto&) { return height; });
  }

  template <class Extent>
  static void keepApart(std::vector<figures::TickLabel>& labels, Extent extent) {
    if (labels.empty()) return;
    const figures::TickLabel last = labels.back();
    double end = -HUGE_VAL;
    const auto isCrowded = [&](const figures::TickLabel& label) {
      const double half = extent(label) / 2;
      const bool touchesLast = label.along != last.along && label.along + half > last.along - extent(last) / 2;
      if (label.along - half < end || touchesLast) return true;
      end = label.along + half;
      return false;
    };
    std::erase_if(labels, isCrowded);
  }

  void placeTexts() {
    const Rect& area = layout_.area;
    const double tick = sheet_.tickSize();
    layout_.titleBaseline = margin() + measure_.capHeight(sheet_.titleSize()) + 0.1 * em_;
    layout_.xTickBaseline = area.bottom + sheet_.tickLength() + gap() + measure_.capHeight(tick);
    layout_.xLabelBaseline = size_.height - margin() - measure_.descent(em_) * 0.7;
    layout_.yTickRight = area.left - sheet_.tickLength() - gap();
    layout_.yLabelX = margin() + measure_.capHeight(em_) + 0.1 * em_;
    layout_.yPowerBaseline = area.top - 0.55 * em_;
    if (isScreenOfCells()) placeInCells();
    const double power = xPower_ ? 2 * measure_.width(powerText(layout_.xTicks.power) + "  ", em_) : 0;
    if (showsXLabel_) layout_.xLabel = fitted(*plot_.xLabel, measure_, em_, area.width() - power);
    if (showsYLabel_)
      layout_.yLabel =
          fitted(*plot_.yLabel, measure_, em_, isScreenOfCells() ? area.left + area.width() / 2 : area.height());
  }

  /// Baselines are the lower edges of rows there.
  void placeInCells() {
    const double row = line(), bottom = layout_.area.bottom;
    layout_.titleBaseline = row;
    layout_.xTickBaseline = bottom + 2 * row;
    layout_.yTickRight = layout_.area.left - em_;
    layout_.xLabelBaseline = size_.height;
    layout_.yPowerBaseline = layout_.area.top;
  }

  const figures::PlotData& plot_;
  const Sheet& sheet_;
  const platform::FontMeasure& measure_;
  double em_;
  Size size_;
  PlotLayout layout_;
  bool showsXLabel_ = false, showsYLabel_ = false, xPower_ = false, yPower_ = false;
};

}  // namespace

PlotLayout layOut(const figures::PlotData& plot, const Sheet& sheet) { return Layout(plot, sheet).run(); }

}  // namespace kelo::drawing
