#include "shells/web/addresses.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <unistd.h>

#include <memory>

namespace kelo::web {
namespace {

std::string inBrackets(const std::string& address) {
  return address.find(':') == std::string::npos ? address : "[" + address + "]";
}

/// The addresses of the network cards, IPv4 first.
std::vector<std::string> cardAddresses() {
  ifaddrs* list = nullptr;
  if (getifaddrs(&list) != 0) return {};
  const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> own(list, freeifaddrs);
  std::vector<std::string> addresses;
  for (const int family : {AF_INET, AF_INET6}) {
    for (const ifaddrs* card = list; card != nullptr; card = card->ifa_next) {
      if (card->ifa_addr == nullptr || card->ifa_addr->sa_family != family || (card->ifa_flags & IFF_LOOPBACK) != 0)
        continue;
      const void* bytes =
          family == AF_INET ? static_cast<const void*>(&reinterpret_cast<const sockaddr_in*>(card->ifa_addr)->sin_addr)
                            : &reinterpret_cast<const sockaddr_in6*>(card->ifa_addr)->sin6_addr;
      char text[INET6_ADDRSTRLEN];
      if (inet_ntop(family, bytes, text, sizeof text) != nullptr) addresses.push_back(inBrackets(text));
    }
  }
  return addresses;
}

}  // namespace

bool isLoopback(const std::string& address) {
  return address == "localhost" || address == "::1" || address.starts_with("127.");
}

std::vector<std::string> hostsOf(const std::string& address) {
  const std::vector<std::string> loopback = {"127.0.0.1", "localhost", "[::1]"};
  std::vector<std::string> hosts;
  const bool isAny = address == "0.0.0.0" || address == "::";
  if (isAny) {
    hosts = cardAddresses();
  } else {
    hosts.push_back(inBrackets(address));
  }
  if (isAny || isLoopback(address)) hosts.insert(hosts.end(), loopback.begin(), loopback.end());
  char name[256] = {};
  if (!isLoopback(address) && gethostname(name, sizeof name - 1) == 0 && name[0] != '\0') {
    hosts.emplace_back(name);
    hosts.push_back(std::string(name) + ".local");
  }
  return hosts;
}

}  // namespace kelo::web
