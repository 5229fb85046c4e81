#include "interpreter/native/native_loops.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "interpreter/native/emitter.h"
#include "interpreter/native/log.h"
#include "interpreter/native/typing.h"
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
  LoopCode(std::unique_ptr<CodeBlock> block, const LoopGraph& graph, const std::vector<int32_t>& exits);

  /// Whether the registers hold what the code was made for; then their values are in the words.
  bool read(const Context& context, const Code& code, const Storable* registers, std::vector<Word>& words) const;
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
  bool readCalls(const Context& context, const Code& code, const Storable* registers, std::vector<Word>& words) const;

  std::unique_ptr<CodeBlock> block_;
  std::vector<Lane> entry_;
  std::vector<int32_t> registers_;
  std::vector<Exit> exits_;
  std::vector<KnownCall> calls_;
  std::vector<int32_t> noArrays_;  // registers
  int64_t rounds_ = 0, surprises_ = 0;
};

LoopCode::LoopCode(std::unique_ptr<CodeBlock> block, const LoopGraph& graph, const std::vector<int32_t>& exits)
    : block_(std::move(block)), registers_(graph.registers()), calls_(graph.calls()), noArrays_(graph.noArrays()) {
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

// Whether a value is what the code was made for. OPTIMIZATION: asked at each entry.
bool isAsGood(const Storable& value, const Type& needed) {
  switch (needed.held) {
    case Held::real: {
      if (!value.isDoubleScalar()) return false;
      return !needed.isWhole || std::trunc(value.doubleScalar()) == value.doubleScalar();
    }
    case Held::character:
      return isOfKind(value, needed) && (!needed.isPlain || value.numeric()->asChar().scalar().word() < 0x80);
    case Held::complex: return value.isScalarOf(Kind::Complex);
    case Held::array: return isOfKind(value, needed) && (!needed.isWritable || value.numeric()->isUnshared());
    default: return isOfKind(value, needed);
  }
}

// Whether the calls lead where they led; what is captured goes into the words behind the lanes.
bool LoopCode::readCalls(const Context& context, const Code& code, const Storable* registers,
                         std::vector<Word>& words) const {
  for (const KnownCall& call : calls_) {
    const Target target = targetOf(context, code, code.instructions[static_cast<size_t>(call.pc)], registers);
    if (!target.isSame(call.target) || call.function->run != context.run) return false;
    size_t word = words.size();
    words.resize(word + LaneWords::kWords * target.captured.size());
    for (size_t k = 0; k < target.captured.size(); ++k, word += LaneWords::kWords) {
      const Type& kind = call.inputs[call.operands.size() + k];
      if (!isOfKind(target.captured[k], kind)) return false;
      pass(target.captured[k], kind, words.data() + word);
    }
  }
  if (!calls_.empty()) fillHeader(context, words.data());
  return true;
}

bool LoopCode::read(const Context& context, const Code& code, const Storable* registers,
                    std::vector<Word>& words) const {
  words.resize(LaneWords::kHeader + LaneWords::kWords * registers_.size());
  if (!readCalls(context, code, registers, words)) return false;
  if (std::ranges::any_of(noArrays_, [&](int32_t r) { return registers[r].isArray(); })) return false;
  for (const Lane& lane : entry_) {
    const Storable& value = registers[lane.reg];
    if (!isAsGood(value, lane.type)) return false;
    Word* to = words.data() + LaneWords::first(lane.lane) / 8;
    if (lane.type.held == Held::complex) {
      to[0].number = value.numeric()->asComplex().scalar().real;
      to[1].number = value.numeric()->asComplex().scalar().imaginary;
    } else {
      pass(value, lane.type, to);
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
  const auto function = block_->at<int64_t(Word*)>(0);
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

// Null where that cannot be.
std::unique_ptr<LoopCode> translate(const Context& context, const Code& code, const Liveness& liveness, int32_t back,
                                    const Storable* registers) {
  const LoopGraph graph(code, liveness, back, registers, context);
  if (!graph.isWorthwhile()) {
    logObstacle(code, back, graph);
    return nullptr;
  }
  asmjit::CodeHolder holder;
  if (holder.init(asmjit::Environment::host()) != asmjit::kErrorOk) return nullptr;
  Emitter emitter(graph, holder);
  auto block = emitter.emit() ? CodeBlock::make(holder) : nullptr;
  if (!block) {
    logLine(code, back, "no code could be made");
    return nullptr;
  }
  logLine(code, back,
          fmt::format("translated, {} bytes, {} nodes, {} exits", block->bytes(), graph.nodes().size(),
                      emitter.exits().size()));
  if (graph.obstacle() >= 0) logObstacle(code, back, graph);
  return std::make_unique<LoopCode>(std::move(block), graph, emitter.exits());
}

// Where a version for what the registers hold has ended; null: there is none.
const Instruction* run(const Context& context, const Code& code, int32_t pc, Loop& loop, Storable* registers) {
  std::vector<Word>& words = code.native->words;
  for (size_t k = 0; k < loop.versions.size(); ++k) {
    LoopCode& version = *loop.versions[k];
    if (!version.read(context, code, registers, words)) continue;
    const int32_t end = version.run(registers, words);
    if (version.isWasteful()) {
      logLine(code, pc, "given up, since it is left too often");
      loop.versions.erase(loop.versions.begin() + static_cast<std::ptrdiff_t>(k));
    }
    return code.instructions.data() + end;
  }
  return nullptr;
}

}  // namespace

bool mayBeNative(const Code& code, int32_t back) {
  const auto begin = code.instructions.begin();
  return std::all_of(begin + jumpTarget(begin[back]), begin + back + 1,
                     [&](const Instruction& i) { return hasNativeForm(code, i); });
}

const Instruction* enterLoop(const Context& context, const Code& code, Instruction& back, Storable* registers) {
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
  if (const Instruction* end = run(context, code, pc, loop, registers)) return end;
  if (loop.made == kMostVersions || (loop.made > 0 && ++loop.misses < platform::nativeCode.rounds)) {
    if (loop.made == kMostVersions && ++loop.misses > kMisses) back.d = kMisses;
    return target;
  }
  loop.misses = 0;
  ++loop.made;
  if (auto made = translate(context, code, unit.liveness, pc, registers)) {
    loop.versions.push_back(std::move(made));
    if (const Instruction* end = run(context, code, pc, loop, registers)) return end;
  }
  if (loop.versions.empty()) back.d = loop.made < kMostVersions ? kMisses * platform::nativeCode.rounds : kNever;
  return target;
}

}  // namespace kelo::native
