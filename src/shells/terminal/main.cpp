// The terminal program.
#include <unistd.h>

#include <cstdio>
#include <string_view>

#include "linear/linear.h"
#include "platform/native/machine.h"
#include "shells/stdio/stdio_server.h"
#include "shells/terminal/batch.h"
#include "shells/terminal/function_help.h"
#include "shells/terminal/interactive.h"
#include "shells/terminal/options.h"
#include "shells/terminal/terminal.h"
#include "shells/web/web_shell.h"

namespace {

/// `kelo serve ...`: a front end of another kind.
int serve(int argc, char** argv) {
  using namespace kelo::serve;
  const std::variant<ServeOptions, int> parsed = parseServeOptions(argc, argv);
  if (const int* status = std::get_if<int>(&parsed)) return *status;
  ServeOptions options = std::get<ServeOptions>(parsed);
  std::string fault;
  const std::optional<std::string> workDir = workDirectory(options, &fault);
  if (!workDir) {
    std::fprintf(stderr, "kelo serve: %s\n", fault.c_str());
    return 2;
  }
  options.workDir = *workDir;
  if (options.stdio) return serveStdio(options);
  return kelo::web::serveWeb(options);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace kelo::terminal;
  kelo::platform::native::fitMatrixThreads(argv);
  kelo::endIdleMatrixThreads();
  holdStandardStreams();
  if (argc > 1 && std::string_view(argv[1]) == "serve") return serve(argc - 1, argv + 1);
  const std::variant<Options, ExitStatus> parsed = parseOptions(argc, argv);
  if (const ExitStatus* status = std::get_if<ExitStatus>(&parsed)) return *status;
  const Options& options = std::get<Options>(parsed);
  if (options.functions) {
    const kelo::docs::TextLook look{.width = terminalWidth(), .colour = wantsColour(STDOUT_FILENO)};
    return printFunctionHelp(*options.functions, look, /*listsCommands=*/false) ? kAllRan : kCommandFailed;
  }
  const bool isInteractive =
      options.stage == Stage::run && options.commands.empty() && !options.file && isatty(STDIN_FILENO);
  return isInteractive ? runInteractive(options) : runBatch(options);
}
