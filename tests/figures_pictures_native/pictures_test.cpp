// Pictures: a few approved SVGs, and laws of the painted ones. A picture that differs is left
// beside the approved one as NAME.received; with KELO_ACCEPT=1 in the environment it is accepted
// instead.
#include "figures/pictures/native/cairo_renderer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "figures/pictures/png.h"
#include "figures/pictures/svg.h"
#include "figures_drawing/samples.h"
#include "places.h"

/// The library that looks for fonts keeps what it has read.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }

namespace kelo::pictures {
namespace {

using namespace drawing;
using figures::PlotData;
using figures::SurfData;
using native::CairoRenderer;

void expectApproved(const std::string& name, const std::string& text) {
  const std::string path = test::testsDir() + "/figures_pictures_native/approved/" + name + ".svg",
                    received = path + ".received";
  std::ifstream file(path);
  std::ostringstream approved;
  approved << file.rdbuf();
  std::remove(received.c_str());
  if (approved.str() == text) return;
  const bool accepts = std::getenv("KELO_ACCEPT") != nullptr;
  std::ofstream(accepts ? path : received) << text;
  EXPECT_TRUE(accepts) << path << " differs from " << received;
}

PlotData styledPlot() {
  std::vector<figures::Line> lines;
  for (int k = 0; k < 13; ++k) {
    figures::Line line = sampleLine(
        7, 0, 3000, [](double x) { return std::sin(x / 500); }, k);
    std::vector<figures::Point> points(line.points.begin(), line.points.end());
    for (figures::Point& p : points) p.y += k;
    points[3].y = k % 4 == 0 ? NAN : points[3].y;
    line.points = points;
    line.attribute.lineStyle = static_cast<figures::Line::Style>(k % 5);
    line.attribute.markerStyle = static_cast<figures::Marker::Style>(k);
    line.attribute.type = static_cast<figures::PlotStyle>(k < 9 ? 0 : k - 9);
    if (k % 2 == 0) line.attribute.markerFaceColor = line.attribute.lineColor;
    if (k % 3 == 0) line.attribute.markerFaceColor = figures::nextCycleColor(k + 1);
    lines.push_back(line);
  }
  lines[1].attribute.name = "100 % <b>&amp;</b>";
  PlotData plot(lines);
  plot.shouldShowLegend = true;
  plot.title = "Styles & markers";
  plot.xLabel = "η² in שלום";
  plot.yLabel = "level";
  return plot;
}

TEST(Pictures, approved) {
  const PlotData styles = styledPlot();
  expectApproved("styles", svg(draw(styles, {{640, 480}})));
  PlotData window = styles;
  window.axis(figures::Axis::x).setLimits({-200, 1900.5});
  window.axis(figures::Axis::y).setLimits({1.5, 4.25});
  window.legendAttributes.position = figures::Legend::Position::bottomLeft;
  expectApproved("window_dark_small", svg(draw(window, {{240, 180}, &Theme::dark()})));
  SurfData surface({sampleSurface(9, 7, bump)});
  surface.title = "Bump";
  surface.zLabelText = "height";
  surface.axis(figures::Axis::z).setLimits({-0.2, 0.8});
  expectApproved("surface", svg(draw(surface, {{640, 480}})));
  SurfData both({sampleSurface(4, 4, [](double x, double) { return x; }),
                 sampleSurface(3, 3, [](double, double y) { return y; })});
  both.rotationAngles = {-70, 0, 20};
  both.zoomFactor = 0.8;
  expectApproved("surfaces_dark", svg(draw(both, {{400, 300}, &Theme::dark()})));
}

int distance(uint32_t a, uint32_t b) {
  int most = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    most = std::max(most, std::abs(int(a >> shift & 255) - int(b >> shift & 255)));
  }
  return most;
}

/// Pixels of one picture whose like is not found in the other one, there or next to it, within what
/// blending at edges makes of a colour.
int numUnlike(const Bitmap& a, const Bitmap& b) {
  int unlike = 0;
  for (int y = 0; y < a.height; ++y) {
    for (int x = 0; x < a.width; ++x) {
      int least = 255;
      for (int v = std::max(y - 1, 0); v <= std::min(y + 1, a.height - 1); ++v) {
        for (int u = std::max(x - 1, 0); u <= std::min(x + 1, a.width - 1); ++u) {
          least = std::min(least, distance(a.pixels[size_t(y * a.width + x)], b.pixels[size_t(v * a.width + u)]));
        }
      }
      unlike += least > 64;
    }
  }
  return unlike;
}

TEST(Pictures, reducedLinesLookTheSame) {
  CairoRenderer renderer;
  for (const double scale : {1.0, 2.0}) {
    for (unsigned seed = 0; seed < 8; ++seed) {
      figures::Line line = walk(seed, 5000, seed % 2 == 1, seed % 3 == 0);
      line.attribute.type = static_cast<figures::PlotStyle>(seed % 4);
      if (seed % 4 == 1) line.attribute.markerStyle = figures::Marker::Style::circle;
      if (seed % 4 == 1) line.attribute.lineStyle = figures::Line::Style::hidden;
      PlotData plot({line});
      if (seed > 4) plot.axis(figures::Axis::x).setLimits({plot.xlims.lower / 3, plot.xlims.upper / 2});
      DrawingOptions options{{200, 150}};
      options.pixelsPerPoint = scale;
      const DisplayList reduced = draw(plot, options);
      options.reducesLines = false;
      const DisplayList full = draw(plot, options);
      EXPECT_LE(reduced.numCoordinates(), full.numCoordinates()) << seed;
      const Bitmap a = renderer.bitmap(reduced, scale), b = renderer.bitmap(full, scale);
      EXPECT_EQ(numUnlike(a, b) + numUnlike(b, a), 0) << seed << " at scale " << scale;
    }
  }
}

TEST(Pictures, files) {
  CairoRenderer renderer;
  const DisplayList list = draw(styledPlot(), {{300, 200}});
  const Bitmap bitmap = renderer.bitmap(list, 3);
  EXPECT_EQ(bitmap.width, 900);
  EXPECT_EQ(bitmap.height, 600);
  EXPECT_EQ(bitmap.pixels[0] & 0xffffff, 0xffffffu);
  EXPECT_EQ(png(bitmap, 3).substr(1, 3), "PNG");
  const Bitmap uneven = renderer.bitmap(draw(styledPlot(), {{300.7, 200.6}}), 1);
  EXPECT_EQ(uneven.pixels.back() & 0xffffff, 0xffffffu) << "the ground reaches to the last pixel";
  const std::string pdf = renderer.pdf(list);
  EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
  EXPECT_NE(pdf.find("DejaVuSans"), std::string::npos) << "the font is embedded";
}

Bitmap titled(const char* title) {
  PlotData plot{std::vector<figures::Line>{}};
  plot.title = title;
  return CairoRenderer().bitmap(draw(plot, {{300, 200}}), 1);
}

/// Left to right as it stands (by an override), from behind: the same.
TEST(Pictures, textRunsAsTheEyeReadsIt) {
  const Bitmap hebrew = titled("\u05e9\u05dc\u05d5\u05dd");
  EXPECT_EQ(hebrew.pixels, titled("\u202d\u05dd\u05d5\u05dc\u05e9").pixels);
  EXPECT_NE(hebrew.pixels, titled("\u202d\u05e9\u05dc\u05d5\u05dd").pixels);
}

/// In another font or as a box.
TEST(Pictures, noLetterIsLost) {
  const Bitmap empty = titled("");
  for (const char* title : {"\u6e29\u5ea6", "\U0001f389", "\U0010fff0", "\U0001f468\u200d\U0001f469", "\u0939\u093f"}) {
    EXPECT_NE(titled(title).pixels, empty.pixels) << title;
  }
}

}  // namespace
}  // namespace kelo::pictures
