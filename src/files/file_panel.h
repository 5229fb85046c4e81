// The operations of the files panel. Each one that fails throws an `Alert` with the panel's words
// and changes nothing.
//
// Paths are relative to the work directory, with "/" between their components, "" the directory
// itself. What leads outside, or is hidden, does not exist for any of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/file_item.h"
#include "files/sort_by.h"
#include "messages/alert.h"
#include "platform/file_tree.h"
#include "platform/key_value_store.h"

namespace kelo {

class FilePanel {
 public:
  /// workDir   the full path of the tree's root, for the addresses of items
  /// REQUIRES: tree and store outlive this
  FilePanel(platform::FileTree& tree, platform::KeyValueStore& store, std::string workDir)
      : tree_(tree), store_(store), workDir_(std::move(workDir)) {}

  /// The stored order; `nameAsc` when none is stored, or one that does not exist.
  SortBy sortedBy() const;
  void setSortedBy(SortBy order);

  /// The entries of a folder, in the panel's order.
  std::vector<FileItem> list(const std::string& folder) const;

  /// Makes a file "NAME.m" with two lines to begin with, or an empty one of another kind: csv, txt,
  /// dat. A name without an extension is that of a ".m" file. Returns the new path, as do the next
  /// ones.
  std::string newFile(const std::string& folder, const std::string& name);
  std::string newFolder(const std::string& folder, const std::string& name);
  /// A file keeps its extension when the new name has none.
  std::string rename(const std::string& path, const std::string& name);
  /// "a.m" becomes "a_copy.m", then "a_copy2.m" and on.
  std::string duplicate(const std::string& path);

  /// All are checked before the first is touched; a failure later on takes back what was done.
  std::vector<std::string> copy(const std::vector<std::string>& paths, const std::string& folder);
  std::vector<std::string> move(const std::vector<std::string>& paths, const std::string& folder);
  void remove(const std::vector<std::string>& paths);

  /// Takes in a text from outside under its own name.
  std::string importFile(const std::string& folder, const std::string& name, std::string_view bytes);

  /// A text, and what tells this content from others.
  struct OpenedText {
    std::string text, revision;
  };
  OpenedText read(const std::string& path) const;
  /// Replaces the text of a file and gives its new revision.
  ///
  /// revision   as it was read; another one now standing there is an alert
  std::string write(const std::string& path, std::string_view text, const std::optional<std::string>& revision);

 private:
  bool isFolder(const std::string& path) const;
  bool exists(const std::string& path) const { return tree_.status(path).has_value(); }
  bool copyEntry(const std::string& from, const std::string& to);
  bool copyInto(const std::string& from, const std::string& to, int depth);
  std::string freeName(const std::string& path) const;

  platform::FileTree& tree_;
  platform::KeyValueStore& store_;
  std::string workDir_;
};

/// Tells one content of a file from another.
std::string revisionOf(std::string_view bytes);

}  // namespace kelo
