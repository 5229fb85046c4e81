// Connections keep themselves alive by the handler that waits for them; whatever ends one, its
// handler is called with a fault and lets go.
#include "shells/web/web_server.h"

#include <unistd.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <chrono>
#include <cmath>
#include <csignal>
#include <deque>
#include <nlohmann/json.hpp>
#include <set>

#include "platform/native/clock.h"
#include "session/json_rpc.h"

namespace kelo::web {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using boost::system::error_code;
using tcp = asio::ip::tcp;
using Request = http::request<http::string_body>;
using Response = http::response<http::string_body>;
using SharedText = std::shared_ptr<const std::string>;

constexpr auto kRequestTime = std::chrono::seconds(30);
constexpr auto kIdleTime = std::chrono::seconds(60);
constexpr auto kFarewellTime = std::chrono::seconds(1);

std::string_view toView(beast::string_view text) { return {text.data(), text.size()}; }

class Window;

}  // namespace

struct WebServer::State {
  const Access* access = nullptr;
  const AppFiles* files = nullptr;
  Service service;
  TryLimit tries;
  std::set<Window*> windows;
  int connections = 0;
  bool isEnding = false;
  // Last: what still waits in it when it goes lets windows and connections go, which sign off
  // above.
  asio::io_context context{1};
  tcp::acceptor acceptor{context};
};

namespace {

using State = WebServer::State;

// ---- Windows: one web socket each.

class Window : public std::enable_shared_from_this<Window> {
 public:
  Window(beast::tcp_stream&& stream, State& state) : socket_(std::move(stream)), timer_(state.context), state_(state) {
    state_.windows.insert(this);
  }
  ~Window() { state_.windows.erase(this); }

  void accept(const Request& request) {
    beast::get_lowest_layer(socket_).expires_never();
    socket_.set_option(websocket::stream_base::timeout{kRequestTime, kIdleTime, /*keep_alive_pings=*/true});
    socket_.set_option(websocket::stream_base::decorator([](websocket::response_type& response) {
      response.erase(http::field::server);
      for (const auto& [name, value] : securityHeaders()) {
        response.set(beast::string_view(name.data(), name.size()), beast::string_view(value.data(), value.size()));
      }
    }));
    socket_.read_message_max(0);  // what is too long is cut below, so that it can be answered
    socket_.async_accept(request, [self = shared_from_this()](error_code fault) {
      if (!fault) self->isOpen_ = true;
      if (!fault) self->read();
    });
  }

  void send(const SharedText& message) {
    if (!isOpen_) return;
    unread_ += message->size();
    outgoing_.push_back(message);
    if (unread_ > WebServer::kMostUnread) return close(websocket::close_code::try_again_later);
    if (outgoing_.size() == 1) write();
  }

  void close(websocket::close_code code) {
    if (!isOpen_) return;
    isOpen_ = false;
    socket_.async_close(code, [self = shared_from_this()](error_code) {});
  }

  bool isCongested() const { return unread_ > WebServer::kCongestedFrom; }

 private:
  void read() {
    socket_.async_read_some(buffer_, 1 << 16, [self = shared_from_this()](error_code fault, size_t) {
      if (fault) self->isOpen_ = false;
      if (self->isOpen_) self->take();
    });
  }

  /// Keeps a piece of a message; of one beyond the limit, enough to be refused.
  void take() {
    if (!socket_.got_text()) return close(websocket::close_code::unknown_data);
    const size_t room = session::kMaxMessageBytes + 1 - message_.size();
    const auto piece = buffer_.data();
    message_.append(static_cast<const char*>(piece.data()), std::min(room, piece.size()));
    buffer_.clear();
    if (!socket_.is_message_done()) return read();
    const std::string message = std::move(message_);
    message_.clear();
    const auto reply = [weak = weak_from_this()](const std::string& answer) {
      if (const auto self = weak.lock()) self->send(std::make_shared<const std::string>(answer));
    };
    state_.service.receive(message, reply);
    readUnlessTooFast();
  }

  void readUnlessTooFast() {
    const double now = platform::native::MonotonicClock::now();
    if (now >= secondBegan_ + 1) {
      secondBegan_ = now;
      messages_ = 0;
    }
    if (++messages_ < WebServer::kMostMessagesASecond) return read();
    timer_.expires_after(std::chrono::milliseconds(static_cast<int>(1000 * (secondBegan_ + 1 - now)) + 1));
    timer_.async_wait([self = shared_from_this()](error_code) { self->read(); });
  }

  void write() {
    socket_.text(true);
    socket_.async_write(asio::buffer(*outgoing_.front()), [self = shared_from_this()](error_code fault, size_t) {
      self->unread_ -= self->outgoing_.front()->size();
      self->outgoing_.pop_front();
      if (fault) self->isOpen_ = false;
      if (self->isOpen_ && !self->outgoing_.empty()) self->write();
    });
  }

  websocket::stream<beast::tcp_stream> socket_;
  asio::steady_timer timer_;
  State& state_;
  beast::flat_buffer buffer_;
  std::string message_;
  std::deque<SharedText> outgoing_;
  size_t unread_ = 0;
  bool isOpen_ = false;
  double secondBegan_ = 0;
  int messages_ = 0;
};

// ---- Requests.

std::optional<std::string> onlyField(const Request& request, http::field name) {
  if (request.count(name) != 1) return std::nullopt;
  return std::string(toView(request[name]));
}

RequestFacts factsOf(const Request& request) {
  RequestFacts facts;
  facts.method = std::string(toView(request.method_string()));
  facts.target = std::string(toView(request.target()));
  facts.host = onlyField(request, http::field::host);
  facts.origin = onlyField(request, http::field::origin);
  facts.contentType = onlyField(request, http::field::content_type);
  facts.cookies = onlyField(request, http::field::cookie);
  if (const auto site = request.find("Sec-Fetch-Site"); site != request.end())
    facts.fetchSite = std::string(toView(site->value()));
  return facts;
}

Response answerTo(const Request& request, http::status status) {
  Response response(status, request.version());
  for (const auto& [name, value] : securityHeaders()) {
    response.set(beast::string_view(name.data(), name.size()), beast::string_view(value.data(), value.size()));
  }
  response.set(http::field::cache_control, "no-store");
  response.keep_alive(request.keep_alive());
  return response;
}

Response refusalOf(const Request& request, http::status status) {
  Response response = answerTo(request, status);
  response.set(http::field::content_type, "text/plain; charset=utf-8");
  response.body() = std::string(toView(http::obsolete_reason(status))) + "\n";
  return response;
}

bool accepts(const Request& request, std::string_view coding) {
  http::token_list codings(request[http::field::accept_encoding]);
  return codings.exists(beast::string_view(coding.data(), coding.size()));
}

Response fileAnswer(const Request& request, const AppFile* file) {
  if (file == nullptr) return refusalOf(request, http::status::not_found);
  const bool isKnown = toView(request[http::field::if_none_match]) == file->tag;
  Response response = answerTo(request, isKnown ? http::status::not_modified : http::status::ok);
  if (pathOf(toView(request.target())).starts_with(kFrameFolder)) {
    for (const auto& [name, value] : frameHeaders(toView(request[http::field::host]))) {
      response.set(beast::string_view(name.data(), name.size()), value);
    }
  }
  response.set(http::field::content_type, file->type);
  response.set(http::field::etag, file->tag);
  response.set(http::field::vary, "Accept-Encoding");
  response.set(http::field::cache_control, file->isHashed ? "public, max-age=31536000, immutable" : "no-cache");
  if (isKnown) return response;
  if (file->brotli && accepts(request, "br")) {
    response.set(http::field::content_encoding, "br");
    response.body() = *file->brotli;
  } else if (file->gzip && accepts(request, "gzip")) {
    response.set(http::field::content_encoding, "gzip");
    response.body() = *file->gzip;
  } else {
    response.body() = file->content;
  }
  return response;
}

Response tokenAnswer(const Request& request, State& state) {
  const double now = platform::native::MonotonicClock::now();
  if (!state.tries.allows(now)) return refusalOf(request, http::status::too_many_requests);
  const auto body = nlohmann::json::parse(request.body(), nullptr, /*allow_exceptions=*/false);
  const bool hasToken = body.is_object() && body.size() == 1 && body.contains("token") && body["token"].is_string();
  if (!hasToken) return refusalOf(request, http::status::bad_request);
  if (!state.access->token().matches(body["token"].get<std::string>())) {
    state.tries.failed(now);
    return refusalOf(request, http::status::unauthorized);
  }
  Response response = answerTo(request, http::status::no_content);
  response.set(http::field::set_cookie, state.access->setCookie());
  return response;
}

Response answerOf(const Request& request, const Route& route, State& state) {
  if (route.kind == RouteKind::token) return tokenAnswer(request, state);
  if (route.kind == RouteKind::admission) return answerTo(request, http::status::no_content);
  if (route.kind == RouteKind::session) return refusalOf(request, http::status::upgrade_required);
  return fileAnswer(request, state.files->find(pathOf(toView(request.target()))));
}

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

// ---- The main queue in the same loop.

class QueueDriver {
 public:
  QueueDriver(asio::io_context& context, platform::native::LoopQueue& queue)
      : queue_(queue), wake_(context, dup(queue.wakeDescriptor())), timer_(context) {
    waitForWake();
    setTimer();
  }

 private:
  void waitForWake() {
    wake_.async_wait(asio::posix::stream_descriptor::wait_read, [this](error_code fault) {
      if (fault) return;
      run();
      waitForWake();
    });
  }

  void run() {
    queue_.runReady();
    setTimer();
  }

  void setTimer() {
    const std::optional<double> seconds = queue_.secondsToNextTimer();
    if (!seconds) return void(timer_.cancel());
    const double milliseconds = std::fmin(std::fmax(std::ceil(*seconds * 1000), 0), 3600e3);
    timer_.expires_after(std::chrono::milliseconds(static_cast<int>(milliseconds)));
    timer_.async_wait([this](error_code fault) {
      if (!fault) run();
    });
  }

  platform::native::LoopQueue& queue_;
  asio::posix::stream_descriptor wake_;
  asio::steady_timer timer_;
};

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
