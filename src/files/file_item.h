// One entry of the files panel.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kelo {

/// The fields in the order of their JSON keys, which are the names of the fields.
struct FileItem {
  std::string id;               ///< identity: the relative path
  std::string relativePath;     ///< from the work directory
  std::string url;              ///< "file://" and the full path, with "%" codes
  std::optional<int64_t> size;  ///< bytes; absent for folders
  bool isFolder = false;
  std::optional<double> lastModifiedDate;  ///< seconds since 2001-01-01 00:00 UTC
  bool dowloaded = true;                   ///< NOTE: intended: the spelling is the key
};

}  // namespace kelo
