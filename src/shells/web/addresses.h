// The names and addresses that this machine goes by.
#pragma once

#include <string>
#include <vector>

namespace kelo::web {

/// Whether a server at the address is reached from this machine alone.
bool isLoopback(const std::string& address);

/// What may stand in the Host of a request to a server that listens on the address, without the
/// port; the first is what to tell people. IPv6 addresses are in brackets.
std::vector<std::string> hostsOf(const std::string& address);

}  // namespace kelo::web
