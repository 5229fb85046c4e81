// The file system of the machine, seen from the work directory.
#pragma once

#include "platform/file_system.h"

namespace kelo::platform::native {

/// Paths are relative to the work directory and stay inside: an absolute path and one that leads
/// out by ".." name nothing.
class Disk final : public FileSystem {
 public:
  explicit Disk(std::string workDir) : workDir_(std::move(workDir)) {}

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
  std::optional<std::string> located(const std::string& path) const;

  std::string workDir_;
};

}  // namespace kelo::platform::native
