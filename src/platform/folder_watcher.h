// Changes in folders that come from outside, as an interface.
#pragma once

#include <functional>
#include <string>

namespace kelo::platform {

class FolderWatcher {
 public:
  /// Told of a folder whose entries or files have changed, on the main queue, a few times a second
  /// at most.
  using Changed = std::function<void(const std::string& folder)>;

  virtual ~FolderWatcher() = default;

  /// Watches a folder, not what is below it. Again for a watched one: does nothing. False: it
  /// cannot be watched.
  ///
  /// path   relative to the root of a FileTree
  virtual bool watch(const std::string& path) = 0;
  virtual void unwatch(const std::string& path) = 0;
};

}  // namespace kelo::platform
