// Names of files and folders, and paths made of them.
#pragma once

#include <string>
#include <string_view>

namespace kelo {

struct NameParts {
  std::string_view base;
  std::string_view extension;  ///< without the point; empty when there is none
};

/// The last path component cut at its last point; a point at either end of the name cuts nothing.
NameParts partsOf(std::string_view path);

std::string_view lastComponent(std::string_view path);
std::string_view folderOf(std::string_view path);  ///< "" at the top
std::string joinPath(std::string_view folder, std::string_view name);
/// Whether `path` is `folder` or lies below it.
bool isWithin(std::string_view path, std::string_view folder);

/// A path that a person may name: no component is empty, ".", "..", hidden, or too long for a disk.
bool isVisiblePath(std::string_view path);
/// The same of a single name.
bool isVisibleName(std::string_view name);

/// Whether bytes are text: UTF-8 without NUL.
bool isText(std::string_view bytes);

/// A "file" address of a full path.
std::string fileUrl(std::string_view fullPath, bool isFolder);

}  // namespace kelo
