#include "shells/web/web_shell.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <optional>

#include "platform/native/resources.h"
#include "platform/native/state_directory.h"
#include "shells/serve/machine.h"
#include "shells/web/addresses.h"
#include "shells/web/app_files.h"
#include "shells/web/browser.h"
#include "shells/web/keys.h"
#include "shells/web/qr_code.h"
#include "shells/web/web_server.h"

namespace kelo::web {
namespace {

AppFiles appFiles() {
  const std::string resources = platform::native::resourceDirectory();
  AppFiles files = resources.empty() ? AppFiles() : AppFiles::read(resources + "/web");
  return files.isEmpty() ? AppFiles::read(KELO_WEB_APP) : files;
}

/// The first line is the address, for programs; the rest is for people.
void announce(const std::string& address, bool isForOthers) {
  std::printf("%s\n", address.c_str());
  if (isForOthers && isatty(STDOUT_FILENO)) std::printf("\n%s\n", qrCode(address).c_str());
  if (isatty(STDOUT_FILENO)) std::printf("Ctrl-C stops a run, and ends the program when nothing runs.\n");
  std::fflush(stdout);
}

/// Ctrl-C as the stop button: true when it has stopped a run. Pressed again at once it is meant for
/// the program.
class Interruption {
 public:
  explicit Interruption(serve::Machine& machine) : machine_(machine) {}

  bool stopsRun() {
    const double now = machine_.clock.monotonicSeconds();
    const bool isRepeated = now - lastPress_ < 2;
    lastPress_ = now;
    if (isRepeated || machine_.session.panels().isIdle()) return false;
    machine_.session.stop();
    return true;
  }

 private:
  serve::Machine& machine_;
  double lastPress_ = -10;
};

int refuse(const std::string& fault) {
  std::fprintf(stderr, "kelo serve: %s\n", fault.c_str());
  return 1;
}

/// Listens at the port asked for, else at that of last time, where pages that are still open look,
/// else at any. Returns what is wrong, or an empty text.
std::string listen(WebServer& server, const serve::ServeOptions& options, int lastPort) {
  if (options.port == 0 && lastPort != 0 && server.listen(options.host, lastPort).empty()) return "";
  return server.listen(options.host, options.port);
}

/// Keeps the keys for the next start. A port that another server has taken meanwhile stays that of
/// last time.
void keep(const std::string& path, Keys& keys, const serve::ServeOptions& options, int port) {
  if (options.port != 0 || keys.port == 0) keys.port = port;
  if (const auto fault = writeKeys(path, keys)) {
    std::fprintf(stderr, "kelo serve: the next start will have another token: %s: %s\n", path.c_str(), fault->c_str());
  }
}

}  // namespace

int serveWeb(const serve::ServeOptions& options) {
  std::signal(SIGPIPE, SIG_IGN);
  const std::string keyPath = platform::native::stateDirectory(options.stateDir) + "/web-keys.json";
  const std::optional<Keys> kept = readKeys(keyPath);
  Keys keys = kept && !options.newToken ? *kept : Keys{.port = kept ? kept->port : 0};
  WebServer server;
  if (const std::string fault = listen(server, options, keys.port); !fault.empty()) return refuse(fault);
  keep(keyPath, keys, options, server.port());
  const AppFiles files = appFiles();
  if (files.isEmpty()) std::fprintf(stderr, "kelo serve: the app is not built; only /session is served\n");
  const std::vector<std::string> hosts = hostsOf(options.host);
  const Access access(hosts, server.port(), keys);
  serve::Machine machine(
      options, {[&](const std::string& message) { server.notify(message); }, [&] { return server.isCongested(); }});
  const std::string address =
      "http://" + hosts.front() + ":" + std::to_string(server.port()) + "/#" + access.token().text();
  announce(address, !isLoopback(options.host));
  std::optional<BrowserLaunch> browser;
  if (options.opens) browser.emplace(address);
  server.serve(access, files, machine.mainQueue,
               {[&](std::string_view message, const Service::Reply& reply) { machine.session.receive(message, reply); },
                [interruption = Interruption(machine)]() mutable { return interruption.stopsRun(); }});
  return 0;
}

}  // namespace kelo::web
