// The pages as a web site that opens from disk: no server, no fetching.
#pragma once

#include <string>
#include <vector>

namespace kelo::docs {

/// Makes the site of the built resources in a folder. Returns what could not be written.
std::vector<std::string> buildSite(const std::string& resources, const std::string& site);

}  // namespace kelo::docs
