// A window of the app: one web socket. Part of web_server.cpp.
#pragma once

#include <deque>

#include "platform/native/clock.h"
#include "session/json_rpc.h"
#include "shells/web/server_state.h"

namespace kelo::web {

/// Reads messages for the service and writes answers and notifications, in order. It lives as long
/// as something waits on its socket.
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
      addSecurityHeaders(response);
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

}  // namespace kelo::web
