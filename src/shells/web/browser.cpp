#include "shells/web/browser.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/native/descriptor.h"
#include "platform/native/whole_file.h"

extern char** environ;

namespace kelo::web {
namespace {

std::string temporaryFolder() {
  const char* folder = std::getenv("XDG_RUNTIME_DIR");
  return folder == nullptr ? "/tmp" : folder;
}

void start(const std::string& file) {
  std::string program = "xdg-open", argument = file;
  char* const arguments[] = {program.data(), argument.data(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  posix_spawnp(&child, program.c_str(), &actions, nullptr, arguments, environ);  // without one the address is printed
  posix_spawn_file_actions_destroy(&actions);
}

}  // namespace

BrowserLaunch::BrowserLaunch(const std::string& address) {
  if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr) return;
  std::string file = temporaryFolder() + "/kelo-XXXXXX.html";
  const platform::native::Descriptor opened(mkostemps(file.data(), 5, O_CLOEXEC));
  if (!opened.isOpen()) return;
  file_ = file;
  const std::string page = "<!doctype html><meta http-equiv=\"refresh\" content=\"0; url=" + address + "\">";
  if (platform::native::writeAll(opened.number(), page)) start(file_);
}

BrowserLaunch::~BrowserLaunch() {
  if (!file_.empty()) unlink(file_.c_str());
}

}  // namespace kelo::web
