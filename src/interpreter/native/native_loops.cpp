#include "interpreter/native/native_loops.h"

#include <fmt/format.h>

#include <algorithm>

#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/code_listing.h"
#include "interpreter/native/emitter.h"
#include "platform/native_code.h"

namespace kelo::native {
namespace {

constexpr int64_t kBudget = 1 << 14;       // rounds until the register code asks for a stop
constexpr size_t kMostVersions = 4;        // of one loop
constexpr int64_t kSurprises = 64;         // exits in mid-loop until it is asked whether they are worth it
constexpr int64_t kRoundsPerSurprise = 4;  // fewer are not
constexpr int32_t kMisses = 64;            // rounds that the register code does for kinds that are not translated
constexpr int32_t kNever = INT32_MAX;

/// The code of a loop for certain kinds.
class LoopCode {
 public:
  LoopCode(std::byte* block, size_t bytes, const LoopGraph& graph, const std::vector<int32_t>& exits);
  ~LoopCode() { platform::nativeCode.release(block_, bytes_); }
  LoopCode(const LoopCode&) = delete;

  /// Whether the registers hold what the code was made for; then their values are in the words.
  bool read(const Storable* registers, std::vector<Word>& words) const;
  /// Runs it and writes what has changed. The instruction where it ended.
  int32_t run(Storable* registers, std::vector<Word>& words);
  /// Whether it ends in mid-loop too often.
  bool isWasteful() const { return surprises_ >= kSurprises && rounds_ < surprises_ * kRoundsPerSurprise; }

 private:
  struct Lane {
    int32_t reg, lane;
    Type type;
  };
  struct Exit {
    int32_t pc;
    bool isSurprise;
    std::vector<Lane> changed;
  };
  static void write(const Lane& lane, const std::vector<Word>& words, Storable* registers, const int32_t* sources);

  std::byte* block_;
  size_t bytes_;
  std::vector<Lane> entry_;
  std::vector<int32_t> registers_;
  std::vector<Exit> exits_;
  int64_t rounds_ = 0, surprises_ = 0;
};

LoopCode::LoopCode(std::byte* block, size_t bytes, const LoopGraph& graph, const std::vector<int32_t>& exits)
    : block_(block), bytes_(bytes), registers_(graph.registers()) {
  const State& state = graph.nodes().front().state;
  for (int32_t lane = 0; lane < static_cast<int32_t>(state.size()); ++lane) {
    const Type& type = state[static_cast<size_t>(lane)];
    if (type.held != Held::other) entry_.push_back({registers_[static_cast<size_t>(lane)], lane, type});
  }
  for (const int32_t which : exits) {
    const Node& node = graph.nodes()[static_cast<size_t>(which)];
    Exit& exit = exits_.emplace_back();
    exit.pc = node.pc;
    exit.isSurprise = !node.isExit || node.isSurprise;
    for (int32_t lane = 0; lane < static_cast<int32_t>(node.state.size()); ++lane) {
      const Type& type = node.state[static_cast<size_t>(lane)];
      if (type.isChanged) exit.changed.push_back({registers_[static_cast<size_t>(lane)], lane, type});
    }
    // What stands for the array of another register takes it before that one may change.
    std::stable_partition(exit.changed.begin(), exit.changed.end(),
                          [](const Lane& each) { return each.type.held == Held::alias; });
  }
}

bool isAsGood(const Type& actual, const Type& needed) {
  return actual.isSameKind(needed) && (actual.isWhole || !needed.isWhole) && (actual.isPlain || !needed.isPlain) &&
         (actual.isWritable || !needed.isWritable);
}

bool LoopCode::read(const Storable* registers, std::vector<Word>& words) const {
  words.resize(LaneWords::kHeader + LaneWords::kWords * registers_.size());
  for (const Lane& lane : entry_) {
    const Storable& value = registers[lane.reg];
    if (!isAsGood(typeOf(value), lane.type)) return false;
    const NumericArray& numeric = *value.numeric();
    Word* to = words.data() + LaneWords::first(lane.lane) / 8;
    switch (lane.type.held) {
      case Held::real: to->number = value.doubleScalar(); break;
      case Held::integer: to->whole = numeric.asInt().scalar(); break;
      case Held::logical: to->word = numeric.asLogical().scalar() ? 1 : 0; break;
      case Held::character: to->word = numeric.asChar().scalar().word(); break;
      case Held::complex:
        to[0].number = numeric.asComplex().scalar().real;
        to[1].number = numeric.asComplex().scalar().imaginary;
        break;
      case Held::array: describe(numeric, to); break;
      case Held::other: case Held::alias: break;
    }
  }
  return true;
}

void LoopCode::write(const Lane& lane, const std::vector<Word>& words, Storable* registers, const int32_t* sources) {
  Storable& to = registers[lane.reg];
  const Word* from = words.data() + LaneWords::first(lane.lane) / 8;
  switch (lane.type.held) {
    case Held::real: return to.setNumber(from->number);
    case Held::logical: return to.setLogical(from->word != 0);
    case Held::integer: to = IntArray(from->whole); return;
    case Held::character: to = CharArray(Character(static_cast<char32_t>(from->word))); return;
    case Held::complex: to = ComplexDoubleArray(ComplexDouble{from[0].number, from[1].number}); return;
    case Held::alias: to = registers[sources[lane.type.source]]; return;
    case Held::other: case Held::array: return;
  }
}

int32_t LoopCode::run(Storable* registers, std::vector<Word>& words) {
  words[0].whole = kBudget;
  words[1].data = registers;
  const auto function = reinterpret_cast<int64_t (*)(Word*)>(block_);
  const Exit& exit = exits_[static_cast<size_t>(function(words.data()))];
  for (const Lane& lane : exit.changed) write(lane, words, registers, registers_.data());
  rounds_ += kBudget - words[0].whole;
  surprises_ += exit.isSurprise && words[0].whole != 0;
  return exit.pc;
}

/// A loop of a unit, and what has become of it.
struct Loop {
  std::vector<std::unique_ptr<LoopCode>> versions;
  size_t made = 0;         // versions, those given up included
  int64_t misses = 0;      // times that no version would do, since the last was made
};

}  // namespace

/// The loops of a unit of code.
struct UnitLoops {
  explicit UnitLoops(const Code& code) : liveness(code) {}

  const Liveness liveness;
  std::vector<Loop> loops;
  std::vector<Word> words;
};

namespace {

void logLoop(const Code& code, int32_t pc, const std::string& text) {
  if (!platform::nativeCode.log) return;
  KeloNode* place = code.places[static_cast<size_t>(pc)];
  platform::nativeCode.log(fmt::format("line {}: {}", place ? positionOf(*place).line : 0, text));
}

void logObstacle(const Code& code, int32_t back, const LoopGraph& graph) {
  const int32_t obstacle = graph.obstacle();
  const Op op = code.instructions[static_cast<size_t>(obstacle < 0 ? back : obstacle)].op;
  logLoop(code, back, fmt::format("instruction {} ({}) stands in the way", obstacle, operationName(op)));
}

// Null where that cannot be.
std::unique_ptr<LoopCode> translate(const Code& code, const Liveness& liveness, int32_t back,
                                    const Storable* registers) {
  const LoopGraph graph(code, liveness, back, registers);
  if (!graph.isWorthwhile()) {
    logObstacle(code, back, graph);
    return nullptr;
  }
  asmjit::CodeHolder holder;
  if (holder.init(asmjit::Environment::host()) != asmjit::kErrorOk) return nullptr;
  Emitter emitter(graph, holder);
  if (!emitter.emit() || holder.flatten() != asmjit::kErrorOk ||
      holder.resolveUnresolvedLinks() != asmjit::kErrorOk) {
    logLoop(code, back, "no code could be made");
    return nullptr;
  }
  const size_t bytes = holder.codeSize();
  std::byte* block = platform::nativeCode.allocate(bytes);
  if (block == nullptr) return nullptr;
  const bool isReady = holder.relocateToBase(reinterpret_cast<uint64_t>(block)) == asmjit::kErrorOk &&
                       holder.copyFlattenedData(block, bytes) == asmjit::kErrorOk &&
                       platform::nativeCode.seal(block, bytes);
  if (!isReady) {
    platform::nativeCode.release(block, bytes);
    platform::nativeCode.allocate = nullptr;  // this machine has none to give
    return nullptr;
  }
  logLoop(code, back,
          fmt::format("translated, {} bytes, {} nodes, {} exits", bytes, graph.nodes().size(), emitter.exits().size()));
  if (graph.obstacle() >= 0) logObstacle(code, back, graph);
  return std::make_unique<LoopCode>(block, bytes, graph, emitter.exits());
}

// Where a version for what the registers hold has ended; null: there is none.
const Instruction* run(const Code& code, int32_t pc, Loop& loop, Storable* registers) {
  std::vector<Word>& words = code.native->words;
  for (size_t k = 0; k < loop.versions.size(); ++k) {
    LoopCode& version = *loop.versions[k];
    if (!version.read(registers, words)) continue;
    const int32_t end = version.run(registers, words);
    if (version.isWasteful()) {
      logLoop(code, pc, "given up, since it is left too often");
      loop.versions.erase(loop.versions.begin() + static_cast<std::ptrdiff_t>(k));
    }
    return code.instructions.data() + end;
  }
  return nullptr;
}

bool canRun() {
  static const bool hasAvx = asmjit::CpuInfo::host().features().x86().hasAVX();
  return platform::nativeCode.allocate != nullptr && hasAvx;
}

}  // namespace

const Instruction* enterLoop(const Code& code, Instruction& back, Storable* registers) {
  const auto pc = static_cast<int32_t>(&back - code.instructions.data());
  const Instruction* const target = code.instructions.data() + jumpTarget(back);
  if (!canRun()) {
    back.d = kNever;
    return target;
  }
  if (!code.native) code.native = std::make_shared<UnitLoops>(code);
  UnitLoops& unit = *code.native;
  if (back.e == 0) {
    unit.loops.emplace_back();
    back.e = static_cast<int32_t>(unit.loops.size());
    back.d = platform::nativeCode.rounds - 1;
    return target;
  }
  Loop& loop = unit.loops[static_cast<size_t>(back.e - 1)];
  back.d = 0;
  if (const Instruction* end = run(code, pc, loop, registers)) return end;
  if (loop.made == kMostVersions || (loop.made > 0 && ++loop.misses < platform::nativeCode.rounds)) {
    if (loop.made == kMostVersions && ++loop.misses > kMisses) back.d = kMisses;
    return target;
  }
  loop.misses = 0;
  ++loop.made;
  if (auto made = translate(code, unit.liveness, pc, registers)) {
    loop.versions.push_back(std::move(made));
    if (const Instruction* end = run(code, pc, loop, registers)) return end;
  }
  if (loop.versions.empty()) back.d = loop.made < kMostVersions ? kMisses * platform::nativeCode.rounds : kNever;
  return target;
}

}  // namespace kelo::native
