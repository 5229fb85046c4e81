// Watching of folders by the system's own means. A thread waits for the system's notices; a burst
// of changes is reported once.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "platform/folder_watcher.h"
#include "platform/native/disk_tree.h"
#include "platform/queues.h"

namespace kelo::platform::native {

class InotifyWatcher final : public FolderWatcher {
 public:
  /// REQUIRES: tree and queue outlive this; `changed` may still be called by blocks that the queue
  /// holds then
  InotifyWatcher(const DiskTree& tree, MainQueue& queue, Changed changed);
  ~InotifyWatcher() override;

  bool watch(const std::string& path) override;
  void unwatch(const std::string& path) override;

 private:
  void serve();
  void tell();

  const DiskTree& tree_;
  MainQueue& queue_;
  Changed changed_;
  Descriptor events_, wakeEnd_, endingEnd_;  // the last two: a pipe, closed to end the thread
  std::mutex mutex_;
  std::map<int, std::string> paths_;  // by the system's number of the watch
  std::thread thread_;                // started with the first folder
};

}  // namespace kelo::platform::native
