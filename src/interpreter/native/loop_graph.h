// What is known of the registers while a loop runs, found before any code is made.
//
// The registers that a loop touches are its lanes. Of each lane is known what it holds: a number
// unboxed, an array that is only indexed, or something else that the native code leaves alone. An
// instruction together with what the lanes hold before it is a Node: where two ways that hold
// different kinds meet, the instructions behind have a node for each, so that no node asks for a
// kind when it runs. What is more than a kind (that a number is whole, that an array is nobody
// else's) is true of a node when it is true on all ways to it.
//
// A node that the native code cannot do, or that lies outside the loop, is an exit: there the
// register code takes over.
#pragma once

#include <string>
#include <vector>

#include "interpreter/code.h"
#include "interpreter/native/operands.h"

namespace kelo::native {

enum class Held : uint8_t {
  other,  ///< anything; it may be overwritten, but not read
  real, integer, logical, character, complex,
  array,  ///< numeric, and not a scalar
  alias,  ///< the array of another lane
};

struct Type {
  Held held = Held::other;
  Kind element = Kind::Double;  ///< of an array
  bool isMatrix = false;        ///< of an array: it has two dimensions
  int16_t source = -1;          ///< of an alias: the lane

  bool isWhole = false;     ///< of a real number: it is whole, or not finite
  bool isPlain = false;     ///< of a character: it is ASCII
  bool isWritable = false;  ///< of an array: nobody else holds it
  bool isChanged = false;   ///< the register does not hold it yet

  bool isArray() const { return held == Held::array || held == Held::alias; }
  /// Real numbers, logicals and characters, which operators treat as numbers.
  bool isReal() const { return held == Held::real || held == Held::logical || held == Held::character; }
  /// The same without characters, or with a whole number of the system's own.
  bool isNumber() const { return held == Held::real || held == Held::logical || held == Held::integer; }
  bool isScalar() const { return held > Held::other && held < Held::array; }
  bool isSurelyWhole() const { return held != Held::real || isWhole; }
  bool isSameKind(const Type& other) const {
    return held == other.held && element == other.element && isMatrix == other.isMatrix && source == other.source;
  }
  bool operator==(const Type&) const = default;
};

inline Type real(bool isWhole) { return {.held = Held::real, .isWhole = isWhole}; }
inline Type scalar(Held held) { return {.held = held}; }

using State = std::vector<Type>;  ///< of each lane

/// What a value that lies in a register is.
Type typeOf(const Storable& value);

struct Node {
  int32_t pc = 0;
  State state;             ///< before the instruction
  bool isExit = false;
  bool isSurprise = false;  ///< an exit that does not end the loop
  int32_t next = -1;       ///< the node that follows
  int32_t jump = -1;       ///< the node of the jump, or of the next round
};

class LoopGraph {
 public:
  /// The loop that the jump backwards at `back` closes, its body about to begin, with what the
  /// registers hold.
  LoopGraph(const Code& code, const Liveness& liveness, int32_t back, const Storable* registers);

  /// Whether a round can be done without an exit, and the graph is not too large.
  bool isWorthwhile() const { return closes_ && !isTooLarge_; }
  /// The first instruction that stands in the way; -1: none.
  int32_t obstacle() const { return obstacle_; }

  int32_t laneOf(int32_t reg) const { return laneOf_[static_cast<size_t>(reg)]; }
  const std::vector<int32_t>& registers() const { return registers_; }  ///< of the lanes
  const std::vector<Node>& nodes() const { return nodes_; }             ///< the first is the entry
  const Code& code() const { return code_; }
  /// What an operand is in a state, constants included.
  Type typeOf(const State& state, int32_t operand) const;
  /// The lane of an array, aliases followed.
  int32_t arrayLane(const State& state, int32_t reg) const;

 private:
  void findLanes();
  void visit(int32_t node);
  int32_t nodeFor(int32_t pc, const State& state);
  void forgetUnneeded(int32_t pc, State& state) const;

  const Code& code_;
  const Liveness& liveness_;
  const int32_t begin_, end_;  // first and last instruction
  std::vector<int32_t> laneOf_, registers_;
  std::vector<Node> nodes_;
  std::vector<std::vector<int32_t>> nodesAt_;  // by instruction from begin_ on; behind them those outside
  std::vector<int32_t> waiting_;
  bool closes_ = false, isTooLarge_ = false;
  int32_t obstacle_ = -1;
};

}  // namespace kelo::native
