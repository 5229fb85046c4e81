// JSON-RPC 2.0 as text: one request in, answers and notifications out.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace kelo::session {

using Json = nlohmann::ordered_json;

enum ErrorCode : int {
  kNoJson = -32700,
  kNoRequest = -32600,
  kUnknownMethod = -32601,
  kWrongParameters = -32602,
  kRunIsGoingOn = -32001,
  kAlert = 1,
};

/// What a request is refused with; thrown by whoever reads or carries one out.
struct Refusal {
  ErrorCode code;
  std::string message;
  Json data = nullptr;  ///< null: none
};

/// The alert of a panel. text: empty when it has none
Refusal alert(const std::string& title, const std::string& text = "");

struct Request {
  Json id;  ///< a text or an integer
  std::string method;
  Json params;  ///< an object
};

/// Limits of a message: 64 MiB, 100 levels of brackets.
inline constexpr size_t kMaxMessageBytes = size_t{64} << 20;
inline constexpr int kMaxMessageDepth = 100;

/// Reads a message. *id becomes that of the message as soon as it is known, else null.
/// throws Refusal: kNoJson, kNoRequest
Request readRequest(std::string_view message, Json* id);

/// Messages as one line each. Bytes that are no UTF-8 become U+FFFD.
std::string resultText(const Json& id, const Json& result);
std::string errorText(const Json& id, const Refusal& refusal);
std::string notificationText(const std::string& method, const Json& params);

}  // namespace kelo::session
