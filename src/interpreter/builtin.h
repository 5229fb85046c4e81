// What a built-in function is: one row of a table. All that is known of a name stands in its row; dispatch, complaints,
// completion, colouring and help read it.
//
// A family of built-ins is one source (or folder): small static handlers and, at the foot, its table. A handler begins
// with its argument readers (reader.h), which own the wording of complaints, throws a Problem for what it refuses, and
// returns its value or `call.outputs({...})`. Counting of arguments, catching and placing of errors happen once, in
// dispatch.cpp.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "values/node_value.h"

namespace kelo {

class Call;
class Environment;
class Visitor;

using Handler = NodeValue (*)(Call& call);

/// Fewest and most arguments. kAny: no upper bound.
struct Arity {
  int least;
  int most;
};
inline constexpr int kAny = 1 << 30;

/// A family's own sentences for a wrong count; "{0}" stands for the function's name, "{1}" for the count given. Null:
/// the standard sentences of complaints.h. An own sentence for outputs is also said of one output where there is none.
struct CountTexts {
  const char* inputs = nullptr;
  const char* outputs = nullptr;
};

struct Builtin {
  const char* name;
  Handler handler;        ///< null: the name is known but not supported yet
  int selector;           ///< which of a family's functions, for handlers that serve several names
  Arity inputs;
  int outputs;            ///< at most; 0: the function gives no value
  const char* arguments;  ///< names of the arguments, as the help shows them: "A, dim"
  const char* help;       ///< one line, without a full stop: "Round towards plus infinity"
  const char* example;    ///< a command to try
  const CountTexts* countTexts = nullptr;
  const char* verb = nullptr;     ///< the last-resort text is "Unexpected error occurred while VERB"
  const char* failure = nullptr;  ///< the last-resort text as a whole, of a function with one of its own
};

/// Where a call stands in its text; copied into the messages that it gives.
struct CallSite {
  std::optional<int> lineNum;  ///< from 1
  std::optional<int> charPos;  ///< code point in the line, from 0
  Name relativePath;           ///< empty: the console
  Name funName;                ///< the user function that is running; empty: none
};

/// One call of a built-in: its row, its arguments and what was asked of it.
class Call {
 public:
  Call(const Builtin& row, std::span<Storable> arguments, std::optional<int> lhsVariableCount, const CallSite& site,
       Environment& environment, Visitor* visitor)
      : builtin(row), args(arguments), lhsVariableCount(lhsVariableCount), site(site), environment(environment), visitor(visitor) {}

  const Builtin& builtin;
  std::span<Storable> args;             ///< the call's own: a handler may move from them
  /// Outputs the statement asks for, 0 for a call alone; absent inside an expression.
  std::optional<int> lhsVariableCount;
  const CallSite& site;
  Environment& environment;
  Visitor* visitor;  ///< the evaluator of the run; null when there is none

  int count() const { return static_cast<int>(args.size()); }
  std::string name() const { return builtin.name; }
  template <class Selector> Selector selector() const { return static_cast<Selector>(builtin.selector); }
  /// How many outputs are worth computing: at least 1.
  int outputCount() const { return std::max(1, lhsVariableCount.value_or(1)); }
  /// Whether the call is a statement by itself, so that nobody asks for its value.
  bool isStatement() const { return lhsVariableCount == 0; }

  /// The result of a call with several outputs: the first alone, or as many of them as were asked for.
  NodeValue outputs(std::vector<Storable> values) const;
  /// Shows a warning with the place of the call; `expected` is the sentence.
  void warn(const std::string& sentence) const;
};

}  // namespace kelo
