// What a built-in function is: one row of a table, in which all stands that is known of a name.
// Dispatch, complaints, completion, colouring and help read the row and know nothing else.
//
// A family of built-ins is one source (or folder): small static handlers and, at the foot, the
// table. A handler is called with a Call: the row, the arguments, what is asked for. It
//
//   1. reads its arguments with the readers of reader.h, which own the wording of complaints,
//   2. throws a Problem for what it refuses,
//   3. returns its value, or call.outputs({...}) where there may be several.
//
// What all handlers would have to do stands once, in dispatch.cpp: the counts of arguments are
// checked before, and what is thrown is caught, gets the place of the call and is shown.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "values/node_value.h"

namespace kelo {

class Call;
class Environment;
class Machine;

/// What a row calls: a function and, where several names share it, which of them is meant:
/// {reduction, Reduction::sum}.
class Handler {
 public:
  using Function = NodeValue (*)(Call& call);

  constexpr Handler(Function function) : function_(function) {}
  template <class Selector>
    requires std::is_enum_v<Selector>
  constexpr Handler(Function function, Selector which) : function_(function), selector_(static_cast<int>(which)) {}

  NodeValue operator()(Call& call) const { return function_(call); }
  /// REQUIRES: the enumeration that the row gives
  template <class Selector>
  Selector selector() const {
    return static_cast<Selector>(selector_);
  }

 private:
  Function function_;
  int selector_ = 0;
};

/// Fewest and most arguments. kAny: no upper bound.
struct Arity {
  int least;
  int most;
};
inline constexpr int kAny = 1 << 30;

/// A function's own sentences, where it does not use the standard ones.
struct OwnTexts {
  /// Wrong counts; "{0}" stands for the function's name, "{1}" for the count given. That for
  /// outputs is also said of one output where there is none.
  const char* inputs = nullptr;
  const char* outputs = nullptr;
  const char* verb = nullptr;     ///< the last-resort text is "Unexpected error occurred while VERB"
  const char* failure = nullptr;  ///< the last-resort text as a whole
};

/// One row.
struct Builtin {
  const char* name;
  Handler handler;
  Arity inputs;
  int outputs;            ///< at most; 0: the function gives no value
  const char* arguments;  ///< names of the arguments, as the help shows them: "A, dim"
  const char* help;       ///< one line, without a full stop: "Round towards plus infinity"
  const char* example;    ///< a command to try
  OwnTexts own = {};      ///< named in the row: {.inputs = text::kNoInput}
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
       Environment& environment, Machine* machine)
      : builtin(row),
        args(arguments),
        lhsVariableCount(lhsVariableCount),
        site(site),
        environment(environment),
        machine(machine) {}

  const Builtin& builtin;
  std::span<Storable> args;             ///< the call's own: a handler may move from them
  /// Outputs the statement asks for, 0 for a call alone; absent inside an expression.
  std::optional<int> lhsVariableCount;
  const CallSite& site;
  Environment& environment;
  Machine* machine;  ///< that runs the program; null when there is none

  int count() const { return static_cast<int>(args.size()); }
  /// Argument k, from 0.
  Storable& arg(int k) { return args[static_cast<size_t>(k)]; }
  const Storable& arg(int k) const { return args[static_cast<size_t>(k)]; }
  std::string name() const { return builtin.name; }
  /// Which of the names that share the handler was called.
  template <class Selector>
  Selector selector() const {
    return builtin.handler.selector<Selector>();
  }
  /// How many outputs are worth computing: at least 1.
  int outputCount() const { return std::max(1, lhsVariableCount.value_or(1)); }
  /// Whether the call is a statement by itself, so that nobody asks for its value.
  bool isStatement() const { return lhsVariableCount == 0; }

  /// The result of a call with several outputs: the first alone, or as many of them as were asked
  /// for.
  NodeValue outputs(std::vector<Storable> values) const;
  /// Shows a warning with the place of the call; `expected` is the sentence.
  void warn(const std::string& sentence) const;
};

}  // namespace kelo
