// The console's own commands for figures: `:save NAME`, `:figures`, `:show NAME`, `:export FILE`,
// `:close`.
#pragma once

#include <string>

#include "figures/figure_documents.h"
#include "figures/pictures/picture.h"
#include "shells/terminal/figure_file.h"
#include "shells/terminal/figure_screen.h"

namespace kelo::terminal {

class FigureCommands {
 public:
  FigureCommands(const Options& options, figures::FigurePanel& panel, figures::FigureDocuments& documents,
                 pictures::Renderer& renderer, FigureScreen& screen)
      : options_(options), panel_(panel), documents_(documents), renderer_(renderer), screen_(screen) {}

  /// Runs a line that is such a command, or looks like one, prints the outcome and gives true; false
  /// for any other line.
  bool run(const std::string& line);

 private:
  void save(const std::string& name);
  void list() const;
  void show(const std::string& name);
  void exportTo(const std::string& path);
  void close();

  const Options& options_;
  figures::FigurePanel& panel_;
  figures::FigureDocuments& documents_;
  pictures::Renderer& renderer_;
  FigureScreen& screen_;
};

/// Size, theme and scale of a picture that is asked for on the command line.
pictures::PictureOptions pictureOptions(const Options& options);

}  // namespace kelo::terminal
