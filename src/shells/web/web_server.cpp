// Connections and windows keep themselves alive by the handler that waits for them; whatever ends
// one, its handler is called with a fault and lets go.
#include "shells/web/web_server.h"

#include <boost/asio/signal_set.hpp>
#include <csignal>

#include "shells/web/answers.h"
#include "shells/web/queue_driver.h"
#include "shells/web/window.h"

namespace kelo::web {
namespace {

constexpr auto kFarewellTime = std::chrono::seconds(1);

/// One connection: request after request, until it becomes a window.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(tcp::socket&& socket, State& state) : stream_(std::move(socket)), state_(state) { ++state_.connections; }
  ~Connection() { --state_.connections; }

  void read() {
    parser_.emplace();
    parser_->header_limit(WebServer::kLongestHeader);
    parser_->body_limit(WebServer::kLongestBody);
    stream_.expires_after(kRequestTime);
    http::async_read(stream_, buffer_, *parser_, [self = shared_from_this()](error_code fault, size_t) {
      if (fault == http::error::body_limit || fault == http::error::header_limit) {
        self->parser_->get().keep_alive(false);
        return self->write(refusalOf(self->parser_->get(), http::status::payload_too_large));
      }
      if (!fault) self->handle();
    });
  }

 private:
  void handle() {
    const Request& request = parser_->get();
    const Access::Verdict verdict = state_.access->judge(factsOf(request));
    if (verdict.route == nullptr) return write(refusalOf(request, http::status(verdict.refusal)));
    if (verdict.route->kind == RouteKind::session && websocket::is_upgrade(request)) return becomeWindow();
    write(answerOf(request, *verdict.route, state_));
  }

  void becomeWindow() {
    const Request request = parser_->release();
    if (state_.windows.size() >= static_cast<size_t>(WebServer::kMostWindows)) {
      return write(refusalOf(request, http::status::service_unavailable));
    }
    std::make_shared<Window>(std::move(stream_), state_)->accept(request);
  }

  void write(Response&& response) {
    // The answer to HEAD has the length of the content, and no content.
    const bool isHead = parser_ && parser_->is_header_done() && parser_->get().method() == http::verb::head;
    response.prepare_payload();
    if (isHead) {
      const std::string length = std::to_string(response.body().size());
      response.body().clear();
      response.set(http::field::content_length, length);
    }
    response_ = std::move(response);
    serializer_.emplace(response_);
    if (isHead) serializer_->split(true);
    const auto written = [self = shared_from_this()](error_code fault, size_t) { self->written(fault); };
    isHead ? http::async_write_header(stream_, *serializer_, written)
           : http::async_write(stream_, *serializer_, written);
  }

  void written(error_code fault) {
    if (!fault && response_.keep_alive()) return read();
    error_code ignored;
    stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
  }

  beast::tcp_stream stream_;
  State& state_;
  beast::flat_buffer buffer_;
  std::optional<http::request_parser<http::string_body>> parser_;
  Response response_;
  std::optional<http::response_serializer<http::string_body>> serializer_;
};

void acceptNext(State& state) {
  state.acceptor.async_accept([&state](error_code fault, tcp::socket socket) {
    if (state.isEnding) return;
    if (!fault && state.connections < WebServer::kMostConnections) {
      error_code ignored;
      socket.set_option(tcp::no_delay(true), ignored);
      std::make_shared<Connection>(std::move(socket), state)->read();
    }
    acceptNext(state);
  });
}

/// Says farewell to all windows and leaves the loop soon.
void end(State& state, asio::steady_timer& farewell) {
  state.isEnding = true;
  error_code ignored;
  state.acceptor.close(ignored);
  const std::set<Window*> windows = state.windows;
  for (Window* window : windows) window->close(websocket::close_code::going_away);
  farewell.expires_after(kFarewellTime);
  farewell.async_wait([&state](error_code) { state.context.stop(); });
}

void waitForSignal(State& state, asio::signal_set& signals, asio::steady_timer& farewell) {
  signals.async_wait([&](error_code fault, int signal) {
    if (fault) return;
    const bool goesOn = signal == SIGINT && state.service.interrupted();
    if (!state.isEnding && !goesOn) end(state, farewell);
    waitForSignal(state, signals, farewell);
  });
}

}  // namespace

WebServer::WebServer() : state_(std::make_unique<State>()) {}
WebServer::~WebServer() = default;

std::string WebServer::listen(const std::string& address, int port) {
  error_code fault;
  const auto ip = asio::ip::make_address(address == "localhost" ? "127.0.0.1" : address, fault);
  if (fault) return address + " is no address of this machine";
  const tcp::endpoint endpoint(ip, static_cast<unsigned short>(port));
  tcp::acceptor& acceptor = state_->acceptor;
  error_code ignored;
  acceptor.close(ignored);
  acceptor.open(endpoint.protocol(), fault);
  if (!fault) acceptor.set_option(asio::socket_base::reuse_address(true), fault);
  if (!fault) acceptor.bind(endpoint, fault);
  if (!fault) acceptor.listen(asio::socket_base::max_listen_connections, fault);
  return fault ? fault.message() : "";
}

int WebServer::port() const {
  error_code ignored;
  return state_->acceptor.local_endpoint(ignored).port();
}

void WebServer::serve(const Access& access, const AppFiles& files, platform::native::LoopQueue& mainQueue,
                      Service service) {
  State& state = *state_;
  state.access = &access;
  state.files = &files;
  state.service = std::move(service);
  asio::signal_set signals(state.context, SIGINT, SIGTERM, SIGHUP);
  asio::steady_timer farewell(state.context);
  QueueDriver driver(state.context, mainQueue);
  waitForSignal(state, signals, farewell);
  acceptNext(state);
  state.context.run();
}

void WebServer::notify(const std::string& message) {
  const auto shared = std::make_shared<const std::string>(message);
  const std::set<Window*> windows = state_->windows;
  for (Window* window : windows) window->send(shared);
}

bool WebServer::isCongested() const {
  const auto& windows = state_->windows;
  return !windows.empty() &&
         std::all_of(windows.begin(), windows.end(), [](const Window* one) { return one->isCongested(); });
}

}  // namespace kelo::web
