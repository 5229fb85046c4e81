// Search for a text in the names and the contents of all files, step by step: whoever runs it does
// other things between two steps, or stops by taking no further one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_tree.h"

namespace kelo {

struct FileHit {
  std::string path;
  int64_t line;           ///< from 1; 0: the name of the file or folder
  int64_t start, length;  ///< in the line or name, in UTF-16 units from 0
  std::string preview;    ///< the line, cut around the hit when it is long; the name
};

class FileSearch {
 public:
  static constexpr size_t kMostHits = 1000;
  static constexpr int64_t kLargestFile = 16 << 20;  ///< bytes; larger ones are found by name only

  /// text   found whatever the case of its letters; an empty one is found nowhere
  /// REQUIRES: tree outlives this
  FileSearch(const platform::FileTree& tree, std::string_view text);

  /// Looks at one more file or folder, in the order of the paths. False at the end, or when there
  /// are enough hits.
  bool step();

  std::vector<FileHit> hits;

 private:
  void open(const std::string& folder);
  void searchLines(const std::string& path);
  void searchIn(std::u16string_view line, int64_t number, const std::string& path);

  struct Waiting {
    std::string path;
    bool isFolder;
    int64_t size;
  };

  const platform::FileTree& tree_;
  std::u16string text_;           // in lower case
  std::vector<Waiting> waiting_;  // the next one last
};

}  // namespace kelo
