// The operations of the panel that make, rename, copy, move and remove.
//
// A copy is built under a hidden name and takes its own name when it is whole.
#include <algorithm>
#include <set>

#include "files/file_panel.h"
#include "files/names.h"
#include "messages/catalogue/files.h"
#include "values/name.h"

namespace kelo {
namespace {

constexpr int kMostNested = 200;  ///< folders within folders that are copied

bool isKindOfFile(std::string_view extension) {
  return extension == "m" || extension == "csv" || extension == "txt" || extension == "dat";
}

/// Complains about the name of a file. `own`: an extension that it may have besides the usual ones.
void checkFileName(std::string_view name, std::string_view own) {
  const NameParts parts = partsOf(name);
  if (!followsNameRule(parts.base) || !isVisibleName(name)) throw Alert{text::kInvalidFileName, text::kFileNameRule};
  if (!isKindOfFile(parts.extension) && parts.extension != own) {
    throw Alert{text::kInvalidFileName, text::kFileKinds};
  }
}

void checkFolderName(std::string_view name) {
  if (!partsOf(name).extension.empty()) throw Alert{text::kInvalidFolderName, text::kFolderExtension};
  if (!followsNameRule(name) || !isVisibleName(name)) throw Alert{text::kInvalidFolderName, text::kFolderNameRule};
}

std::string withExtension(const std::string& name, std::string_view extension) {
  return partsOf(name).extension.empty() && !extension.empty() ? name + "." + std::string(extension) : name;
}

std::string firstText(std::string_view name, std::string_view extension) {
  if (extension != "m") return "";
  return "%% " + std::string(name) + "\n%% Enter your code here.\n";
}

}  // namespace

std::string FilePanel::newFile(const std::string& folder, const std::string& given) {
  const std::string name = withExtension(given, "m");
  checkFileName(name, "m");
  const std::string path = joinPath(folder, name);
  const Alert failure{text::failedToCreate(false, name), ""};
  if (!isFolder(folder)) throw failure;
  if (exists(path)) throw Alert{text::kInvalidFileName, text::alreadyExists(name)};
  const NameParts parts = partsOf(name);
  if (!tree_.create(path, firstText(parts.base, parts.extension))) throw failure;
  return path;
}

std::string FilePanel::newFolder(const std::string& folder, const std::string& name) {
  checkFolderName(name);
  const std::string path = joinPath(folder, name);
  const Alert failure{text::failedToCreate(true, name), ""};
  if (!isFolder(folder)) throw failure;
  if (exists(path)) throw Alert{text::kInvalidFolderName, text::alreadyExists(name)};
  if (!tree_.makeFolder(path)) throw failure;
  return path;
}

std::string FilePanel::rename(const std::string& path, const std::string& given) {
  const bool isDirectory = isFolder(path);
  const std::string title = text::failedToRename(isDirectory, std::string(lastComponent(path)));
  if (path.empty() || !isVisiblePath(path) || !exists(path)) throw Alert{title, ""};
  const std::string_view own = partsOf(path).extension;
  const std::string name = isDirectory ? given : withExtension(given, own);
  if (isDirectory) {
    checkFolderName(name);
  } else {
    checkFileName(name, own);
  }
  const std::string renamed = joinPath(folderOf(path), name);
  if (renamed == path) return path;
  if (exists(renamed)) throw Alert{title, text::alreadyExists(name)};
  if (!tree_.move(path, renamed)) throw Alert{title, ""};
  return renamed;
}

/// The first of "a_copy", "a_copy2", "a_copy3" and so on that is free, with the extension of a
/// file.
std::string FilePanel::freeName(const std::string& path) const {
  const NameParts parts = partsOf(path);
  const std::string ending = parts.extension.empty() ? "" : "." + std::string(parts.extension);
  for (int64_t k = 1;; ++k) {
    const std::string number = k == 1 ? "" : std::to_string(k);
    const std::string name = std::string(parts.base) + "_copy" + number + ending;
    if (!exists(joinPath(folderOf(path), name))) return joinPath(folderOf(path), name);
  }
}

std::string FilePanel::duplicate(const std::string& path) {
  const Alert failure = text::failedToDuplicate(std::string(lastComponent(path)));
  if (path.empty() || !isVisiblePath(path) || !exists(path)) throw failure;
  const std::string name = freeName(path);
  if (!copyEntry(path, name)) throw failure;
  return name;
}

bool FilePanel::copyInto(const std::string& from, const std::string& to, int depth) {
  const auto status = tree_.status(from);
  if (!status || depth == 0) return false;
  if (!status->isFolder) {
    const auto bytes = tree_.read(from);
    return bytes && tree_.create(to, *bytes);
  }
  const auto entries = tree_.list(from);
  if (!entries || !tree_.makeFolder(to)) return false;
  return std::ranges::all_of(*entries, [&](const platform::FileTree::Entry& entry) {
    return !isVisibleName(entry.name) || copyInto(joinPath(from, entry.name), joinPath(to, entry.name), depth - 1);
  });
}

bool FilePanel::copyEntry(const std::string& from, const std::string& to) {
  if (!isFolder(from)) return copyInto(from, to, 1);
  std::string building;
  for (int k = 1; building.empty() || exists(building); ++k) {
    building = joinPath(folderOf(to), ".kelo-copy-" + std::to_string(k));
  }
  if (copyInto(from, building, kMostNested) && tree_.move(building, to)) return true;
  tree_.remove(building);
  return false;
}

namespace {

/// What copying and moving say of themselves.
struct Transfer {
  const char *title, *intoChild;
};

/// Where the paths will stand in the folder; complains of what cannot be.
std::vector<std::string> targetsOf(const platform::FileTree& tree, const std::vector<std::string>& paths,
                                   const std::string& folder, const Transfer& transfer) {
  const auto status = isVisiblePath(folder) ? tree.status(folder) : std::nullopt;
  if (!status || !status->isFolder) throw Alert{transfer.title, text::notFound(std::string(lastComponent(folder)))};
  std::vector<std::string> targets;
  std::set<std::string> names;
  for (const std::string& path : paths) {
    const std::string name(lastComponent(path));
    const auto source = isVisiblePath(path) && !path.empty() ? tree.status(path) : std::nullopt;
    if (!source) throw Alert{transfer.title, text::notFound(name)};
    if (source->isFolder && isWithin(folder, path)) throw Alert{transfer.title, transfer.intoChild};
    const std::string target = joinPath(folder, name);
    if (!names.insert(name).second || tree.status(target)) throw Alert{transfer.title, text::alreadyExists(name)};
    targets.push_back(target);
  }
  return targets;
}

/// Whether one of the paths lies below another.
bool isNested(const std::vector<std::string>& paths, const std::string& path) {
  return std::ranges::any_of(paths, [&](const std::string& other) { return other != path && isWithin(path, other); });
}

}  // namespace

std::vector<std::string> FilePanel::copy(const std::vector<std::string>& paths, const std::string& folder) {
  std::vector<std::string> targets = targetsOf(tree_, paths, folder, {text::kFailedToCopy, text::kCopyIntoChild});
  for (size_t k = 0; k < paths.size(); ++k) {
    if (copyEntry(paths[k], targets[k])) continue;
    while (k-- > 0) tree_.remove(targets[k]);
    throw Alert{text::kFailedToCopy, text::kUnexpectedError};
  }
  return targets;
}

std::vector<std::string> FilePanel::move(const std::vector<std::string>& paths, const std::string& folder) {
  std::vector<std::string> targets = targetsOf(tree_, paths, folder, {text::kFailedToMove, text::kMoveIntoChild});
  const Alert failure{text::kFailedToMove, text::kUnexpectedError};
  if (std::ranges::any_of(paths, [&](const std::string& path) { return isNested(paths, path); })) throw failure;
  for (size_t k = 0; k < paths.size(); ++k) {
    if (tree_.move(paths[k], targets[k])) continue;
    while (k-- > 0) tree_.move(targets[k], paths[k]);
    throw failure;
  }
  return targets;
}

void FilePanel::remove(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    if (path.empty() || !isVisiblePath(path) || !exists(path)) {
      throw text::failedToDelete(std::string(lastComponent(path)));
    }
  }
  const std::set<std::string> different(paths.begin(), paths.end());
  for (const std::string& path : different) {
    if (!isNested(paths, path) && !tree_.remove(path)) throw text::failedToDelete(std::string(lastComponent(path)));
  }
}

std::string FilePanel::importFile(const std::string& folder, const std::string& name, std::string_view bytes) {
  const std::string path = joinPath(folder, name);
  const Alert failure{text::kImportAborted, text::importFailed(name)};
  if (!isVisibleName(name) || !isFolder(folder)) throw failure;
  if (exists(path)) throw Alert{text::kImportAborted, text::alreadyExists(name)};
  if (!isText(bytes)) throw Alert{text::kImportAborted, text::importOfNonText(name)};
  if (!tree_.create(path, bytes)) throw failure;
  return path;
}

}  // namespace kelo
