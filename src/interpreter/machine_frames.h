// How calls begin and end where all is as it mostly is: what is called is known from the call
// before, every input is given as one value, and each output is there. Part of the machine's loop;
// machine_frames.cpp has the general forms.
//
// Nothing here grows a stack: where one is full the general form makes room or says that calls are
// nested too deeply.
#pragma once

#include <algorithm>

#include "interpreter/environment.h"
#include "interpreter/function_unit.h"
#include "interpreter/machine.h"
#include "interpreter/visitor.h"

namespace kelo {

// A function's frame. OPTIMIZATION: the frame behind the top is there, and only filled in.
inline void Machine::enterFunction(Frame& made, FunctionUnit& called, LocalFunctionFile* localFunctions, int32_t given,
                                   int32_t wanted) {
  made.unit = &called;
  made.functions = localFunctions;
  made.outputs = wanted;
  made.callInputs = given;
  made.callOutputs = std::max(wanted, 0);
  made.isFunction = made.hasCall = true;
}

// The slots behind the inputs are what the handle captured.
inline void Machine::enterHandle(Frame& made, const AnonymousFunction& function, int32_t wanted) {
  Storable* captured = made.base + function.body->inputArgs.size();
  for (const Storable& value : function.values) *captured++ = value;
  made.functions = function.functions.get();
  made.outputs = wanted;
  takeCallOf(made, frames_.caller());
}

inline bool Machine::canPushPlain(const Code& code, Storable* arguments) const {
  return stack_.hasRoom(arguments, code.registers) && frames_.hasRoom();
}

// Of the slots `count` are given or will be. REQUIRES: canPushPlain
[[gnu::always_inline]] inline Frame& Machine::pushPlain(const Code& code, Storable* arguments, int32_t count,
                                                        int32_t destination) {
  for (Storable *slot = arguments + count, *end = arguments + code.slotCount(); slot < end; ++slot) slot->clear();
  Frame& made = frames_.push();
  made.code = &code;
  made.pc = code.instructions.data();
  made.base = arguments;
  made.unit = nullptr;
  made.destination = destination;
  made.chunk = stack_.chunk();
  made.chains = chains_.empty() ? 0 : static_cast<uint32_t>(chains_.size());
  made.isFunction = made.isOverlay = made.isEntry = made.hasCall = false;
  return made;
}

// Whether the name in a slot means the function that the site has called before in this run: no
// variable then and now, or the same local function of a script, be it by a handle.
inline bool Machine::meansTheSame(const Storable& base, const Site& site) const {
  if (site.run != run_) return false;
  if (base.isNone()) return site.targetIndex < 0 && site.functions == frames_.back().functions;
  if (const FunctionHandle* handle = base.funcHandle()) return handle->isOf(site.targetFunctions, site.targetIndex);
  const LocalFunction* local = base.localFunc();
  return local && local->index() == site.targetIndex && local->file().get() == site.targetFunctions;
}

inline bool Machine::arePlain(const Storable* arguments, int32_t count) {
  for (int32_t k = 0; k < count; ++k) {
    if (!arguments[k].isValue()) return false;
  }
  return true;
}

inline int Machine::outputsOf(const Site& site) const {
  return site.outputs == Visitor::kOutputsOfCall ? frame().outputs : site.outputs;
}

// A function that the site has called before, with all inputs.
[[gnu::always_inline]] inline bool Machine::callAgain(const Site& site, Storable* arguments, int32_t destination) {
  const Code* code = site.targetCode;
  if (code == nullptr || !canPushPlain(*code, arguments) || !arePlain(arguments, site.count)) return false;
  if (--code->callsLeft < 0 &&
      callNatively(*code, site.targetFunctions, {arguments, size_t(site.count)}, {}, destination)) {
    return true;
  }
  const int outputs = outputsOf(site);
  Frame& made = pushPlain(*code, arguments, site.count, destination);
  enterFunction(made, *site.target, site.targetFunctions, site.count, outputs);
  if (!site.handedOver.empty()) handOver(site);
  return true;
}

// The caller lets go of what the call will give it anew, so that the function writes it in place.
// Where the call fails a function's variables go with it; those of a script or a text stay, and are
// kept unless that is the end of all. REQUIRES: the call's frame is on top
inline void Machine::handOver(const Site& site) {
  const Frame& caller = frames_.caller();
  if (!caller.isFunction && !app_.isLastRun) return;
  for (const int32_t slot : site.handedOver) caller.base[slot].letGo();
}

// A handle whose body has been lowered, with all inputs and all that it captures.
inline bool Machine::callAnonymousAgain(const FunctionHandle& handle, const Site& site, Storable* arguments,
                                        int32_t destination) {
  if (handle.form() != FunctionHandle::Form::anonymous) return false;
  const AnonymousFunction& function = handle.anonymousFunction();
  const auto* lowered = static_cast<const HandleCode*>(function.body->code.get());
  if (lowered == nullptr || !lowered->given || !function.isWhole || function.all) return false;
  const Code& code = *lowered->given;
  if (static_cast<size_t>(site.count) != function.body->inputArgs.size() || !canPushPlain(code, arguments) ||
      !arePlain(arguments, site.count)) {
    return false;
  }
  if (--code.callsLeft < 0 &&
      callNatively(code, function.functions.get(), {arguments, size_t(site.count)}, function.values, destination)) {
    return true;
  }
  const int outputs = outputsOf(site);
  const auto given = site.count + static_cast<int32_t>(function.values.size());
  enterHandle(pushPlain(code, arguments, given, destination), function, outputs);
  return true;
}

// The frame goes. REQUIRES: it is no overlay, and building no chain
[[gnu::always_inline]] inline void Machine::popPlain() {
  Frame& top = frames_.back();
  for (Storable *r = top.base, *end = r + top.code->registers; r < end; ++r) r->letGo();
  stack_.setChunk(top.chunk);
  frames_.pop();
}

// A function whose outputs are all there and are wanted as one value, or by an assignment to
// several names.
[[gnu::always_inline]] inline bool Machine::returnPlainly() {
  Frame& top = frames_.back();
  if (!top.isFunction || top.isEntry) return false;
  if (const int32_t slot = top.code->onlyOutput; slot >= 0) [[likely]] {
    if (top.base[slot].form() >= Storable::Form::localFunc) return false;
    returnPlainly(std::move(top.base[slot]));
    return true;
  }
  return returnSeveral();
}

// The value is the result of the frame on top, which is no entry.
[[gnu::always_inline]] inline void Machine::returnPlainly(Storable value) {
  const int32_t destination = frames_.back().destination;
  popPlain();
  frames_.back().base[destination] = std::move(value);
}

}  // namespace kelo
