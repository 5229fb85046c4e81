// Where the work directory is, and where a file given on the command line lies in it.
#pragma once

#include <optional>
#include <string>

#include "shells/terminal/options.h"

namespace kelo::terminal {

struct Place {
  std::string workDir;
  std::string directory;  ///< of the file, relative to the work directory; "" is that directory
  std::string fileName;   ///< empty: no file was given
};

/// The work directory is the one asked for, else the current one; a file that lies outside the
/// current directory brings its own. Nothing, and `fault` says why, if the directory is none or
/// does not hold the file, or the file is a folder.
std::optional<Place> findPlace(const Options& options, std::string* fault);

}  // namespace kelo::terminal
