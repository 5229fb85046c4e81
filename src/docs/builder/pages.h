// Builds the resources: every page's HTML, its figures, its Markdown for the terminal, the tree and
// the search index.
#pragma once

#include <string>
#include <vector>

#include "docs/builder/contents.h"

namespace kelo::docs {

/// Writes the resources of all pages into a folder, which is made if need be. Returns what could
/// not be written.
std::vector<std::string> buildPages(const std::vector<Entry>& entries, const std::string& resources);

}  // namespace kelo::docs
