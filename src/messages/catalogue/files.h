// Texts of the files panel.
#pragma once

#include <string>

#include "messages/alert.h"
#include "messages/catalogue/values.h"

namespace kelo::text {

inline std::string quoted(const std::string& name) { return "\"" + name + "\""; }

inline Alert failedToEnumerate(const std::string& path) { return {"Failed to enumerate directory " + path, ""}; }
inline Alert failedToGetResources(const std::string& path) { return {"Failed to get url resources for " + path, ""}; }

inline constexpr const char* kInvalidFileName = "Invalid File Name";
inline constexpr const char* kFileNameRule =
    "Only letters, numbers, and underscore are allowed in a file name. A valid name cannot start with a number or "
    "underscore.";
inline constexpr const char* kFileKinds = "Only m, csv, txt or dat file";
inline constexpr const char* kInvalidFolderName = "Invalid Folder Name";
inline constexpr const char* kFolderNameRule =
    "Only letters, numbers, and underscore are allowed in a folder name. A folder name cannot start with a number or "
    "underscore, and cannot contain a file extension.";
inline constexpr const char* kFolderExtension = "A folder name should have no file extension";

inline std::string fileOrFolder(bool isFolder) { return isFolder ? "folder " : "file "; }
inline std::string failedToCreate(bool isFolder, const std::string& name) {
  return "Failed to create " + fileOrFolder(isFolder) + name;
}
inline std::string failedToRename(bool isFolder, const std::string& name) {
  return "Failed to rename " + fileOrFolder(isFolder) + name;
}
inline Alert failedToDuplicate(const std::string& name) { return {"Failed to duplicate " + name, ""}; }
inline Alert failedToDelete(const std::string& name) { return {"Failed to delete " + name, ""}; }

inline constexpr const char* kFailedToCopy = "Failed to Copy";
inline constexpr const char* kFailedToMove = "Failed to Move";
inline constexpr const char* kCopyIntoChild = "Cannot copy a folder to its child folder";
inline constexpr const char* kMoveIntoChild = "Cannot move a folder to its child folder";
inline std::string alreadyExists(const std::string& name) {
  return "File " + quoted(name) + " already exists in the destination folder";
}
inline std::string notFound(const std::string& name) { return quoted(name) + " does not exist"; }

inline constexpr const char* kImportAborted = "Import Aborted";
inline std::string importOfNonText(const std::string& name) {
  return "Importing a file of non-text type (" + name + ")";
}
inline std::string importFailed(const std::string& name) { return "Error occurred while importing " + quoted(name); }

inline constexpr const char* kNoText = "The file is not a text file";
inline std::string failedToSave(const std::string& name) { return "Failed to save " + quoted(name); }
inline constexpr const char* kFileIsGone = "The file does not exist any more";
inline constexpr const char* kFileHasChanged = "The file has been changed by someone else since it was opened";

}  // namespace kelo::text
