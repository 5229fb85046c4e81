// Search across the pages, over an index that is made when the pages are built.
//
// A text is found where a page contains it, ignoring case. Pages whose title contains it come
// first, nearest match first (the same word, then one that begins with it); the others by how early
// in the page it stands, then in the order of the tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "docs/doc_files.h"

namespace kelo::docs {

class DocSearch {
 public:
  enum class Scope { title, content };

  struct Item {
    std::string relativePath;
    std::string displayName;
    std::string excerpt;  ///< the words around the place, of a search in the content
  };

  /// Reads "search.json"; without one nothing is found.
  explicit DocSearch(const platform::FileSystem& resources);

  /// What is found; nothing for an empty text.
  std::vector<Item> find(Scope scope, std::string_view text) const;

  /// A page of the index: its visible text, with a line feed between blocks.
  struct Page {
    std::string relativePath;
    std::string displayName;
    std::string text;
    std::string foldedName = {};  ///< in small letters, with as many bytes
    std::string foldedText = {};
  };

 private:
  std::vector<Page> pages_;
};

/// "search.json" for these pages.
std::string searchIndex(const std::vector<DocSearch::Page>& pages);

}  // namespace kelo::docs
