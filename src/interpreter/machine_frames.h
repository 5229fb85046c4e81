// How calls begin and end where all is as it mostly is: what is called is known from the call
// before, every input is given as one value, and each output is there. Part of the machine's loop;
// machine_frames.cpp has the general forms.
//
// Nothing here grows the stack of frames: it has room for 100,000 at most, and where it is full the
// general form says so.
#pragma once

#include "interpreter/function_unit.h"
#include "interpreter/machine.h"
#include "interpreter/visitor.h"

namespace kelo {

inline void Machine::Frame::enterFunction(FunctionUnit& called, LocalFunctionFile* localFunctions, int32_t given,
                                          int wanted) {
  unit = &called;
  functions = localFunctions;
  funName = called.funName;
  outputs = wanted;
  hasCall = true;
  call = {given, std::max(wanted, 0)};
}

// The slots behind the inputs are what the handle captured.
inline void Machine::Frame::enterHandle(const AnonymousFunction& function, bool callerHasCall, Signature callerCall,
                                        int wanted) {
  Storable* captured = base + function.body->inputArgs.size();
  for (const Storable& value : function.values) *captured++ = value;
  functions = function.functions.get();
  outputs = wanted;
  hasCall = callerHasCall;
  call = callerCall;
}

inline bool Machine::canPushPlain(const Code& code, Storable* arguments) const {
  return stack_.hasRoom(arguments, code.registers) && frames_.size() < frames_.capacity();
}

// REQUIRES: canPushPlain
inline Machine::Frame& Machine::pushPlain(const Code& code, Storable* arguments, int32_t count, int32_t destination) {
  const int32_t slots = code.slotCount();
  for (int32_t k = count; k < slots; ++k) arguments[k].clear();
  return frames_.emplace_back(code, arguments, destination, stack_.chunk(), chains_.empty() ? 0 : chains_.size());
}

// Whether the name in a slot means the function that the site has called before in this run: no
// variable then and now, or the same local function of a script.
inline bool Machine::meansTheSame(const Storable& base, const Site& site) const {
  if (site.run != run_) return false;
  if (base.isNone()) return site.targetIndex < 0 && site.functions == frames_.back().functions;
  const LocalFunction* local = base.localFunc();
  return local && local->index() == site.targetIndex && local->file().get() == site.targetFunctions;
}

// A function that the site has called before, with all inputs.
[[gnu::always_inline]] inline bool Machine::callAgain(const Site& site, Storable* arguments, int32_t destination) {
  const Frame& caller = frames_.back();
  const Code* code = site.targetCode;
  if (code == nullptr || !canPushPlain(*code, arguments)) return false;
  for (int32_t k = 0; k < site.count; ++k) {
    if (!arguments[k].isValue()) return false;
  }
  const int outputs = site.outputs == Visitor::kOutputsOfCall ? caller.outputs : site.outputs;
  pushPlain(*code, arguments, site.count, destination)
      .enterFunction(*site.target, site.targetFunctions, site.count, outputs);
  return true;
}

// A handle whose body has been lowered, with all inputs and all that it captures.
inline bool Machine::callAnonymousAgain(const FunctionHandle& handle, const Site& site, Storable* arguments,
                                        int32_t destination) {
  if (handle.form() != FunctionHandle::Form::anonymous) return false;
  const AnonymousFunction& function = handle.anonymousFunction();
  const auto* lowered = static_cast<const HandleCode*>(function.body->code.get());
  if (lowered == nullptr || !lowered->given || !function.isWhole || function.all) return false;
  const Code& code = *lowered->given;
  if (static_cast<size_t>(site.count) != function.body->inputArgs.size() || !canPushPlain(code, arguments))
    return false;
  for (int32_t k = 0; k < site.count; ++k) {
    if (!arguments[k].isValue()) return false;
  }
  const Frame& caller = frames_.back();
  const bool hasCall = caller.hasCall;
  const Signature call = caller.call;
  const int outputs = site.outputs == Visitor::kOutputsOfCall ? caller.outputs : site.outputs;
  pushPlain(code, arguments, site.count, destination).enterHandle(function, hasCall, call, outputs);
  return true;
}

// The frame goes. REQUIRES: it is no overlay, and building no chain
[[gnu::always_inline]] inline void Machine::popPlain() {
  Frame& top = frames_.back();
  for (Storable *r = top.base, *end = r + top.code->registers; r < end; ++r) r->letGo();
  stack_.setChunk(top.chunk);
  frames_.pop_back();
}

// A function whose outputs are all there and are wanted as one value, or by an assignment to
// several names.
inline bool Machine::returnPlainly() {
  Frame& top = frames_.back();
  if (top.isEntry || top.unit == nullptr) return false;
  const std::vector<int32_t>& outputs = top.code->outputs;
  for (const int32_t slot : outputs) {
    if (top.base[slot].form() >= Storable::Form::localFunc) return false;
  }
  if (outputs.size() == 1) return returnPlainly(top.base[outputs.front()]);
  Frame& caller = frames_[frames_.size() - 2];
  const Instruction& next = caller.pc[1];
  if (next.op != Op::assignList || next.b != top.destination || next.flag) return false;
  const std::vector<int32_t>& targets = caller.code->sites[static_cast<size_t>(next.d)].slots;
  if (targets.size() > outputs.size()) return false;
  for (size_t k = 0; k < targets.size(); ++k) caller.base[targets[k]] = top.base[outputs[k]];
  popPlain();
  ++frames_.back().pc;  // the assignment is done
  return true;
}

// A value of a register or a constant of the frame on top.
inline bool Machine::returnPlainly(const Storable& value) {
  const Frame& top = frames_.back();
  if (top.isEntry) return false;
  Storable result(value);
  const int32_t destination = top.destination;
  popPlain();
  frames_.back().base[destination] = std::move(result);
  return true;
}

}  // namespace kelo
