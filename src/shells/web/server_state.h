// What the parts of the web server share, and short names for the library's. Only web_server.cpp
// includes this and the parts, since the library compiles slowly.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <chrono>
#include <set>

#include "shells/web/web_server.h"

namespace kelo::web {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using boost::system::error_code;
using tcp = asio::ip::tcp;
using Request = http::request<http::string_body>;
using Response = http::response<http::string_body>;
using SharedText = std::shared_ptr<const std::string>;

inline constexpr auto kRequestTime = std::chrono::seconds(30);
inline constexpr auto kIdleTime = std::chrono::seconds(60);

inline std::string_view toView(beast::string_view text) { return {text.data(), text.size()}; }
inline beast::string_view toBeast(std::string_view text) { return {text.data(), text.size()}; }

class Window;

struct WebServer::State {
  const Access* access = nullptr;
  const AppFiles* files = nullptr;
  Service service;
  TryLimit tries;
  std::set<Window*> windows;
  int connections = 0;
  bool isEnding = false;
  // Last, so that it goes first: with it go the handlers that still wait, and with these the
  // windows and connections, which sign off above.
  asio::io_context context{1};
  tcp::acceptor acceptor{context};
};

using State = WebServer::State;

/// The headers that every answer has.
inline void addSecurityHeaders(http::fields& fields) {
  for (const auto& [name, value] : securityHeaders()) fields.set(toBeast(name), toBeast(value));
}

}  // namespace kelo::web
