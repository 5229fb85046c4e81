// Frames: how calls begin and end.
#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "grammar/kelo_node.h"
#include "interpreter/environment.h"
#include "interpreter/function_unit.h"
#include "interpreter/machine.h"
#include "interpreter/machine_frames.h"
#include "interpreter/native/native.h"
#include "messages/catalogue/interpreter.h"

namespace kelo {

// A frame whose first slots are the arguments, the others being nothing. False when calls are
// nested too deeply.
bool Machine::push(const Code& code, Storable* arguments, int32_t count, int32_t destination, KeloNode& place) {
  if (!frames_.hasRoom() && !frames_.grow()) return failTooDeep(place);
  const int32_t chunk = stack_.chunk();
  Storable* base = stack_.room(arguments, code.registers);
  if (base != arguments) [[unlikely]] {
    for (int32_t k = 0; k < count; ++k) base[k] = std::move(arguments[k]);
  }
  pushPlain(code, base, count, destination).chunk = chunk;
  return true;
}

// ---- Native code

native::Context Machine::nativeContext(const LocalFunctionFile* functions) const {
  constexpr size_t kMostFrames = 30'000;  // native calls may nest as often besides
  return {run_, functions, &app_.stopRequest(), frames_.size() < kMostFrames};
}

// What a call gives is one value, or goes to the names of the assignment behind it.
bool Machine::callNatively(const Code& code, const LocalFunctionFile* functions, std::span<const Storable> arguments,
                           std::span<const Storable> captured, int32_t destination) {
  std::array<Storable*, native::kMostResults> results{&reg(destination)};
  size_t count = 1;
  const bool areSeveral = code.outputs.size() > 1;
  if (areSeveral) {
    const std::vector<int32_t>* targets = slotsBehind(*frame().code, *frame().pc, destination);
    if (targets == nullptr || targets->size() > std::min(code.outputs.size(), results.size())) return false;
    count = targets->size();
    for (size_t k = 0; k < count; ++k) results[k] = &reg((*targets)[k]);
  }
  const auto wanted = std::span(results).first(count);
  if (!native::callFunction(nativeContext(functions), code, arguments, captured, wanted)) return false;
  if (areSeveral) ++frame().pc;  // the assignment is done
  return true;
}

// ---- Ends

// What nargin and nargout tell of is the call of the function around.
void Machine::takeCallOf(Frame& made, const Frame& caller) {
  made.hasCall = caller.hasCall;
  made.callInputs = caller.callInputs;
  made.callOutputs = caller.callOutputs;
}

// What the frame holds goes. An overlay first gives the names back.
void Machine::pop() {
  if (frame().isOverlay) giveNamesBack();
  while (chains_.size() > frame().chains) chains_.pop_back();
  popPlain();
}

Machine::Outcome Machine::returnValue(Storable value) {
  const int32_t destination = frame().destination;
  const bool isLast = frame().isEntry;
  pop();
  if (isLast) {
    entryResult_ = std::move(value);
    return Outcome::ended;
  }
  reg(destination) = std::move(value);
  return Outcome::goesOn;
}

Machine::Outcome Machine::returnFunction() {
  Frame& top = frame();
  if (top.unit == nullptr) return returnValue(Storable::none());
  Storable result;
  if (!collectOutputs(&result)) return Outcome::failed;
  return returnValue(std::move(result));
}

// Several outputs that the next instruction assigns to names, and shows none of.
bool Machine::returnSeveral() {
  Frame& top = frame();
  const std::vector<int32_t>& outputs = top.code->outputs;
  for (const int32_t slot : outputs) {
    if (top.base[slot].form() >= Storable::Form::localFunc) return false;
  }
  Frame& caller = frames_.caller();
  const std::vector<int32_t>* targets = slotsBehind(*caller.code, *caller.pc, top.destination);
  if (targets == nullptr || targets->size() > outputs.size()) return false;
  for (size_t k = 0; k < targets->size(); ++k) caller.base[(*targets)[k]] = top.base[outputs[k]];
  popPlain();
  ++frame().pc;  // the assignment is done
  return true;
}

/// All declared outputs, NOTE: intended: whatever the caller wants of them.
bool Machine::collectOutputs(Storable* result) {
  const FunctionUnit& unit = *frame().unit;
  std::vector<Storable> values;
  for (const Name name : unit.outputs) {
    const Storable& value = reg(frame().code->slotOf(name));
    if (value.isNone() || value.isLocalFunc()) {
      if (unit.isMain) return fail(*unit.node, fmt::format(text::kOutputUndefined, name.text()));
      const std::string words = fmt::format(text::kLocalOutputUndefined, name.text(), unit.funName.text());
      const Frame& caller = frames_.caller();
      const auto at = static_cast<size_t>(caller.pc - caller.code->instructions.data());
      return fail(unit.body ? *unit.body : *caller.code->places[at], words);
    }
    values.push_back(value);
  }
  if (values.empty()) *result = Storable::none();
  else if (values.size() == 1) *result = std::move(values.front());
  else *result = Storable::listOf(std::move(values));
  return true;
}

// A script or a text: it takes the names that it mentions from the workspace below, where there is
// room for all of them from now on. So a run that finds no memory loses no variable.
bool Machine::pushOverlay(const Code& code, int32_t destination, int outputs, KeloNode& place) {
  Storable* from = frames_.empty() ? stack_.start() : frame().base + frame().code->registers;
  const bool isFirst = frames_.empty();
  LocalFunctionFile* functions = isFirst ? nullptr : frame().functions;
  makeRoom(isFirst ? kBelowAll : frames_.size() - 1, code.slots.size());
  if (!push(code, from, 0, destination, place)) return false;
  Frame& made = frame();
  made.isOverlay = true;
  made.outputs = outputs;
  made.functions = functions;
  if (!isFirst) takeCallOf(made, frames_.caller());
  takeNames();
  return true;
}

std::optional<Machine::Signature> Machine::runningCall() const {
  if (frames_.empty() || !frame().hasCall) return std::nullopt;
  return Signature{frame().callInputs, frame().callOutputs};
}

}  // namespace kelo
