#include "shells/serve/machine.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "frontend/matlab_parser.h"
#include "platform/native/machine.h"
#include "platform/native/resources.h"
#include "platform/native/state_directory.h"

namespace kelo::serve {
namespace {

void report(const std::string& fault) { std::fprintf(stderr, "kelo: %s\n", fault.c_str()); }

std::string displayText(const std::string& workDir) {
  const char* home = std::getenv("HOME");
  const std::string prefix = home == nullptr ? "" : home;
  if (prefix.size() < 2 || (workDir != prefix && !workDir.starts_with(prefix + "/"))) return workDir;
  return "~" + workDir.substr(prefix.size());
}

/// The folder asked for, else that of the settings when one was asked for, else the one of the XDG
/// convention.
std::string documentsDirectory(const ServeOptions& options) {
  if (options.documentsDir) return *options.documentsDir;
  if (options.stateDir) return *options.stateDir;
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && data[0] == '/') {
    return std::string(data) + "/kelo";
  }
  const char* home = std::getenv("HOME");
  return std::string(home != nullptr ? home : ".") + "/.local/share/kelo";
}

}  // namespace

Machine::Machine(const ServeOptions& options, const Transport& transport)
    : store(platform::native::stateDirectory(options.stateDir), report),
      files(options.workDir),
      tree(options.workDir),
      resources(platform::native::resourceDirectory()),
      documents(documentsDirectory(options)),
      watcher(tree, mainQueue, [this](const std::string& folder) { session.folderChanged(folder); }),
      session({{parserQueue, mainQueue, synchronization, files, store, clock},
               tree,
               resources,
               documents,
               options.workDir,
               displayText(options.workDir),
               transport.notify,
               transport.isCongested,
               &watcher,
               &renderer}) {
  std::error_code ignored;  // saving tells
  std::filesystem::create_directories(documentsDirectory(options), ignored);
  session.panels().figureDocuments.makeFolder();
  platform::native::adaptToMachine();
  platform::setParallelFor(&pool);
  parserQueue.async(warmUpParser);
}

Machine::~Machine() {
  session.stop();
  mainQueue.serveWhileRunning(parserQueue, [] { platform::setParallelFor(nullptr); });
}

std::optional<std::string> workDirectory(const ServeOptions& options, std::string* fault) {
  std::error_code error;
  const auto path = std::filesystem::canonical(options.workDir, error);
  if (!error && std::filesystem::is_directory(path, error)) return path.string();
  *fault = options.workDir + " is no directory";
  return std::nullopt;
}

}  // namespace kelo::serve
