// Which pages there are, in which order, and what they are called.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "docs/doc_files.h"

namespace kelo::docs {

/// A page or folder of the sources.
struct Entry {
  std::string path;   ///< inside the folder of sources, without extension: "functions/reductions/sum", "guide"
  std::string title;  ///< of a folder as the list has it, of a page its first heading
  bool isDir = false;
  std::string markdown;  ///< of a page

  std::string folder() const { return path.substr(0, path.rfind('/') + 1); }
  std::string name() const { return path.substr(path.rfind('/') + 1); }
  bool isFunction() const { return !isDir && path.starts_with("functions/"); }
  /// Whether this is the page of a built-in, in whatever spelling.
  bool isPageOf(const std::string& builtin) const;
};

/// Reads "contents.txt" of a folder of sources and the pages that it names: a line "guide/ TITLE"
/// is a folder, a line "guide/first-steps" a page. The pages of a folder that no line names follow
/// by their names.
std::vector<Entry> readContents(const std::string& sources);

/// The tree as the front end lists it.
std::vector<DocFilesLoader::FileInfo> fileInfos(const std::vector<Entry>& entries);

}  // namespace kelo::docs
