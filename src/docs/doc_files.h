// The tree of the help pages, as "docs.plist" describes it.
//
// The resources of the program are a folder that the shell names: "docs.plist", the folder
// "html_files" with the pages and, inside it, "_styles"; besides, for the terminal, "page_texts"
// with each page's Markdown, and "search.json".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace kelo::docs {

class DocFilesLoader {
 public:
  struct FileInfo {
    std::string relativePath;  ///< inside html_files: "functions/reductions/sum.html", "guide"
    std::string displayName;   ///< "sum"
    bool isDir = false;
    std::string ext;           ///< "html"; empty for a folder
  };

  /// Reads the description; a missing or broken one gives no files. REQUIRES: the resources outlive
  /// this.
  explicit DocFilesLoader(const platform::FileSystem& resources);

  /// In the order of the tree: a folder, what is in it, the next folder.
  const std::vector<FileInfo>& files() const { return files_; }
  /// The entry of a page; null when the tree has no such page.
  const FileInfo* findPage(std::string_view relativePath) const;
  /// The path of a built-in's page.
  std::optional<std::string> pathOfName(std::string_view name) const;
  const platform::FileSystem& resources() const { return resources_; }

 private:
  const platform::FileSystem& resources_;
  std::vector<FileInfo> files_;
};

/// The functions that a page is about: its title is the name of one, or all the spellings that it
/// has: "nan, NaN, Nan".
std::vector<std::string> namesIn(std::string_view title);

/// "docs.plist" for a list of files.
std::string propertyList(const std::vector<DocFilesLoader::FileInfo>& files);

}  // namespace kelo::docs
