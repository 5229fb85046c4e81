#include "interpreter/native/native_functions.h"

#include <fmt/format.h>

#include <algorithm>

#include "interpreter/function_unit.h"
#include "interpreter/native/emitter.h"
#include "interpreter/native/function_code.h"
#include "interpreter/native/log.h"
#include "platform/native_code.h"
#include "platform/stack_guard.h"

namespace kelo::native {

/// What has become of the calls of a unit.
struct UnitFunctions {
  std::vector<FunctionRef> made;     // those given up included
  std::vector<Kinds> beingMade;
  std::unique_ptr<Liveness> liveness;
  bool isCounting = false;
};

namespace {

constexpr size_t kMostVersions = 6;        // of one unit, those that could not be made included
constexpr size_t kMostInputs = 8;
constexpr int64_t kFailures = 16;          // until it is asked whether calls are worth it
constexpr int64_t kCallsPerFailure = 8;    // fewer are not
constexpr int64_t kStack = 1 << 20;        // bytes that nested calls may take

Kinds kindsOf(std::span<const Storable> arguments, std::span<const Storable> captured) {
  Kinds kinds;
  for (const auto& values : {arguments, captured}) {
    for (const Storable& value : values) kinds.push_back(kindOf(typeOf(value)));
  }
  return kinds;
}

UnitFunctions& functionsOf(const Code& code) {
  if (!code.nativeFunctions) code.nativeFunctions = std::make_shared<UnitFunctions>();
  return *code.nativeFunctions;
}

bool isShort(const LoopGraph& graph) {
  constexpr size_t kNodes = 16;
  const auto isRound = [&](const Node& node) {
    return node.jump >= 0 && graph.nodes()[static_cast<size_t>(node.jump)].pc <= node.pc;
  };
  return graph.nodes().size() <= kNodes && graph.calls().empty() && std::ranges::none_of(graph.nodes(), isRound);
}

FunctionRef translate(const Context& context, const Code& code, const Liveness& liveness, const Kinds& inputs) {
  LoopGraph graph(code, liveness, inputs, context);
  if (!graph.isWorthwhile()) {
    logObstacle(code, 0, graph);
    return nullptr;
  }
  asmjit::CodeHolder holder;
  if (holder.init(asmjit::Environment::host()) != asmjit::kErrorOk) return nullptr;
  Emitter emitter(graph, holder);
  auto made = std::make_shared<FunctionCode>();
  if (!emitter.emit()) return nullptr;
  made->block = CodeBlock::make(holder);
  if (!made->block) return nullptr;
  made->inputs = inputs;
  made->results = graph.results();
  made->run = context.run;
  made->functions = context.functions;
  made->bodyOffset = emitter.bodyOffset();
  made->entryOffset = emitter.entryOffset();
  made->isShort = isShort(graph);
  for (const KnownCall& call : graph.calls()) {
    if (call.function) made->callees.push_back(call.function);
  }
  logLine(code, 1, fmt::format("function translated, {} bytes, {} nodes", made->block->bytes(), graph.nodes().size()));
  return made;
}

void write(Held held, const Word& from, Storable* to) {
  switch (held) {
    case Held::logical: return to->setLogical(from.word != 0);
    case Held::integer: *to = IntArray(from.whole); return;
    case Held::character: *to = CharArray(Character(static_cast<char32_t>(from.word))); return;
    default: return to->setNumber(from.number);
  }
}

// Whether the code is good for these values; then they are in the words.
bool passAll(const Context& context, const FunctionCode& function, std::span<const Storable> arguments,
          std::span<const Storable> captured, Word* words) {
  if (!function.isGoodIn(context) || function.inputs.size() != arguments.size() + captured.size()) return false;
  size_t input = 0;
  for (const auto& values : {arguments, captured}) {
    for (const Storable& value : values) {
      const Type& kind = function.inputs[input];
      if (!isOfKind(value, kind)) return false;
      pass(value, kind, words + LaneWords::first(static_cast<int32_t>(input++)) / 8);
    }
  }
  return true;
}

// Code for these values, which are then in the words; null where there is none.
FunctionCode* find(const Context& context, const Code& code, std::span<const Storable> arguments,
                   std::span<const Storable> captured, Word* words) {
  for (const FunctionRef& each : code.nativeFunctions->made) {
    if (passAll(context, *each, arguments, captured, words)) return each.get();
  }
  const FunctionRef made = functionFor(context, code, kindsOf(arguments, captured));
  return made && passAll(context, *made, arguments, captured, words) ? made.get() : nullptr;
}

}  // namespace

std::vector<int32_t> argumentsOf(const Code& code, const Instruction& i) {
  if (i.op == Op::index1) return {i.c};
  if (i.op == Op::index2) return {i.c, i.e};
  const Site& site = code.sites[static_cast<size_t>(i.d)];
  std::vector<int32_t> list;
  for (int32_t k = 0; k < site.count; ++k) list.push_back(site.first + k);
  return list;
}

std::vector<int32_t> targetsOf(const Code& code, const Instruction& i) {
  const Instruction& next = (&i)[1];
  const bool isAssigned = next.op == Op::assignList && next.b == i.a && next.flag == 0;
  return isAssigned ? code.sites[static_cast<size_t>(next.d)].slots : std::vector<int32_t>{i.a};
}

Target targetOf(const Context& context, const Code& code, const Instruction& i, const Storable* registers) {
  const Site& site = code.sites[static_cast<size_t>(i.d)];
  if (!site.isSlot || !context.mayCall) return {};
  static const Storable nothing = Storable::none();
  const Storable& base = registers ? registers[i.b] : nothing;
  const FunctionHandle* const handle = base.funcHandle();
  if (handle && handle->form() == FunctionHandle::Form::anonymous) {
    const AnonymousFunction& function = handle->anonymousFunction();
    const auto* lowered = static_cast<const HandleCode*>(function.body->code.get());
    const bool isKnown = lowered && lowered->given && function.isWhole && !function.all &&
                         static_cast<size_t>(site.count) == function.body->inputArgs.size();
    return isKnown ? Target{lowered->given.get(), function.functions.get(), function.values} : Target{};
  }
  if (site.run != context.run || site.targetCode == nullptr) return {};
  if (handle) {
    if (!handle->isOf(site.targetFunctions, site.targetIndex)) return {};
  } else if (const LocalFunction* local = base.localFunc()) {
    if (local->index() != site.targetIndex || local->file().get() != site.targetFunctions) return {};
  } else if (!base.isNone() || site.targetIndex >= 0 || site.functions != context.functions) {
    return {};
  }
  return {site.targetCode, site.targetFunctions, {}};
}

FunctionRef functionFor(const Context& context, const Code& code, const Kinds& inputs) {
  const bool arePassed = std::ranges::all_of(inputs, [](const Type& type) { return isPassed(type); });
  if (!arePassed || inputs.size() > kMostInputs) return nullptr;
  UnitFunctions& unit = functionsOf(code);
  const auto found = std::ranges::find_if(
      unit.made, [&](const FunctionRef& each) { return each->isGoodIn(context) && each->inputs == inputs; });
  if (found != unit.made.end()) return *found;
  std::erase_if(unit.made, [&](const FunctionRef& each) { return each->run != context.run; });
  if (unit.made.size() >= kMostVersions || std::ranges::find(unit.beingMade, inputs) != unit.beingMade.end()) {
    return nullptr;
  }
  if (!unit.liveness) unit.liveness = std::make_unique<Liveness>(code);
  unit.beingMade.push_back(inputs);
  FunctionRef made = translate(context, code, *unit.liveness, inputs);
  unit.beingMade.pop_back();
  if (!made) {
    made = std::make_shared<FunctionCode>();
    made->run = context.run;
    made->isGivenUp = true;
  }
  unit.made.push_back(made);
  return made->isGivenUp ? nullptr : made;
}

// Nested calls may take a part of the thread's stack; what goes deeper is left to the register
// code.
void fillHeader(const Context& context, Word* words) {
  const auto* here = static_cast<const char*>(__builtin_frame_address(0));
  words[LaneWords::kStack / 8].data = std::max(here - kStack, platform::stackLimit + kStack / 4);
  words[LaneWords::kStop / 8].data = context.stopRequest;
  words[LaneWords::kFailed / 8].whole = 0;
}

bool callFunction(const Context& context, const Code& code, std::span<const Storable> arguments,
                  std::span<const Storable> captured, std::span<Storable* const> results) {
  if (!canRun()) {
    code.callsLeft = INT32_MAX;
    return false;
  }
  UnitFunctions& unit = functionsOf(code);
  if (!unit.isCounting) {
    unit.isCounting = true;
    code.callsLeft = platform::nativeCode.calls;
    return false;
  }
  code.callsLeft = 0;
  Word words[LaneWords::kHeader + LaneWords::kWords * kMostInputs];
  FunctionCode* function = nullptr;
  if (context.mayCall && arguments.size() + captured.size() <= kMostInputs) {
    function = find(context, code, arguments, captured, words);
  }
  if (function == nullptr || results.size() > function->results.size()) {
    code.callsLeft = platform::nativeCode.calls;
    return false;
  }
  if (function->isShort) {
    code.callsLeft = INT32_MAX;
    return false;
  }
  fillHeader(context, words);
  function->enter(words);
  ++function->calls;
  if (words[LaneWords::kFailed / 8].whole == 0) {
    for (size_t k = 0; k < results.size(); ++k) {
      const int32_t word = k == 0 ? LaneWords::first(0) : LaneWords::result(static_cast<int32_t>(k));
      write(function->results[k], words[word / 8], results[k]);
    }
    return true;
  }
  if (++function->failures >= kFailures && function->calls < function->failures * kCallsPerFailure) {
    logLine(code, 1, "function given up, since its calls fail too often");
    function->isGivenUp = true;
    code.callsLeft = platform::nativeCode.calls;
  }
  return false;
}

}  // namespace kelo::native
