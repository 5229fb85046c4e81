#include "session/json_rpc.h"

namespace kelo::session {
namespace {

/// Brackets that stand open at once, at most; texts in quotes do not count.
int depthOf(std::string_view message) {
  int depth = 0, most = 0;
  bool inText = false;
  for (size_t k = 0; k < message.size(); ++k) {
    const char c = message[k];
    if (inText && c == '\\') ++k;
    if (c == '"') inText = !inText;
    if (inText) continue;
    if (c == '[' || c == '{') most = std::max(most, ++depth);
    if (c == ']' || c == '}') --depth;
  }
  return most;
}

Refusal noRequest(const std::string& reason) { return {kNoRequest, "No request: " + reason}; }

std::string textOf(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace

Refusal alert(const std::string& title, const std::string& text) {
  return {kAlert, title, {{"title", title}, {"text", text}}};
}

Request readRequest(std::string_view message, Json* id) {
  if (message.size() > kMaxMessageBytes) throw noRequest("the message is longer than 64 MiB");
  if (depthOf(message) > kMaxMessageDepth) throw noRequest("brackets are nested more than 100 deep");
  const Json json = Json::parse(message, nullptr, /*allow_exceptions=*/false);
  if (json.is_discarded()) throw Refusal{kNoJson, "The message is no JSON"};
  if (json.is_array()) throw noRequest("batches are refused");
  if (!json.is_object()) throw noRequest("the message is no object");
  const Json given = json.value("id", Json());
  if (!given.is_string() && !given.is_number_integer()) throw noRequest("\"id\" should be a text or an integer");
  *id = given;
  if (json.value("jsonrpc", Json()) != "2.0") throw noRequest("\"jsonrpc\" should be \"2.0\"");
  const Json method = json.value("method", Json());
  if (!method.is_string()) throw noRequest("\"method\" should be a text");
  const Json params = json.value("params", Json::object());
  if (!params.is_object()) throw Refusal{kWrongParameters, "\"params\" should be an object"};
  return {given, method.get<std::string>(), params};
}

std::string resultText(const Json& id, const Json& result) {
  return textOf({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
}

std::string errorText(const Json& id, const Refusal& refusal) {
  Json error = {{"code", static_cast<int>(refusal.code)}, {"message", refusal.message}};
  if (!refusal.data.is_null()) error["data"] = refusal.data;
  return textOf({{"jsonrpc", "2.0"}, {"id", id}, {"error", error}});
}

std::string notificationText(const std::string& method, const Json& params) {
  return textOf({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

}  // namespace kelo::session
