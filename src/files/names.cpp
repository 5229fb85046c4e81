#include "files/names.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>

#include "platform/file_tree.h"

namespace kelo {
namespace {

constexpr size_t kLongestName = 255;  ///< bytes, on all common disks

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isUtf8(std::string_view bytes) {
  const auto* at = reinterpret_cast<const utf8proc_uint8_t*>(bytes.data());
  const auto* end = at + bytes.size();
  while (at < end) {
    utf8proc_int32_t codePoint = 0;
    const auto length = *at < 0x80 ? 1 : utf8proc_iterate(at, end - at, &codePoint);
    if (length <= 0) return false;
    at += length;
  }
  return true;
}

}  // namespace

NameParts partsOf(std::string_view path) {
  const std::string_view name = lastComponent(path);
  const size_t point = name.rfind('.');
  if (point == std::string_view::npos || point == 0 || point + 1 == name.size()) return {name, {}};
  return {name.substr(0, point), name.substr(point + 1)};
}

std::string_view lastComponent(std::string_view path) {
  const size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view folderOf(std::string_view path) {
  const size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

std::string joinPath(std::string_view folder, std::string_view name) {
  return folder.empty() ? std::string(name) : std::string(folder).append("/").append(name);
}

bool isWithin(std::string_view path, std::string_view folder) {
  return folder.empty() || path == folder || (path.starts_with(folder) && path.substr(folder.size()).starts_with('/'));
}

bool isVisibleName(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName && !name.starts_with('.') &&
         name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos && isUtf8(name);
}

bool isVisiblePath(std::string_view path) {
  const auto components = platform::componentsOf(path);
  return components && std::ranges::all_of(*components, [](const std::string& one) { return isVisibleName(one); });
}

bool isText(std::string_view bytes) { return bytes.find('\0') == std::string_view::npos && isUtf8(bytes); }

std::string fileUrl(std::string_view fullPath, bool isFolder) {
  std::string url = "file://";
  for (const char c : fullPath) {
    const bool isPlain = isLetter(c) || isDigit(c) || std::string_view("/-._~").find(c) != std::string_view::npos;
    url += isPlain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
  }
  if (isFolder && !url.ends_with('/')) url += '/';
  return url;
}

}  // namespace kelo
