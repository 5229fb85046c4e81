// A folder of the machine's disk as a file tree. Every path is walked component by component from
// the root's descriptor, and no link is followed on the way; so nothing that is put in the way of a
// path, before or while it is walked, leads outside.
#pragma once

#include <string>

#include "platform/file_tree.h"
#include "platform/native/descriptor.h"

namespace kelo::platform::native {

class DiskTree final : public FileTree {
 public:
  /// root   a folder; it may itself be reached by links
  explicit DiskTree(std::string root) : root_(std::move(root)) {}

  std::optional<std::vector<Entry>> list(const std::string& path) const override;
  std::optional<Status> status(const std::string& path) const override;
  std::optional<std::string> read(const std::string& path) const override;
  bool create(const std::string& path, std::string_view bytes) override;
  bool replace(const std::string& path, std::string_view bytes,
               const std::function<bool(std::string_view present)>& agrees) override;
  bool makeFolder(const std::string& path) override;
  bool move(const std::string& from, const std::string& to) override;
  bool remove(const std::string& path) override;

  /// The folder's descriptor; closed when there is no such folder.
  Descriptor folder(const std::string& path) const;

 private:
  /// Where an entry stands: the folder that holds it, opened, and its name there.
  struct Place {
    Descriptor folder;
    std::string name;
    bool isFound() const { return folder.isOpen(); }
  };
  Place placeOf(const std::string& path) const;

  std::string root_;
};

}  // namespace kelo::platform::native
