// What is asked of every page, so that all have one form: see docs/README.md.
#pragma once

#include <string>
#include <vector>

#include "docs/builder/contents.h"

namespace kelo::docs {

/// What is wrong with the form of a page: sentences, none when all is well. `entries` are all
/// pages, for its links.
std::vector<std::string> faultsOf(const Entry& page, const std::vector<Entry>& entries);

/// The page that a link of another page means, as a path without extension; "" is no page of the
/// sources.
std::string linkedPath(const Entry& page, const std::string& target);

/// The built-in names that have no page.
std::vector<std::string> namesWithoutPage(const std::vector<Entry>& entries);

}  // namespace kelo::docs
