#include "shells/serve/serve_options.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>

namespace kelo::serve {

std::variant<ServeOptions, int> parseServeOptions(int argc, char** argv) {
  ServeOptions options;
  bool staysClosed = false;
  CLI::App app("Serves the engine to a front end: a web app, or a program that speaks JSON-RPC.", "kelo serve");
  CLI::Option* stdio = app.add_flag("--stdio", options.stdio, "One message a line on standard input and output");
  app.add_option("--port", options.port, "Port of the web server; 0: that of last time, or any free one")
      ->type_name("N")->check(CLI::Range(0, 65535))->excludes(stdio);
  app.add_option("--host", options.host, "Address of the web server")->type_name("ADDRESS")->excludes(stdio);
  app.add_flag("--new-token", options.newToken, "Lets in no page that was let in before")->excludes(stdio);
  app.add_flag("--no-open", staysClosed, "Do not open the browser")->excludes(stdio);
  app.add_option("--workdir", options.workDir, "Work directory (default: the current one)")->type_name("DIR");
  app.add_option("--state", options.stateDir, "Where settings and history are kept")->type_name("DIR");
  app.add_option("--documents", options.documentsDir, "Where figures are kept")->type_name("DIR");
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {
    app.exit(wanted);
    return 0;
  } catch (const CLI::ParseError& fault) {
    std::fprintf(stderr, "kelo serve: %s (kelo serve --help tells more)\n", fault.what());
    return 2;
  }
  options.opens = !staysClosed;
  return options;
}

}  // namespace kelo::serve
