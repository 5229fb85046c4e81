// `kelo serve`: the session in a browser.
#pragma once

#include "shells/serve/serve_options.h"

namespace kelo::web {

/// Serves until Ctrl-C. Returns the status to end with.
int serveWeb(const serve::ServeOptions& options);

}  // namespace kelo::web
