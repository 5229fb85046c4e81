// Listing, reading and writing; transfer.cpp has what makes, moves and removes.
#include "files/file_panel.h"

#include <fmt/format.h>

#include "files/names.h"
#include "messages/catalogue/files.h"
#include "messages/catalogue/run_control.h"

namespace kelo {
namespace {

constexpr const char* kSortedByKey = "sortedBy";
constexpr double kReferenceDate = 978307200;  ///< 2001-01-01, in seconds since 1970-01-01

}  // namespace

SortBy FilePanel::sortedBy() const {
  const auto stored = store_.read<int64_t>(kSortedByKey);
  return sortByOf(stored.value_or(-1)).value_or(SortBy::nameAsc);
}

void FilePanel::setSortedBy(SortBy order) {
  store_.set(kSortedByKey, static_cast<int64_t>(order));
  store_.save();
}

std::vector<FileItem> FilePanel::list(const std::string& folder) const {
  const auto entries = isVisiblePath(folder) ? tree_.list(folder) : std::nullopt;
  if (!entries) throw text::failedToEnumerate(folder);
  std::vector<FileItem> items;
  for (const auto& [name, status] : *entries) {
    if (!isVisibleName(name)) continue;
    const std::string path = joinPath(folder, name);
    if (!status) throw text::failedToGetResources(path);
    FileItem item{path, path, fileUrl(workDir_ + "/" + path, status->isFolder), {}, status->isFolder, {}, true};
    if (!status->isFolder) item.size = status->size;
    if (status->modified) item.lastModifiedDate = *status->modified - kReferenceDate;
    items.push_back(std::move(item));
  }
  sortItems(items, sortedBy());
  return items;
}

bool FilePanel::isFolder(const std::string& path) const {
  const auto status = isVisiblePath(path) ? tree_.status(path) : std::nullopt;
  return status && status->isFolder;
}

FilePanel::OpenedText FilePanel::read(const std::string& path) const {
  const auto bytes = isVisiblePath(path) ? tree_.read(path) : std::nullopt;
  const std::string name(lastComponent(path));
  if (!bytes) throw Alert{text::failedToLoad(name), ""};
  if (!isText(*bytes)) throw Alert{text::failedToLoad(name), text::kNoText};
  return {*bytes, revisionOf(*bytes)};
}

std::string FilePanel::write(const std::string& path, std::string_view text,
                             const std::optional<std::string>& revision) {
  const Alert failure{text::failedToSave(std::string(lastComponent(path))), ""};
  const auto status = isVisiblePath(path) ? tree_.status(path) : std::nullopt;
  if (!status || status->isFolder) throw Alert{failure.title, text::kFileIsGone};
  bool isStale = false;
  const bool isWritten = tree_.replace(path, text, [&](std::string_view present) {
    isStale = revision && revisionOf(present) != *revision;
    return !isStale;
  });
  if (isStale) throw Alert{failure.title, text::kFileHasChanged};
  if (!isWritten) throw failure;
  return revisionOf(text);
}

// FNV-1a, 64 bits, with the length.
std::string revisionOf(std::string_view bytes) {
  uint64_t hash = 0xCBF29CE484222325u;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
  return fmt::format("{:016x}-{:x}", hash, bytes.size());
}

}  // namespace kelo
