// The description is an array of dictionaries, one an entry, with the fields of FileInfo as keys.
#include "docs/doc_files.h"

#include <plist/plist.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace kelo::docs {
namespace {

using List = std::unique_ptr<void, void (*)(plist_t)>;

std::string stringOf(plist_t dictionary, const char* key) {
  const plist_t value = plist_dict_get_item(dictionary, key);
  if (value == nullptr || plist_get_node_type(value) != PLIST_STRING) return "";
  uint64_t length = 0;
  const char* text = plist_get_string_ptr(value, &length);
  return std::string(text, length);
}

bool isTrue(plist_t dictionary, const char* key) {
  const plist_t value = plist_dict_get_item(dictionary, key);
  uint8_t answer = 0;
  if (value != nullptr && plist_get_node_type(value) == PLIST_BOOLEAN) plist_get_bool_val(value, &answer);
  return answer != 0;
}

DocFilesLoader::FileInfo readInfo(plist_t entry) {
  return {stringOf(entry, "relativePath"), stringOf(entry, "displayName"), isTrue(entry, "isDir"),
          stringOf(entry, "ext")};
}

}  // namespace

DocFilesLoader::DocFilesLoader(const platform::FileSystem& resources) : resources_(resources) {
  const std::optional<std::string> text = resources.readFile("docs.plist");
  if (!text) return;
  plist_t root = nullptr;
  plist_from_xml(text->data(), static_cast<uint32_t>(text->size()), &root);
  const List list(root, plist_free);
  if (root == nullptr || plist_get_node_type(root) != PLIST_ARRAY) return;
  for (uint32_t k = 0; k < plist_array_get_size(root); ++k) {
    const plist_t entry = plist_array_get_item(root, k);
    if (plist_get_node_type(entry) == PLIST_DICT) files_.push_back(readInfo(entry));
  }
}

const DocFilesLoader::FileInfo* DocFilesLoader::findPage(std::string_view relativePath) const {
  for (const FileInfo& file : files_) {
    if (!file.isDir && file.relativePath == relativePath) return &file;
  }
  return nullptr;
}

std::optional<std::string> DocFilesLoader::pathOfName(std::string_view name) const {
  for (const FileInfo& file : files_) {
    if (file.isDir || !file.relativePath.starts_with("functions/")) continue;
    const std::vector<std::string> names = namesIn(file.displayName);
    if (std::find(names.begin(), names.end(), name) != names.end()) return file.relativePath;
  }
  return std::nullopt;
}

std::vector<std::string> namesIn(std::string_view title) {
  constexpr std::string_view kComma = ", ";
  std::vector<std::string> names;
  for (size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + kComma.size()) {
    end = title.find(kComma, begin);
    names.emplace_back(title.substr(begin, end - begin));
  }
  return names;
}

std::string propertyList(const std::vector<DocFilesLoader::FileInfo>& files) {
  const List list(plist_new_array(), plist_free);
  for (const auto& file : files) {
    const plist_t entry = plist_new_dict();
    plist_dict_set_item(entry, "relativePath", plist_new_string(file.relativePath.c_str()));
    plist_dict_set_item(entry, "displayName", plist_new_string(file.displayName.c_str()));
    plist_dict_set_item(entry, "isDir", plist_new_bool(file.isDir ? 1 : 0));
    plist_dict_set_item(entry, "ext", plist_new_string(file.ext.c_str()));
    plist_array_append_item(list.get(), entry);
  }
  char* text = nullptr;
  uint32_t length = 0;
  plist_to_xml(list.get(), &text, &length);
  const std::string result(text, length);
  std::free(text);
  return result;
}

}  // namespace kelo::docs
