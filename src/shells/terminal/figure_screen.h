// The current figure in the interactive console: shown below the output whenever a command has
// changed it.
#pragma once

#include <optional>
#include <string>

#include "figures/figure_panel.h"
#include "figures/pictures/renderer.h"
#include "shells/terminal/options.h"
#include "shells/terminal/screen_graphics.h"

namespace kelo::terminal {

class FigureScreen {
 public:
  FigureScreen(const Options& options, figures::FigurePanel& panel, pictures::Renderer& renderer);

  /// Shows the figure if there is one that looks other than what was shown last. Thread: main,
  /// between commands
  void showIfChanged();
  /// Shows it in any case.
  void show() { show(/*isWanted=*/true); }

 private:
  void show(bool isWanted);
  bool showsPictures();
  std::string picture(const figures::Figure& figure);

  const Options& options_;
  figures::FigurePanel& panel_;
  pictures::Renderer& renderer_;
  int64_t shownRevision_ = 0;
  std::string shown_;  ///< what was written for it; empty without a figure
  std::optional<ScreenGraphics> graphics_;  ///< once asked for
};

}  // namespace kelo::terminal
