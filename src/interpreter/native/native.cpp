// When what is hot is translated, entered and given up: one policy for loops and units.
#include "interpreter/native/native.h"

#include <fmt/format.h>
#include <x86intrin.h>

#include <algorithm>
#include <array>

#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/code_listing.h"
#include "interpreter/function_unit.h"
#include "interpreter/native/translator.h"
#include "platform/native_code.h"
#include "platform/stack_guard.h"

namespace kelo::native {

namespace {

constexpr int64_t kBudget = 1 << 14;   // rounds until the register code asks for a stop
constexpr size_t kMostVersions = 6;    // of a loop or a unit, those given up included
constexpr size_t kMostInputs = 8;      // of a unit
constexpr int32_t kPause = 64;         // times kinds may miss; and times as long until it is tried again
constexpr int32_t kNever = INT32_MAX;
constexpr int64_t kStack = 1 << 20;    // bytes that nested calls may take
constexpr size_t kMemory = 1 << 24;    // bytes for arrays of units
constexpr uint64_t kTicksPerElement = 8;  // of a call that has done more than to copy arrays
constexpr uint64_t kElementsPerSurprise = 1024;  // copied for nothing

/// A loop or a unit.
struct Hot {
  std::vector<VersionRef> versions;  // those that could not be made, or were given up, included
  int32_t misses = 0;                // times that no version would do, since the last was made
};

}  // namespace

/// What has become of the loops and the calls of a unit.
struct HotUnit {
  explicit HotUnit(const Code& code) : liveness(code) {}

  const Liveness liveness;
  Hot calls;
  std::vector<Hot> loops;
  std::vector<Kinds> beingMade;
  std::vector<Word> words;
  std::vector<Storable*> places;  // of the fields that a loop names
  bool isCounting = false;
};

namespace {

HotUnit& hotUnit(const Code& code) {
  if (!code.native) code.native = std::make_shared<HotUnit>(code);
  return *code.native;
}

// ---- Versions

void logLine(const Code& code, int32_t pc, const std::string& text) {
  if (!platform::nativeCode.log) return;
  KeloNode* place = code.places[static_cast<size_t>(pc)];
  platform::nativeCode.log(fmt::format("line {}: {}", place ? positionOf(*place).line : 0, text));
}

void logObstacle(const Code& code, int32_t pc, const Graph& graph) {
  const int32_t obstacle = graph.obstacle();
  const Op op = code.instructions[static_cast<size_t>(obstacle < 0 ? pc : obstacle)].op;
  logLine(code, pc, fmt::format("instruction {} ({}) stands in the way", obstacle, operationName(op)));
}

std::vector<Place> placesOf(const State& state, const auto& isMeant) {
  std::vector<Place> places;
  for (int32_t r = 0; r < static_cast<int32_t>(state.size()); ++r) {
    if (isMeant(r)) places.push_back({r, state[static_cast<size_t>(r)]});
  }
  return places;
}

void takeExits(const Translator& translator, Version& version) {
  for (const int32_t which : translator.exits()) {
    const Node& node = translator.nodes()[static_cast<size_t>(which)];
    Version::Exit& exit = version.exits.emplace_back();
    exit.pc = node.pc;
    exit.isSurprise = !node.isExit || node.isSurprise;
    exit.changed = placesOf(node.state, [&](int32_t r) { return node.state[static_cast<size_t>(r)].isChanged; });
    // What stands for the array of another register takes it before that one may change.
    std::ranges::stable_partition(exit.changed, [](const Place& each) { return each.type.held == Held::alias; });
  }
}

bool canRun() {
  static const bool hasAvx = asmjit::CpuInfo::host().features().x86().hasAVX();
  return platform::nativeCode.allocate != nullptr && hasAvx;
}

// Memory that can be run and not be written, with what an emitter has put into the holder; null
// where there is none.
std::shared_ptr<const std::byte> blockOf(asmjit::CodeHolder& holder) {
  if (holder.flatten() != asmjit::kErrorOk || holder.resolveUnresolvedLinks() != asmjit::kErrorOk) return nullptr;
  const size_t bytes = holder.codeSize();
  std::byte* const block = platform::nativeCode.allocate(bytes);
  if (block == nullptr) return nullptr;
  const bool isReady = holder.relocateToBase(reinterpret_cast<uint64_t>(block)) == asmjit::kErrorOk &&
                       holder.copyFlattenedData(block, bytes) == asmjit::kErrorOk &&
                       platform::nativeCode.seal(block, bytes);
  const auto release = [bytes](std::byte* memory) { platform::nativeCode.release(memory, bytes); };
  if (isReady) return std::shared_ptr<std::byte>(block, release);
  release(block);
  platform::nativeCode.allocate = nullptr;  // this machine has none to give
  return nullptr;
}

template <class Function>
Function* functionAt(const std::byte* code) {
  return reinterpret_cast<Function*>(reinterpret_cast<uintptr_t>(code));
}

// A version without a block where that cannot be.
VersionRef translate(Translator& translator, int32_t pc) {
  const Code& code = translator.code();
  auto made = std::make_shared<Version>();
  made->run = translator.context().run;
  made->functions = translator.context().functions;
  const bool isWorthwhile = translator.explore();
  if (!isWorthwhile || translator.obstacle() >= 0) logObstacle(code, pc, translator);
  asmjit::CodeHolder holder;
  if (!isWorthwhile || holder.init(asmjit::Environment::host()) != asmjit::kErrorOk) return made;
  if (translator.emit(holder)) made->block = blockOf(holder);
  if (!made->block) return made;
  const State& state = translator.nodes().front().state;
  made->entry = placesOf(state, [&](int32_t r) {
    const bool isNeeded = state[static_cast<size_t>(r)].held != Held::other && translator.isTouched(r);
    return translator.isUnit() ? r < static_cast<int32_t>(translator.inputs().size()) : isNeeded;
  });
  made->calls = translator.calls();
  made->inputs = translator.inputs();
  made->results = translator.results();
  if (translator.isUnit()) {
    made->constants = translator.takeConstants();
    made->bodyOffset = holder.labelOffsetFromBase(translator.body());
    made->entryOffset = holder.labelOffsetFromBase(translator.entry());
    const bool givesArray = std::ranges::any_of(made->results, &Type::isArray);
    const bool writesInPlace = std::ranges::any_of(made->inputs, &Type::isWritable);
    made->isForUnits = writesInPlace || (givesArray && !translator.callsItself());
  } else {
    made->noArrays = translator.noArrays();
    made->fields = translator.fields();
    takeExits(translator, *made);
  }
  logLine(code, pc, fmt::format("translated, {} bytes, {} nodes", holder.codeSize(), translator.nodes().size()));
  return made;
}

void giveUp(const Code& code, int32_t pc, Version& version) {
  logLine(code, pc, "given up, since it ends by a surprise too often");
  version.isGivenUp = true;
}

// Whether there is what the version needs; then it is in the words.
template <class ValueOf>
bool read(const Version& version, const ValueOf& valueOf, Word* words) {
  for (const Place& place : version.entry) {
    if (place.type.held == Held::elements) continue;
    const Storable& value = valueOf(place.reg);
    if (!isAsGood(value, place.type)) return false;
    pass(value, place.type, words + Layout::of(place.reg) / 8);
  }
  return true;
}

// The same of fields; `places` then tells where each lies.
bool readFields(const Version& version, const Code& code, Storable* registers, std::vector<Storable*>& places,
                Word* words) {
  static Storable missing = Storable::none();
  places.clear();
  for (const Field& field : version.fields) {
    Storable* const place = placeOf(field, registers);
    if (field.isOfElements) {
      const auto reg = code.registers + static_cast<int32_t>(places.size());
      if (place == nullptr) return false;
      describe(*registers[field.slot].structure(), place, words + Layout::of(reg) / 8);
    }
    places.push_back(place ? place : &missing);
  }
  return true;
}

// ---- What native code looks at while it runs

// Nested calls may take a part of the thread's stack; what goes deeper is left to the register
// code.
void fillHeader(const Context& context, Word* words) {
  static thread_local const auto memory = std::make_unique_for_overwrite<std::byte[]>(kMemory);
  const auto* here = static_cast<const char*>(__builtin_frame_address(0));
  words[Layout::kStack / 8].data = std::max(here - kStack, platform::stackLimit + kStack / 4);
  words[Layout::kStop / 8].data = context.stopRequest;
  words[Layout::kFailed / 8].whole = 0;
  words[Layout::kMemory / 8].data = memory.get();
  words[Layout::kMemoryEnd / 8].data = memory.get() + kMemory;
}

// Whether the calls lead where they led; what is captured goes into the words behind the others.
bool readCalls(const Version& version, const Context& context, const Code& code, const Storable* registers,
               std::vector<Word>& words) {
  for (const KnownCall& call : version.calls) {
    const Target target = targetOf(context, code, code.instructions[static_cast<size_t>(call.pc)], registers);
    const bool isSame = target.code == call.target.code && target.functions == call.target.functions;
    if (!isSame || call.function->run != context.run) return false;
    size_t word = words.size();
    words.resize(word + Layout::kWords * target.captured.size());
    for (size_t k = 0; k < target.captured.size(); ++k, word += Layout::kWords) {
      const Type& kind = call.inputs[call.operands.size() + k];
      if (!isAsGood(target.captured[k], kind)) return false;
      pass(target.captured[k], kind, words.data() + word);
    }
  }
  if (!version.calls.empty()) fillHeader(context, words.data());
  return true;
}

// ---- Loops

// The version for what the registers hold, which is then in the words; null: there is none.
Version* find(const Context& context, const Code& code, const Hot& loop, Storable* registers) {
  std::vector<Word>& words = code.native->words;
  std::vector<Storable*>& places = code.native->places;
  const auto valueOf = [&](int32_t r) -> const Storable& {
    return r < code.registers ? registers[r] : *places[static_cast<size_t>(r - code.registers)];
  };
  for (const VersionRef& each : loop.versions) {
    words.resize(static_cast<size_t>(Layout::of(code.registers + static_cast<int32_t>(each->fields.size()))) / 8);
    const bool isNoArray = std::ranges::none_of(each->noArrays, [&](int32_t r) { return registers[r].isArray(); });
    if (!each->isUsable() || !isNoArray) continue;
    if (!readCalls(*each, context, code, registers, words)) continue;
    if (!readFields(*each, code, registers, places, words.data())) continue;
    if (read(*each, valueOf, words.data())) return each.get();
  }
  return nullptr;
}

// Runs it and writes what has changed. The instruction where it ended.
const Instruction* runLoop(const Code& code, int32_t pc, Version& version, Storable* registers) {
  std::vector<Word>& words = code.native->words;
  words[Layout::kBudget / 8].whole = kBudget;
  words[Layout::kRegisters / 8].data = registers;
  const auto function = functionAt<int64_t(Word*)>(version.block.get());
  const Version::Exit& exit = version.exits[static_cast<size_t>(function(words.data()))];
  const auto placeOf = [&](int32_t reg) {
    return reg < code.registers ? registers + reg : code.native->places[static_cast<size_t>(reg - code.registers)];
  };
  for (const auto& [reg, type] : exit.changed) {
    if (type.held == Held::alias) registers[reg] = *placeOf(type.source);
    else if (type.held != Held::array) take(type, words.data() + Layout::of(reg) / 8, placeOf(reg));
  }
  const int64_t left = words[Layout::kBudget / 8].whole;
  version.done += kBudget - left;
  version.surprises += exit.isSurprise && left != 0;
  const Instruction* const end = code.instructions.data() + exit.pc;
  if (version.isWasteful()) giveUp(code, pc, version);
  return end;
}

}  // namespace

bool mayBeNative(const Code& code, int32_t back) {
  const auto begin = code.instructions.begin();
  return std::all_of(begin + jumpTarget(begin[back]), begin + back + 1,
                     [&](const Instruction& i) { return Translator::mayBeNative(code, i); });
}

const Instruction* enterLoop(const Context& context, const Code& code, Instruction& back, Storable* registers) {
  const auto pc = static_cast<int32_t>(&back - code.instructions.data());
  const Instruction* const target = code.instructions.data() + jumpTarget(back);
  back.d = kNever;
  if (!canRun()) return target;
  HotUnit& unit = hotUnit(code);
  if (back.e == 0) {
    unit.loops.emplace_back();
    back.e = static_cast<int32_t>(unit.loops.size());
    back.d = platform::nativeCode.rounds - 1;
    return target;
  }
  Hot& loop = unit.loops[static_cast<size_t>(back.e - 1)];
  back.d = 0;
  if (Version* found = find(context, code, loop, registers)) return runLoop(code, pc, *found, registers);
  const auto givenUp = std::ranges::count_if(loop.versions, [](const VersionRef& each) { return each->isGivenUp; });
  const bool isFull = loop.versions.size() + 2 * static_cast<size_t>(givenUp) >= kMostVersions;
  const bool hasOthers = std::ranges::any_of(loop.versions, [](const VersionRef& each) { return each->isUsable(); });
  if (isFull || (hasOthers && ++loop.misses < platform::nativeCode.rounds)) {
    if (isFull) back.d = hasOthers ? kPause : kNever;
    return target;
  }
  loop.misses = 0;
  Translator translator(context, code, unit.liveness, pc, registers);
  loop.versions.push_back(translate(translator, pc));
  if (Version* found = find(context, code, loop, registers)) return runLoop(code, pc, *found, registers);
  if (!hasOthers) back.d = kPause * platform::nativeCode.rounds;
  return target;
}

// ---- Units

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

VersionRef versionFor(const Context& context, const Code& code, const Kinds& inputs) {
  if (!std::ranges::all_of(inputs, isPassed) || inputs.size() > kMostInputs) return nullptr;
  HotUnit& unit = hotUnit(code);
  auto& versions = unit.calls.versions;
  for (const VersionRef& each : versions) {
    const bool isMeant = each->block && each->isGoodIn(context) && each->inputs == inputs;
    if (isMeant) return each->isGivenUp ? nullptr : each;
  }
  std::erase_if(versions, [&](const VersionRef& each) { return each->run != context.run; });
  const bool isBeingMade = std::ranges::find(unit.beingMade, inputs) != unit.beingMade.end();
  if (versions.size() >= kMostVersions || isBeingMade) return nullptr;
  unit.beingMade.push_back(inputs);
  Translator translator(context, code, unit.liveness, inputs);
  versions.push_back(translate(translator, 1));
  unit.beingMade.pop_back();
  return versions.back()->isUsable() ? versions.back() : nullptr;
}

// Of the arrays that a call has given: what the register code would not have copied.
uint64_t elementsOf(const Version& version, const Word* words) {
  uint64_t count = 0;
  for (size_t k = 0; k < version.results.size(); ++k) {
    const Word& result = words[Layout::result(static_cast<int32_t>(k)) / 8];
    if (version.results[k].isArray()) count += static_cast<uint64_t>(static_cast<const Word*>(result.data)[1].whole);
  }
  return count;
}

bool callFunction(const Context& context, const Code& code, std::span<const Storable> arguments,
                  std::span<const Storable> captured, std::span<Storable* const> results) {
  code.callsLeft = kNever;
  if (!canRun()) return false;
  HotUnit& unit = hotUnit(code);
  code.callsLeft = platform::nativeCode.calls;
  const size_t count = arguments.size() + captured.size();
  if (!std::exchange(unit.isCounting, true) || !context.mayCall || count > kMostInputs) return false;
  Word words[Layout::kHeader + Layout::kWords * kMostInputs];
  const auto valueOf = [&](int32_t k) -> const Storable& {
    const auto at = static_cast<size_t>(k);
    return at < arguments.size() ? arguments[at] : captured[at - arguments.size()];
  };
  const auto isFor = [&](const Version& version) {
    return version.isUsable() && !version.isForUnits && version.isGoodIn(context) && version.entry.size() == count &&
           results.size() <= version.results.size() && read(version, valueOf, words);
  };
  auto found = std::ranges::find_if(unit.calls.versions, [&](const VersionRef& each) { return isFor(*each); });
  VersionRef version = found == unit.calls.versions.end() ? nullptr : *found;
  if (!version) {
    Kinds kinds;
    for (size_t k = 0; k < count; ++k) kinds.push_back(kindOf(typeOf(valueOf(static_cast<int32_t>(k)))));
    version = versionFor(context, code, kinds);
    if (!version || !isFor(*version)) return false;
  }
  code.callsLeft = 0;
  fillHeader(context, words);
  const uint64_t begin = __rdtsc();
  functionAt<void(Word*)>(version->block.get() + version->entryOffset)(words);
  ++version->done;
  const bool hasFailed = words[Layout::kFailed / 8].whole != 0;
  const uint64_t ticks = __rdtsc() - begin, elements = hasFailed ? 0 : elementsOf(*version, words);
  const bool hasCopied = ticks < kTicksPerElement * elements;
  for (size_t k = 0; !hasFailed && k < results.size(); ++k) {
    take(version->results[k], words + Layout::result(static_cast<int32_t>(k)) / 8, results[k]);
  }
  version->surprises += hasFailed;
  if (hasCopied) version->surprises += 1 + static_cast<int64_t>(elements / kElementsPerSurprise);
  if (version->isWasteful()) giveUp(code, 1, *version);
  return !hasFailed;
}

}  // namespace kelo::native
