// nargin and nargout: what the running function was given and asked for, or what a function
// declares. Tested by tests/transcripts/builtins/calls.txt.
#include "builtins/library.h"
#include "interpreter/reader.h"
#include "interpreter/machine.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/system_functions.h"

namespace kelo::builtins {
namespace {

enum class Side { inputs, outputs };

std::optional<Machine::Signature> runningCall(const Call& call) {
  return call.machine ? call.machine->runningCall() : std::nullopt;
}

std::optional<Machine::Signature> declared(const Call& call) {
  const Storable& function = call.arg(0);
  if (call.machine == nullptr) return std::nullopt;
  if (const FunctionHandle* handle = function.funcHandle()) return call.machine->signatureOf(*handle);
  if (!read::isText(function)) return std::nullopt;
  const std::string name = toUtf8(function.numeric()->asChar());
  if (!followsNameRule(name)) return std::nullopt;
  return call.machine->signatureOf(Name::intern(name));
}

NodeValue countOfArguments(Call& call) {
  const auto signature = call.count() == 0 ? runningCall(call) : declared(call);
  if (!signature) {
    const char* words = call.count() == 0 ? text::kOutsideFunction : text::kFunctionExpected;
    throw Wording::sentence(words).complaint(call);
  }
  const bool ofInputs = call.selector<Side>() == Side::inputs;
  return NodeValue(static_cast<double>(ofInputs ? signature->inputs : signature->outputs));
}

// clang-format off
constexpr Builtin kCalls[] = {
    {"nargin",  {countOfArguments, Side::inputs},  {0, 1}, 1, "f",
     "How many arguments the running function was given, or a function declares", "nargin('sin')"},
    {"nargout", {countOfArguments, Side::outputs}, {0, 1}, 1, "f",
     "How many outputs the running function was asked for, or a function declares", "nargout('size')"},
};
// clang-format on

}  // namespace

std::span<const Builtin> callsTable() { return kCalls; }

}  // namespace kelo::builtins
