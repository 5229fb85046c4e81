#include "figures/drawing/description.h"
#include "figures/drawing/draw_axes.h"
#include "figures/drawing/draw_legend.h"
#include "figures/drawing/draw_lines.h"
#include "figures/drawing/drawing.h"

namespace kelo::drawing {

DisplayList draw(const figures::PlotData& plot, const DrawingOptions& options, DrawingCache* cache) {
  Sheet sheet(options);
  const PlotLayout layout = layOut(plot, sheet);
  const Rect& area = layout.area;
  const PlotFrame frame{area, {plot.xlims, area.left, area.right}, {plot.ylims, area.bottom, area.top}, plot.xlims,
                        plot.ylims};
  sheet.list.plotArea = area;
  describe(plot, sheet.list);
  drawBox(sheet, plot, frame);
  drawLines(sheet, plot, frame, cache);
  drawTexts(sheet, layout);
  drawLegend(sheet, plot, area);
  if (cache != nullptr) cache->sweep();
  return std::move(sheet.list);
}

DisplayList draw(const figures::Figure& figure, const DrawingOptions& options, DrawingCache* cache) {
  if (const auto* plot = std::get_if<figures::PlotData>(&figure)) return draw(*plot, options, cache);
  if (const auto* surface = std::get_if<figures::SurfData>(&figure)) return draw(*surface, options);
  return std::move(Sheet(options).list);
}

}  // namespace kelo::drawing
