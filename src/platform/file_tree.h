// A folder and all that is below it, as an interface: what a file manager needs, and nothing
// outside can be reached.
//
// A path is relative to the root, with "/" between its components; "" is the root itself. A
// component is neither empty nor "." nor "..", and holds no NUL. Links are never followed, at no
// place of a path: whatever lies behind one does not exist here. An operation that fails changes
// nothing, unless it says so. Nothing here throws.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::platform {

class FileTree {
 public:
  struct Status {
    bool isFolder = false;
    int64_t size = 0;                ///< bytes; 0 for a folder
    std::optional<double> modified;  ///< seconds since 1970-01-01
  };
  struct Entry {
    std::string name;
    std::optional<Status> status;  ///< absent when it could not be found out
  };

  virtual ~FileTree() = default;

  /// The files and folders of a folder, sorted by the bytes of their names; nothing when it cannot
  /// be read.
  virtual std::optional<std::vector<Entry>> list(const std::string& path) const = 0;
  /// Of a file or folder.
  virtual std::optional<Status> status(const std::string& path) const = 0;
  virtual std::optional<std::string> read(const std::string& path) const = 0;

  /// Makes a file, whole or not at all; an existing name is not touched.
  virtual bool create(const std::string& path, std::string_view bytes) = 0;
  /// Replaces the content of an existing file, whole or not at all, if `agrees` says so of its
  /// present content. No other program that uses this function comes between.
  virtual bool replace(const std::string& path, std::string_view bytes,
                       const std::function<bool(std::string_view present)>& agrees) = 0;
  virtual bool makeFolder(const std::string& path) = 0;
  /// Gives a file or folder another name or folder; an existing name is not touched.
  virtual bool move(const std::string& from, const std::string& to) = 0;
  /// Removes a file, or a folder with all that is in it; a failure may leave a part of the folder.
  virtual bool remove(const std::string& path) = 0;
};

/// The components of a path; nothing when it is none.
std::optional<std::vector<std::string>> componentsOf(std::string_view path);

}  // namespace kelo::platform
