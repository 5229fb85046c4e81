// Who may do what. A page of another site must get nothing from this server, even when its name is
// made to point here; so the Host must be one of this machine's names with the server's port,
// compared whole, and the Origin the same.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shells/web/keys.h"
#include "shells/web/routes.h"

namespace kelo::web {

/// What access depends on. A header that is missing, or stands there twice, is absent.
struct RequestFacts {
  std::string method;
  std::string target;  ///< as in the request's first line
  std::optional<std::string> host, origin, fetchSite, contentType, cookies;
};

class Access {
 public:
  /// hosts   names and addresses that this server goes by, IPv6 in brackets
  Access(const std::vector<std::string>& hosts, int port, Keys keys = {});

  /// The route of a request that may take it; otherwise the HTTP status of the refusal: 401, 403,
  /// 404, 405 or 415.
  struct Verdict {
    const Route* route = nullptr;
    int refusal = 0;
  };
  Verdict judge(const RequestFacts& request) const;

  const Secret& token() const { return keys_.token; }
  /// "NAME=VALUE; ...", for a browser that has shown the token.
  std::string setCookie() const;

 private:
  bool isOwnHost(const RequestFacts& request) const;
  bool isOwnOrigin(const RequestFacts& request) const;
  bool hasCookie(const RequestFacts& request) const;

  std::vector<std::string> hosts_;  // with the port, in lower case
  std::string cookieName_;
  Keys keys_;
};

/// The headers that every answer carries.
const std::vector<std::pair<std::string_view, std::string_view>>& securityHeaders();

/// Where the frame of the help pages stands. It is sandboxed and so has no origin: its files are
/// for any origin to load, and its page may stand in a page of this server alone.
inline constexpr std::string_view kFrameFolder = "/frame/";

/// What the files of the frame carry in place of the headers of that name.
std::vector<std::pair<std::string_view, std::string>> frameHeaders(std::string_view host);

/// The path of a request's target, without a query.
std::string_view pathOf(std::string_view target);

}  // namespace kelo::web
