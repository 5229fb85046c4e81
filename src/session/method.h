// What a method of the session is: one row of a table. Checking of parameters, the list of methods
// and their reference are made from the rows.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "session/json_rpc.h"

namespace kelo::session {

struct Panels;

enum class Kind { text, texts, integer, number, truth, object };

struct Parameter {
  const char* name;
  Kind kind;
  bool isRequired = true;
  /// What a text may be, divided by "|"; empty: any text.
  const char* choices = "";
  /// Bounds of an integer, both included.
  int64_t least = INT64_MIN;
  int64_t most = INT64_MAX;
};

using Answer = std::function<void(const Json& result)>;

/// A request whose parameters have been checked.
struct Call {
  Panels& panels;
  const Json& params;
  /// Answers later, on the main thread; for a handler that returned nothing.
  Answer answer;

  bool has(const char* name) const { return params.contains(name); }
  std::string text(const char* name) const { return params.at(name).get<std::string>(); }
  /// The text of a parameter that may be left out.
  std::string textOr(const char* name, const std::string& fallback) const { return has(name) ? text(name) : fallback; }
  int64_t integer(const char* name) const { return params.at(name).get<int64_t>(); }
  double number(const char* name) const { return params.at(name).get<double>(); }
  std::vector<std::string> texts(const char* name) const { return params.at(name).get<std::vector<std::string>>(); }
};

/// The result; nothing when the answer follows. throws Refusal
using Handler = std::optional<Json> (*)(const Call& call);

struct Method {
  const char* name;
  std::vector<Parameter> parameters;
  Handler handler;
  const char* result;  ///< its form, for the reference
  const char* help;    ///< one line, without a full stop
};

/// throws Refusal, whose message names the parameter and what it should be
void checkParameters(const Method& method, const Json& params);

/// A refusal of one parameter: `Parameter "path" should be a text`.
Refusal wrongParameter(const std::string& name, const std::string& expected);

/// What a parameter may be, in words: "a text", "an integer from 0 to 3".
std::string expectationOf(const Parameter& parameter);

}  // namespace kelo::session
