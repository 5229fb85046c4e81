#include "shells/web/access.h"

#include <algorithm>

namespace kelo::web {
namespace {

std::string lowered(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return lower;
}

bool isMember(std::string_view list, std::string_view word) {
  while (!list.empty()) {
    const size_t end = std::min(list.find(' '), list.size());
    if (list.substr(0, end) == word) return true;
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return false;
}

const Route& routeOf(std::string_view path) {
  const auto route =
      std::ranges::find_if(kRoutes, [&](const Route& row) { return row.path == path || row.path.empty(); });
  return *route;
}

/// The type alone, without parameters such as the character set.
std::string mediaType(std::string_view header) {
  header = header.substr(0, header.find(';'));
  while (header.ends_with(' ')) header.remove_suffix(1);
  return lowered(header);
}

}  // namespace

Access::Access(const std::vector<std::string>& hosts, int port, Keys keys)
    : cookieName_("kelo-" + std::to_string(port)), keys_(std::move(keys)) {
  for (const std::string& host : hosts) {
    hosts_.push_back(lowered(host) + ":" + std::to_string(port));
    if (port == 80) hosts_.push_back(lowered(host));
  }
}

Access::Verdict Access::judge(const RequestFacts& request) const {
  if (!isOwnHost(request)) return {nullptr, 403};
  if (!request.target.starts_with('/')) return {nullptr, 404};
  const Route& route = routeOf(pathOf(request.target));
  if (!isMember(route.methods, request.method)) return {nullptr, 405};
  if (route.needsOrigin && !isOwnOrigin(request)) return {nullptr, 403};
  if (!route.contentType.empty() && mediaType(request.contentType.value_or("")) != route.contentType) {
    return {nullptr, 415};
  }
  if (route.needsCookie && !hasCookie(request)) return {nullptr, 401};
  return {&route, 0};
}

bool Access::isOwnHost(const RequestFacts& request) const {
  return request.host && std::ranges::find(hosts_, lowered(*request.host)) != hosts_.end();
}

/// The page that asks was loaded from the very address that it asks.
bool Access::isOwnOrigin(const RequestFacts& request) const {
  if (!request.origin || lowered(*request.origin) != "http://" + lowered(*request.host)) return false;
  return !request.fetchSite || *request.fetchSite == "same-origin" || *request.fetchSite == "none";
}

bool Access::hasCookie(const RequestFacts& request) const {
  std::string_view cookies = request.cookies ? std::string_view(*request.cookies) : std::string_view();
  while (!cookies.empty()) {
    const size_t end = std::min(cookies.find(';'), cookies.size());
    const std::string_view cookie = cookies.substr(0, end);
    const size_t sign = cookie.find('=');
    if (cookie.substr(0, sign) == cookieName_ && sign != std::string_view::npos &&
        keys_.cookie.matches(cookie.substr(sign + 1))) {
      return true;
    }
    cookies.remove_prefix(std::min(end + 1, cookies.size()));
    while (cookies.starts_with(' ')) cookies.remove_prefix(1);
  }
  return false;
}

std::string Access::setCookie() const {
  return cookieName_ + "=" + keys_.cookie.text() + "; Path=/; HttpOnly; SameSite=Strict; Max-Age=2592000";
}

const std::vector<std::pair<std::string_view, std::string_view>>& securityHeaders() {
  static const std::vector<std::pair<std::string_view, std::string_view>> headers = {
      {"Content-Security-Policy",
       "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; img-src 'self' data: blob:; "
       "font-src 'self'; connect-src 'self'; worker-src 'self'; manifest-src 'self'; frame-src 'self'; "
       "frame-ancestors 'none'; base-uri 'none'; form-action 'self'"},
      {"X-Content-Type-Options", "nosniff"},
      {"X-Frame-Options", "DENY"},
      {"Referrer-Policy", "no-referrer"},
      {"Cross-Origin-Opener-Policy", "same-origin"},
      {"Cross-Origin-Embedder-Policy", "require-corp"},
      {"Cross-Origin-Resource-Policy", "same-origin"},
      {"Permissions-Policy", "camera=(), geolocation=(), microphone=()"},
  };
  return headers;
}

std::vector<std::pair<std::string_view, std::string>> frameHeaders(std::string_view host) {
  // Whether 'self' means anything in a frame without an origin, browsers do not agree on.
  const std::string own = "'self' http://" + std::string(host) + std::string(kFrameFolder);
  const std::string policy = "sandbox allow-scripts; default-src 'none'; script-src " + own + "; style-src " + own +
                             "; font-src " + own + "; img-src data:; frame-ancestors 'self'; base-uri 'none'; " +
                             "form-action 'none'";
  return {
      {"Content-Security-Policy", policy},
      {"X-Frame-Options", "SAMEORIGIN"},
      {"Cross-Origin-Resource-Policy", "cross-origin"},
      {"Access-Control-Allow-Origin", "*"},
  };
}

std::string_view pathOf(std::string_view target) { return target.substr(0, target.find('?')); }

}  // namespace kelo::web
