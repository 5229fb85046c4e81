// What talks to the user: disp, clc, who, clear, error, input, pause. The console, the workspaces
// and the sleep of a run are the Environment's. Tested by tests/transcripts/builtins/console.txt.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "builtins/library.h"
#include "builtins/text/char_rows.h"
#include "interpreter/environment.h"
#include "interpreter/reader.h"
#include "interpreter/machine.h"
#include "messages/catalogue/system_functions.h"
#include "values/held_name.h"

namespace kelo::builtins {
namespace {

NodeValue disp(Call& call) {
  call.environment.show(Display::dispValue(call.arg(0), call.environment.displayParameters()));
  return NodeValue::nothing();
}

NodeValue clc(Call& call) {
  call.environment.clearConsole();
  return NodeValue::nothing();
}

// ---- Workspace

/// The variables of the running workspace.
std::vector<Name> variables(const Call& call) {
  return call.machine ? call.machine->variables() : std::vector<Name>();
}

NodeValue who(Call& call) {
  std::vector<std::string> names;
  for (const Name name : variables(call)) names.push_back(name.text());
  std::sort(names.begin(), names.end());
  if (!call.isStatement()) {
    std::vector<TextRow> rows;
    for (const std::string& name : names) rows.push_back(kelo::charactersOf(name));
    return stackedRows(rows);
  }
  if (!names.empty()) call.environment.showText(fmt::format("{}", fmt::join(names, "\n")));
  return NodeValue::nothing();
}

/// Words that name no variable: alone they stand for all of them.
bool isOption(const std::string& word) { return word == "clear" || word == "variable" || word == "all"; }

NodeValue clear(Call& call) {
  std::vector<HeldName> names;
  for (int k = 0; k < call.count(); ++k) {
    const std::string word = read::text(call, k, Wording::sentence(text::kClearInputs));
    if (!isOption(word)) names.push_back(HeldName::of(word));
  }
  const std::vector<Name> present = variables(call);
  for (const Name name : present) {
    if (names.empty() || std::find(names.begin(), names.end(), name) != names.end()) {
      call.machine->clearVariable(name);
    }
  }
  return NodeValue::nothing();
}

// ---- error

NodeValue error(Call& call) {
  Message message;
  const std::string words = read::text(call, 0, {"msg", "msg", predicate::kCharacterVector});
  message.customMsg = fmt::format(text::kThrownByUser, words);
  throw message;
}

// ---- input

const CharArray& promptOf(const Call& call) {
  const NumericArray* prompt = call.arg(0).numeric();
  if (!prompt || !prompt->is(Kind::Char) || !prompt->size().isMatrix()) {
    throw problem(text::kFirstInputInvalid, text::kCharacterArrayExpected);
  }
  return prompt->asChar();
}

/// Messages about an answer point into it.
class AnswerScope {
 public:
  AnswerScope(Environment& environment, const std::string& answer) : environment_(environment) {
    environment_.evaluatesAnswer(&answer);
  }
  AnswerScope(const AnswerScope&) = delete;
  AnswerScope& operator=(const AnswerScope&) = delete;
  ~AnswerScope() { environment_.evaluatesAnswer(nullptr); }

 private:
  Environment& environment_;
};

/// REQUIRES: an evaluator, unless the answer is taken as text
NodeValue input(Call& call) {
  const std::string prompt = linesOf(promptOf(call));
  const auto option = Wording::sentence(text::kInputOption);
  const bool isText = call.count() == 2;
  if (isText && read::text(call, 1, option) != "s") throw option.complaint(call);
  const std::optional<std::string> line = call.environment.readInput(prompt);
  if (!line) return NodeValue::failure();  // the statement loop reports the stop
  if (isText) return charRow(*line);
  const AnswerScope scope(call.environment, *line);
  return call.machine->evaluateText(*line);
}

// ---- pause

NodeValue stateOf(AllowingPause allowing) { return charRow(allowing == AllowingPause::on ? "on" : "off"); }

/// The value of 'on' and 'off' is the state before, so that it can be restored.
NodeValue pauseState(Call& call) {
  const int word = read::option(call, 0, Wording::sentence(text::kPauseState), {"on", "off", "query"});
  const AllowingPause before = call.environment.allowPause();
  if (word == 2) return stateOf(before);
  call.environment.setAllowPause(word == 0 ? AllowingPause::on : AllowingPause::off);
  return call.isStatement() ? NodeValue::nothing() : stateOf(before);
}

double secondsOf(const Call& call) {
  const NumericArray* array = call.arg(0).numeric();
  if (!array || array->is(Kind::Char) || !array->isScalar()) throw Wording::sentence(text::kPauseInput).complaint(call);
  constexpr Wording words{"n", "n", text::kPauseSeconds};
  const double seconds = read::realScalar(call, 0, words);
  if (!(seconds > 0) || std::isinf(seconds)) throw words.complaint(call);
  return seconds;
}

NodeValue pause(Call& call) {
  if (call.count() == 1 && read::isText(call.arg(0))) return pauseState(call);
  call.environment.pauseFor(call.count() == 1 ? std::optional(secondsOf(call)) : std::nullopt);
  return NodeValue::nothing();
}

// clang-format off
constexpr Builtin kConsole[] = {
    {"clc",   clc,   {0, 0},    0, "",
     "Clear the console", "clc", {.inputs = text::kClcInputs, .outputs = text::kClcOutputs}},
    {"clear", clear, {0, kAny}, 0, "name, ...",
     "Remove variables, all of them unless some are named", "clear('x', 'y')",
     {.outputs = text::kClearOutputs, .verb = "clearing variables"}},
    {"disp",  disp,  {1, 1},    0, "x",
     "Show a value without its name", "disp('Hello')"},
    {"error", error, {1, 1},    0, "msg",
     "End the run with a message", "error('No data')"},
    {"input", input, {1, 2},    1, "prompt, s",
     "Ask the user for an expression, or with 's' for a text", "n = input('How many? ')"},
    {"pause", pause, {0, 1},    1, "n",
     "Wait for a key or for n seconds; 'on', 'off' and 'query' rule whether to wait", "pause(0.5)",
     {.inputs = text::kPauseCount}},
    {"who",   who,   {0, 0},    1, "",
     "Show the names of the variables", "who", {.inputs = text::kWhoInputs}},
};
// clang-format on

}  // namespace

std::span<const Builtin> consoleTable() { return kConsole; }

}  // namespace kelo::builtins
