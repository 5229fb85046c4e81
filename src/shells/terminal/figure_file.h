// The current figure as a file, by the ending of its name: a picture, or a figure document.
#pragma once

#include <optional>
#include <string>

#include "figures/figure_documents.h"
#include "figures/pictures/picture.h"

namespace kelo::terminal {

/// "WIDTHxHEIGHT" in points, each a number a picture may have.
std::optional<drawing::Size> parsedFigureSize(const std::string& text);

/// What is wrong with a file name for a figure, in words; nothing for .png, .pdf, .svg and .kfig.
std::optional<std::string> figureNameFault(const std::string& path);

class FigureFiles {
 public:
  FigureFiles(const figures::FigureDocuments& documents, pictures::Renderer& renderer)
      : documents_(documents), renderer_(renderer) {}

  /// Writes the file whole or not at all and gives what went wrong. REQUIRES: figureNameFault gave
  /// nothing
  std::optional<std::string> write(const std::string& path, const figures::Figure& figure,
                                   const pictures::PictureOptions& options) const;

 private:
  std::string bytes(const std::string& path, const figures::Figure& figure,
                    const pictures::PictureOptions& options) const;

  const figures::FigureDocuments& documents_;
  pictures::Renderer& renderer_;
};

}  // namespace kelo::terminal
