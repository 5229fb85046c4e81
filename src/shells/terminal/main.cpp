// The terminal program.
#include <unistd.h>

#include "platform/native/machine.h"
#include "shells/terminal/batch.h"
#include "shells/terminal/interactive.h"
#include "shells/terminal/options.h"
#include "shells/terminal/terminal.h"

int main(int argc, char** argv) {
  using namespace kelo::terminal;
  kelo::platform::native::fitMatrixThreads(argv);
  holdStandardStreams();
  const std::variant<Options, ExitStatus> parsed = parseOptions(argc, argv);
  if (const ExitStatus* status = std::get_if<ExitStatus>(&parsed)) return *status;
  const Options& options = std::get<Options>(parsed);
  const bool isInteractive = options.commands.empty() && !options.file && isatty(STDIN_FILENO);
  return isInteractive ? runInteractive(options) : runBatch(options);
}
