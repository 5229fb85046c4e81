// The keys of the server, kept from one start to the next, so that a page that is open comes back
// to a server that was started anew. They stand in a file that nobody but the user may read;
// another one is not trusted.
#pragma once

#include <optional>
#include <string>

#include "shells/web/secret.h"

namespace kelo::web {

struct Keys {
  Secret token = Secret::random(), cookie = Secret::random();
  int port = 0;  ///< of the last server; 0: none yet
};

/// Nothing when there is no such file, when others may read it, or when it does not hold keys.
std::optional<Keys> readKeys(const std::string& path);

/// Makes the folder too when it is missing. Returns the system's words about the fault, if any.
std::optional<std::string> writeKeys(const std::string& path, const Keys& keys);

}  // namespace kelo::web
