#include "shells/terminal/figure_screen.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "figures/drawing/drawing.h"
#include "figures/pictures/png.h"
#include "messages/message.h"
#include "shells/terminal/cell_picture.h"
#include "shells/terminal/terminal.h"

namespace kelo::terminal {
namespace {

constexpr int kMostColumns = 96, kLeastColumns = 24;
constexpr int kLeastRows = 12, kMostRows = 28;

}  // namespace

FigureScreen::FigureScreen(const Options& options, figures::FigurePanel& panel, pictures::Renderer& renderer)
    : options_(options), panel_(panel), renderer_(renderer) {}

void FigureScreen::showIfChanged() {
  if (panel_.revision() != shownRevision_) show(/*isWanted=*/false);
}

/// The terminal is asked once, when it is needed first.
bool FigureScreen::showsPictures() {
  if (options_.plots == "braille") return false;
  if (!graphics_) graphics_ = isatty(STDIN_FILENO) ? askForGraphics() : ScreenGraphics();
  return graphics_->protocol != ScreenGraphics::Protocol::none;
}

void FigureScreen::show(bool isWanted) {
  shownRevision_ = panel_.revision();
  const std::string before = std::exchange(shown_, "");
  const figures::Figure figure = panel_.figure();
  const bool isEmpty = std::holds_alternative<std::monostate>(figure);
  if (isEmpty || options_.plots == "none" || !isScreen(STDOUT_FILENO)) return;
  try {
    shown_ = picture(figure);
    if (isWanted || shown_ != before) std::fputs(shown_.c_str(), stdout);
  } catch (const Problem& problem) {
    std::fprintf(stderr, "kelo: %s\n", problem.reason.value_or("").c_str());
  }
  std::fflush(stdout);
}

std::string FigureScreen::picture(const figures::Figure& figure) {
  const int columns = std::clamp(terminalWidth() - 1, kLeastColumns, kMostColumns);
  const drawing::Theme& theme = *drawing::Theme::named(options_.theme);
  if (!showsPictures()) {
    if (options_.plots == "picture")
      return "This terminal shows no pictures (kelo --plots braille draws with characters)\n";
    const int rows = std::clamp(columns * 3 / 10, kLeastRows, kMostRows);
    return cellPicture(figure, {columns, rows, wantsColour(STDOUT_FILENO), &theme});
  }
  drawing::DrawingOptions drawing;
  drawing.theme = &theme;
  const double width = std::clamp(columns * graphics_->cellWidth, 320.0, 1280.0), scale = width > 800 ? 2 : 1;
  drawing.size = {width / scale, width / scale * 0.75};
  drawing.pixelsPerPoint = scale;
  const pictures::Bitmap bitmap = renderer_.bitmap(drawing::draw(figure, drawing), scale);
  const bool isKitty = graphics_->protocol == ScreenGraphics::Protocol::kitty;
  return isKitty ? kittyPicture(pictures::png(bitmap, scale)) : sixelPicture(bitmap);
}

}  // namespace kelo::terminal
