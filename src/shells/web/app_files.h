// The app's own files, read once at the start. Only exact paths are known, so no request reaches
// anything else.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace kelo::web {

struct AppFile {
  std::string content;
  std::optional<std::string> brotli, gzip;  ///< the same content, compressed by the build
  std::string type;                         ///< its media type
  std::string tag;                          ///< tells one content from another
  bool isHashed = false;                    ///< the name changes with the content, so it may be kept for ever
};

class AppFiles {
 public:
  /// folder   what the build of the app has made; a missing one has no files
  static AppFiles read(const std::string& folder);

  /// path   of a request; "/" is the app's page
  const AppFile* find(std::string_view path) const;
  bool isEmpty() const { return files_.empty(); }

 private:
  std::map<std::string, AppFile, std::less<>> files_;
};

}  // namespace kelo::web
