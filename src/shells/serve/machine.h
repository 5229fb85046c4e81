// A session on this machine: its threads, files, settings and clock.
#pragma once

#include <functional>
#include <string>

#include "figures/pictures/native/cairo_renderer.h"
#include "platform/native/clock.h"
#include "platform/native/disk.h"
#include "platform/native/disk_tree.h"
#include "platform/native/inotify_watcher.h"
#include "platform/native/json_store.h"
#include "platform/native/parallel_pool.h"
#include "platform/native/queues.h"
#include "platform/native/synchronization.h"
#include "session/session.h"
#include "shells/serve/serve_options.h"

namespace kelo::serve {

/// What a transport does for the session.
struct Transport {
  std::function<void(const std::string& message)> notify;
  std::function<bool()> isCongested;
};

/// The transport serves mainQueue and hands messages to the session.
class Machine {
 public:
  Machine(const ServeOptions& options, const Transport& transport);
  ~Machine();  ///< stops what runs, and waits for it

  platform::native::ThreadQueue parserQueue;
  platform::native::LoopQueue mainQueue;
  platform::native::ThreadSynchronization synchronization;
  platform::native::SystemClock clock;
  platform::native::ParallelPool pool;
  platform::native::JsonStore store;
  platform::native::Disk files;
  platform::native::DiskTree tree;
  platform::native::Disk resources;
  platform::native::Disk documents;
  pictures::native::CairoRenderer renderer;
  platform::native::InotifyWatcher watcher;
  session::Session session;
};

/// The folder of the options as a whole path; nothing, and `fault` says why, when it is none.
std::optional<std::string> workDirectory(const ServeOptions& options, std::string* fault);

}  // namespace kelo::serve
