#include "platform/file_tree.h"

#include <algorithm>

namespace kelo::platform {
namespace {

constexpr size_t kLongestPath = 4096;

}  // namespace

std::optional<std::vector<std::string>> componentsOf(std::string_view path) {
  std::vector<std::string> components;
  if (path.empty()) return components;
  if (path.size() > kLongestPath || path.find('\0') != std::string_view::npos) return std::nullopt;
  while (true) {
    const size_t slash = std::min(path.find('/'), path.size());
    const std::string_view component = path.substr(0, slash);
    if (component.empty() || component == "." || component == "..") return std::nullopt;
    components.emplace_back(component);
    if (slash == path.size()) return components;
    path.remove_prefix(slash + 1);
  }
}

}  // namespace kelo::platform
