#include "platform/native/inotify_watcher.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <cstring>
#include <set>

namespace kelo::platform::native {
namespace {

constexpr uint32_t kEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_ONLYDIR;
constexpr int kBurstMilliseconds = 100;

}  // namespace

InotifyWatcher::InotifyWatcher(const DiskTree& tree, MainQueue& queue, Changed changed)
    : tree_(tree), queue_(queue), changed_(std::move(changed)), events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  endingEnd_ = Descriptor(ends[0]);
  wakeEnd_ = Descriptor(ends[1]);
}

InotifyWatcher::~InotifyWatcher() {
  wakeEnd_ = Descriptor();
  if (thread_.joinable()) thread_.join();
}

bool InotifyWatcher::watch(const std::string& path) {
  const Descriptor folder = tree_.folder(path);
  if (!folder.isOpen() || !events_.isOpen() || !endingEnd_.isOpen()) return false;
  // By its descriptor, so that no link can be put in the way.
  const std::string opened = "/proc/self/fd/" + std::to_string(folder.number());
  const std::lock_guard lock(mutex_);
  const int number = inotify_add_watch(events_.number(), opened.c_str(), kEvents);
  if (number < 0) return false;
  paths_[number] = path;
  if (!thread_.joinable()) thread_ = std::thread([this] { serve(); });
  return true;
}

void InotifyWatcher::unwatch(const std::string& path) {
  const std::lock_guard lock(mutex_);
  for (auto entry = paths_.begin(); entry != paths_.end(); ++entry) {
    if (entry->second != path) continue;
    inotify_rm_watch(events_.number(), entry->first);
    paths_.erase(entry);
    return;
  }
}

void InotifyWatcher::serve() {
  pollfd waits[2] = {{events_.number(), POLLIN, 0}, {endingEnd_.number(), POLLIN, 0}};
  while (true) {
    poll(waits, 2, -1);
    if (waits[1].revents != 0) return;
    if (waits[0].revents == 0) continue;
    if (poll(&waits[1], 1, kBurstMilliseconds) > 0) return;
    tell();
  }
}

/// Reads all that waits and reports each folder once.
void InotifyWatcher::tell() {
  alignas(inotify_event) char buffer[16384];
  std::set<int> numbers;
  for (ssize_t length; (length = read(events_.number(), buffer, sizeof buffer)) > 0;) {
    for (const char* at = buffer; at < buffer + length;) {
      inotify_event event;
      std::memcpy(&event, at, sizeof event);
      numbers.insert(event.wd);
      at += sizeof event + event.len;
    }
  }
  const std::lock_guard lock(mutex_);
  for (const int number : numbers) {
    const auto found = paths_.find(number);
    if (found == paths_.end()) continue;
    queue_.async([changed = changed_, path = found->second] { changed(path); });
  }
}

}  // namespace kelo::platform::native
