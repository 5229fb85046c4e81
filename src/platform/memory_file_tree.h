// The twin of the file tree in memory, over the files of a MemoryFileSystem, so that the
// interpreter of a test and its files panel see the same.
#pragma once

#include <map>
#include <string>

#include "platform/file_tree.h"
#include "platform/memory_file_system.h"

namespace kelo::platform {

class MemoryFileTree final : public FileTree {
 public:
  explicit MemoryFileTree(MemoryFileSystem& files) : files_(files) {}

  std::optional<std::vector<Entry>> list(const std::string& path) const override;
  std::optional<Status> status(const std::string& path) const override;
  std::optional<std::string> read(const std::string& path) const override;
  bool create(const std::string& path, std::string_view bytes) override;
  bool replace(const std::string& path, std::string_view bytes,
               const std::function<bool(std::string_view present)>& agrees) override;
  bool makeFolder(const std::string& path) override;
  bool move(const std::string& from, const std::string& to) override;
  bool remove(const std::string& path) override;

  bool isReadOnly = false;                 ///< as a full disk or a folder without the right to write
  std::map<std::string, double> modified;  ///< what a test says of dates; other entries have none

 private:
  bool canMake(const std::string& path) const;

  MemoryFileSystem& files_;
};

}  // namespace kelo::platform
