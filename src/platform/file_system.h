// Files, as an interface. Paths are UTF-8 with "/" between their components; a relative path starts
// at the work directory, which each implementation is given when it is made. Nothing here throws:
// what cannot be had is absent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::platform {

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  virtual bool exists(const std::string& path) const = 0;
  virtual bool isRegularFile(const std::string& path) const = 0;
  virtual bool isDirectory(const std::string& path) const = 0;

  /// Bytes of a regular file, or nothing when it is none.
  virtual std::optional<int64_t> fileSize(const std::string& path) const = 0;
  /// The bytes of a file, or nothing when it is none or cannot be read.
  virtual std::optional<std::string> readFile(const std::string& path) const = 0;
  /// Replaces or makes a file, whole or not at all: a reader sees the old bytes or the new ones.
  /// False: nothing changed.
  virtual bool writeFile(const std::string& path, std::string_view bytes) = 0;
  /// Makes a directory, and those above it, unless it is there. False: it is not there afterwards.
  virtual bool makeDirectory(const std::string& path) = 0;
  /// Removes a regular file. False: nothing changed.
  virtual bool removeFile(const std::string& path) = 0;
  /// Names of a directory's entries, sorted by their bytes, without "." and ".."; nothing when it
  /// is no directory.
  virtual std::optional<std::vector<std::string>> listDirectory(const std::string& path) const = 0;
};

}  // namespace kelo::platform
