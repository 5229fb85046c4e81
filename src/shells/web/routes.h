// What the server answers to, and what each route asks for.
#pragma once

#include <array>
#include <string_view>

namespace kelo::web {

enum class RouteKind { token, admission, session, appFile };

struct Route {
  RouteKind kind;
  std::string_view path;         ///< empty: any other
  std::string_view methods;      ///< with a blank between
  bool needsOrigin;              ///< the Origin must be there and ours: all that changes something, and the web socket
  bool needsCookie;              ///< the token must have been exchanged
  std::string_view contentType;  ///< of the request; empty: it has no body
};

inline constexpr std::array<Route, 4> kRoutes = {{
    // kind             path        methods     origin  cookie  content type
    {RouteKind::token, "/token", "POST", true, false, "application/json"},
    {RouteKind::admission, "/admission", "POST", true, true, "application/json"},  // tells a page why it has no session
    {RouteKind::session, "/session", "GET", true, true, ""},
    {RouteKind::appFile, "", "GET HEAD", false, false, ""},
}};

}  // namespace kelo::web
