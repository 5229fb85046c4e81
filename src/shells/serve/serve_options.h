// What `kelo serve` was asked for.
#pragma once

#include <optional>
#include <string>
#include <variant>

namespace kelo::serve {

struct ServeOptions {
  bool stdio = false;                       ///< messages by standard input and output instead of a web server
  int port = 0;                             ///< 0: any free one
  std::string host = "127.0.0.1";
  bool newToken = false;                    ///< lets in nobody who was let in before
  bool opens = true;                        ///< opens the browser
  std::string workDir = ".";
  std::optional<std::string> stateDir;      ///< where settings are kept
  std::optional<std::string> documentsDir;  ///< where figures are kept
};

/// The options, or the status to end with when help was asked for (0) or the words are wrong (2).
/// argv[0] is "serve".
std::variant<ServeOptions, int> parseServeOptions(int argc, char** argv);

}  // namespace kelo::serve
