#include "shells/terminal/cell_picture.h"

#include <gtest/gtest.h>

#include "display/cell_measure.h"
#include "figures_drawing/samples.h"

namespace kelo::terminal {
namespace {

using drawing::sampleLine;

TEST(CellPicture, aLine) {
  figures::PlotData plot({sampleLine(3, 0, 10, [](double x) { return x; })});
  plot.title = "Rise";
  plot.xLabel = "time";
  const std::string text = cellPicture(plot, {32, 9});
  EXPECT_EQ(text.find("\x1b"), std::string::npos);
  for (const char* part : {"Rise\n10.0┤", "⠊", "0.00┤", "┬", "10.0\n", "time\n"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << " in\n" << text;
  }
  EXPECT_NE(cellPicture(plot, {32, 9, true}).find("\x1b[38;5;"), std::string::npos);
}

TEST(CellPicture, linesFitTheScreen) {
  figures::SurfData surface({drawing::sampleSurface(20, 20, drawing::bump)});
  surface.title = "A title that is far too long for a screen of so few columns as this one has";
  surface.zLabelText = "height";
  figures::PlotData plot({drawing::walk(1, 100000, false, true)});
  plot.yLabel = "界 a label of the y axis that is long as well";
  plot.shouldShowLegend = true;
  for (const figures::Figure& figure : {figures::Figure(surface), figures::Figure(plot)}) {
    for (const int columns : {10, 24, 79, 200}) {
      const std::string text = cellPicture(figure, {columns, 14});
      EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 14);
      for (size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
        EXPECT_LE(CellMeasure::cells(text.substr(at, text.find('\n', at) - at)), columns);
      }
    }
  }
}

}  // namespace
}  // namespace kelo::terminal
