#include "figures/figure_panel.h"

namespace kelo::figures {

Figure FigurePanel::figure() const {
  return read([](const Figure& figure) { return figure; });
}

int64_t FigurePanel::revision() const {
  const std::lock_guard<platform::Lock> guard(*lock_);
  return revision_;
}

void FigurePanel::plotDataShow(PlotData plot) {
  write([&](Figure& figure) {
    PlotData* held = std::get_if<PlotData>(&figure);
    if (held && held->shouldHold)
      held->append(std::move(plot.lines));
    else
      figure = std::move(plot);
  });
}

void FigurePanel::surfDataShow(SurfData surface) {
  write([&](Figure& figure) {
    SurfData* held = std::get_if<SurfData>(&figure);
    if (held && held->hold)
      held->append(std::move(surface.surfaces));
    else
      figure = std::move(surface);
  });
}

void FigurePanel::show(Figure shown) {
  write([&](Figure& figure) { figure = std::move(shown); });
}

}  // namespace kelo::figures
