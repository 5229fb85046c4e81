// The answers to requests that open no window: files, the exchange of the token for a cookie,
// refusals. Part of web_server.cpp.
#pragma once

#include <nlohmann/json.hpp>

#include "platform/native/clock.h"
#include "shells/web/server_state.h"

namespace kelo::web {

/// A header that stands there exactly once.
inline std::optional<std::string> onlyField(const Request& request, http::field name) {
  if (request.count(name) != 1) return std::nullopt;
  return std::string(toView(request[name]));
}

/// What access is judged by.
inline RequestFacts factsOf(const Request& request) {
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

inline Response answerTo(const Request& request, http::status status) {
  Response response(status, request.version());
  addSecurityHeaders(response);
  response.set(http::field::cache_control, "no-store");
  response.keep_alive(request.keep_alive());
  return response;
}

/// A status with its name as text.
inline Response refusalOf(const Request& request, http::status status) {
  Response response = answerTo(request, status);
  response.set(http::field::content_type, "text/plain; charset=utf-8");
  response.body() = std::string(toView(http::obsolete_reason(status))) + "\n";
  return response;
}

inline bool accepts(const Request& request, std::string_view coding) {
  http::token_list codings(request[http::field::accept_encoding]);
  return codings.exists(toBeast(coding));
}

/// A file of the app, as small as the browser accepts it; null: there is none.
inline Response fileAnswer(const Request& request, const AppFile* file) {
  if (file == nullptr) return refusalOf(request, http::status::not_found);
  const bool isKnown = toView(request[http::field::if_none_match]) == file->tag;
  Response response = answerTo(request, isKnown ? http::status::not_modified : http::status::ok);
  if (pathOf(toView(request.target())).starts_with(kFrameFolder)) {
    for (const auto& [name, value] : frameHeaders(toView(request[http::field::host]))) {
      response.set(toBeast(name), value);
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

inline Response tokenAnswer(const Request& request, State& state) {
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

inline Response answerOf(const Request& request, const Route& route, State& state) {
  if (route.kind == RouteKind::token) return tokenAnswer(request, state);
  if (route.kind == RouteKind::admission) return answerTo(request, http::status::no_content);
  if (route.kind == RouteKind::session) return refusalOf(request, http::status::upgrade_required);
  return fileAnswer(request, state.files->find(pathOf(toView(request.target()))));
}

}  // namespace kelo::web
