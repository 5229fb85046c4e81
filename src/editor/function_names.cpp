#include "editor/function_names.h"

#include <plist/plist.h>

#include <cstdint>
#include <memory>

namespace kelo {

std::optional<std::vector<std::string>> readFunctionNames(std::string_view plist) {
  if (plist.size() > UINT32_MAX) return std::nullopt;
  plist_t parsed = nullptr;
  plist_from_memory(plist.data(), static_cast<uint32_t>(plist.size()), &parsed);
  const std::unique_ptr<void, void (*)(plist_t)> root(parsed, plist_free);
  if (root == nullptr || plist_get_node_type(root.get()) != PLIST_ARRAY) return std::nullopt;
  std::vector<std::string> names;
  for (uint32_t k = 0; k < plist_array_get_size(root.get()); ++k) {
    const plist_t item = plist_array_get_item(root.get(), k);
    if (plist_get_node_type(item) != PLIST_STRING) return std::nullopt;
    names.emplace_back(plist_get_string_ptr(item, nullptr));
  }
  return names;
}

}  // namespace kelo
