// What the figure commands leave in the models; what they show is tested by
// tests/transcripts/figures/.
#include <gtest/gtest.h>

#include "builtins/library.h"
#include "interpreter/test_app.h"

namespace kelo {
namespace {

using figures::ColorRole;
using figures::Line;
using figures::Marker;
using figures::PlotData;
using figures::PlotStyle;
using figures::SurfData;
using LineStyle = Line::Style;
using MarkerStyle = Marker::Style;

struct FiguresTest : ::testing::Test {
  void run(const std::string& commands) {
    test.app.startCommand(commands);
    test.mainQueue.drain();
    EXPECT_EQ(test.app.environment.messagesShown(), 0) << commands << "\n"
                                                       << (test.shown.empty() ? "" : test.shown.back());
  }
  PlotData plot() { return std::get<PlotData>(test.app.figures.figure()); }
  SurfData surface() { return std::get<SurfData>(test.app.figures.figure()); }
  /// The attributes of the last line.
  Line::Attributes last(const std::string& commands) {
    run(commands);
    return plot().lines.back().attribute;
  }

  TestApp test{builtins::library()};
};

TEST_F(FiguresTest, LinesHoldTheirPoints) {
  run("plot([1+2i 3-4i])");
  EXPECT_EQ(plot().lines.at(0).points, (figures::Points{{1, 2}, {3, -4}}));
  run("plot(5:6, [1 2; 3 4]')");
  EXPECT_EQ(plot().lines.at(1).points, (figures::Points{{5, 3}, {6, 4}}));
  run("plot(5:7, [1 2 3; 4 5 6])");  // the rows have the length of x
  EXPECT_EQ(plot().lines.at(1).points, (figures::Points{{5, 4}, {6, 5}, {7, 6}}));
  run("surf([1 2; 3 4])");
  EXPECT_EQ(surface().surfaces.at(0).points[1], (figures::SCNVector3{2, 1, 3}));
  run("surf(1:3, 1:3, 1:3)");
  EXPECT_EQ(surface().surfaces.at(0).attributes.numRows, 1);
}

TEST_F(FiguresTest, ColoursRunOnAcrossPairsAndUnderHold) {
  run("plot(1:3, [1 2 3; 4 5 6], 1:3, 7:9)");
  EXPECT_EQ(plot().lines.at(2).attribute.lineColor.role, ColorRole::systemOrange);
  EXPECT_EQ(last("plot(1:3)").lineColor.role, ColorRole::systemBlue);
  EXPECT_EQ(last("hold('on'); stem(1:3)").lineColor.role, ColorRole::systemRed);
  EXPECT_EQ(last("scatter(1, 1)").markerEdgeColor.role, ColorRole::systemOrange);
  EXPECT_EQ(plot().lines.size(), 3u);
}

TEST_F(FiguresTest, StylesOfTheCommands) {
  const Line::Attributes stem = last("stem(1:3)"), stairs = last("stairs(1:3)"), scatter = last("scatter(1, 2)");
  EXPECT_EQ(stem.type, PlotStyle::Stem);
  EXPECT_EQ(stem.markerStyle, MarkerStyle::circle);
  EXPECT_EQ(stem.lineStyle, LineStyle::solid);
  EXPECT_EQ(stairs.type, PlotStyle::Stair);
  EXPECT_EQ(stairs.markerStyle, MarkerStyle::none);
  EXPECT_EQ(scatter.type, PlotStyle::Scatter);
  EXPECT_EQ(scatter.lineStyle, LineStyle::hidden);
}

TEST_F(FiguresTest, AttributesReachTheLines) {
  const Line::Attributes line = last(
      "plot(1:3, 'r:', 'LineWidth', [2 9], 'Color', [0 0.5 1], 'MARKER', 'Pentagram', 'markerfacecolor', 'w', "
      "'MarkerSize', 3, 'DisplayName', 'signal')");
  EXPECT_EQ(line.lineWidth, 2);
  EXPECT_EQ(line.lineColor, figures::Color(0, 0.5, 1));
  EXPECT_EQ(line.markerEdgeColor.role, ColorRole::systemRed) << "'Color' leaves an edge that is not clear";
  EXPECT_EQ(line.markerFaceColor.role, ColorRole::white);
  EXPECT_EQ(line.lineStyle, LineStyle::dot);
  EXPECT_EQ(line.markerStyle, MarkerStyle::fivePointedStar);
  EXPECT_EQ(line.markerSize, 3);
  EXPECT_EQ(line.name, "signal");
  EXPECT_EQ(last("plot(1:3, 'MarkerEdgeColor', 'none', 'Color', 'k')").markerEdgeColor.role, ColorRole::black);
}

TEST_F(FiguresTest, FilledAndScattered) {
  EXPECT_EQ(last("stem(1:3, 'g', 'Filled')").markerFaceColor.role, ColorRole::systemGreen);
  EXPECT_EQ(last("scatter(1, 1, 'filled', 'm')").markerFaceColor.role, ColorRole::systemPink);
  const Line::Attributes sized = last("scatter(1, 1, [3 0 0])"), coloured = last("scatter(1, 1, [0 0 1])");
  EXPECT_EQ(sized.markerSize, 3);
  EXPECT_EQ(sized.lineColor.role, ColorRole::systemBlue);
  EXPECT_EQ(coloured.markerSize, 1);
  EXPECT_EQ(coloured.lineColor, figures::Color(0, 0, 1));
}

TEST_F(FiguresTest, LabelsAndLegend) {
  run("plot([1 2; 3 4]); xlabel('Time'); ylabel([1.5 2]); title(['ab'; 'cd']); zlabel('none'); legend('a', 'b')");
  EXPECT_EQ(plot().xLabel, "Time");
  EXPECT_EQ(plot().yLabel, "1.5000  2");
  EXPECT_EQ(plot().title, "ab\ncd");
  EXPECT_EQ(plot().lines.at(1).attribute.name, "b");
  EXPECT_TRUE(plot().shouldShowLegend);
  run("xlabel(''); legend('toggle'); grid");
  EXPECT_EQ(plot().xLabel, std::nullopt);
  EXPECT_FALSE(plot().shouldShowLegend);
  EXPECT_FALSE(plot().shouldShowGrid);
  run("surf(ones(2)); zlabel(3); zlabel([]); title(7); title(''); xlabel('x'); hold");
  EXPECT_EQ(surface().zLabelText, "");
  EXPECT_EQ(surface().title, std::nullopt);
  EXPECT_EQ(surface().xLabelText, "x");
  EXPECT_TRUE(surface().hold);
}

TEST_F(FiguresTest, AFailureLeavesTheFigureAsItWas) {
  run("plot([1 2; 3 4])");
  const PlotData before = plot();
  const int64_t revision = test.app.figures.revision();
  for (const char* command : {"plot(1:3, 'Color', 'q')", "legend('a', 'b', 'c')", "xlim([2 1])", "stem(1:3, 'q')"}) {
    test.app.startCommand(command);
    test.mainQueue.drain();
    EXPECT_EQ(test.app.environment.errorsShown(), 1) << command;
  }
  EXPECT_EQ(plot(), before);
  EXPECT_EQ(test.app.figures.revision(), revision);
}

}  // namespace
}  // namespace kelo
