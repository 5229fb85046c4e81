// The files of a test: a twin of the file system in memory.
#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/file_system.h"

namespace kelo::platform {

/// A directory exists when it was made, or when a file stands in it.
class MemoryFileSystem : public FileSystem {
 public:
  void removeDirectory(const std::string& path);  ///< an empty one

  bool exists(const std::string& path) const override;
  bool isRegularFile(const std::string& path) const override;
  bool isDirectory(const std::string& path) const override;
  std::optional<int64_t> fileSize(const std::string& path) const override;
  std::optional<std::string> readFile(const std::string& path) const override;
  bool writeFile(const std::string& path, std::string_view bytes) override;
  bool makeDirectory(const std::string& path) override;
  bool removeFile(const std::string& path) override;
  std::optional<std::vector<std::string>> listDirectory(const std::string& path) const override;

 private:
  std::map<std::string, std::string> files_;
  std::set<std::string> directories_{""};
};

}  // namespace kelo::platform
