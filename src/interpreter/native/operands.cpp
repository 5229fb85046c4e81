#include "interpreter/native/operands.h"

namespace kelo::native {
namespace {

// What `end`, ":" and arguments look at: the bases of a site and of those around it.
void readBases(const Code& code, int32_t site, Operands& operands) {
  while (site >= 0) {
    const Site& each = code.sites[static_cast<size_t>(site)];
    if (each.base >= 0) operands.reads.push_back(each.base);
    site = each.outer;
  }
}

}  // namespace

bool fallsThrough(const Instruction& i) {
  return i.op != Op::jump && i.op != Op::fail && i.op != Op::returnFunction && i.op != Op::returnValue;
}

void findOperands(const Code& code, const Instruction& i, Operands& operands) {
  operands.reads.clear();
  operands.writes.clear();
  operands.isKnown = true;
  const auto read = [&](std::initializer_list<int32_t> registers) {
    for (const int32_t r : registers) {
      if (r >= 0) operands.reads.push_back(r);
    }
  };
  const auto readRow = [&](int32_t first, int32_t count) {
    for (int32_t k = 0; k < count; ++k) operands.reads.push_back(first + k);
  };
  const auto write = [&](int32_t first, int32_t count = 1) {
    for (int32_t k = 0; k < count; ++k) operands.writes.push_back(first + k);
  };
  const auto site = [&]() -> const Site& { return code.sites[static_cast<size_t>(i.d)]; };
  if (i.op <= Op::or_) {
    read({i.b, i.c});
    return write(i.a);
  }
  switch (i.op) {
    case Op::unaryPlus: case Op::unaryMinus: case Op::not_: case Op::transpose: case Op::move: case Op::assign:
    case Op::loadName: case Op::firstOf:
      read({i.b});
      return write(i.a);
    case Op::range: case Op::joinRow: case Op::joinRows:
      readRow(i.b, i.c);
      return write(i.a);
    case Op::appendRow:
      read({i.a});
      readRow(i.b, i.c);
      return write(i.a);
    case Op::checkElement: case Op::checkRange: case Op::checkSwitch: case Op::jumpOnTruth: case Op::returnValue:
      return read({i.b});
    case Op::rangeArgument:
      readRow(i.b, i.c);
      readBases(code, i.d, operands);
      return write(i.a);
    case Op::store1: read({i.a, i.b, i.c}); return write(i.a);
    case Op::store2: read({i.a, i.b, i.c, i.e}); return write(i.a);
    case Op::checkTarget: return read({i.a});
    case Op::index1: case Op::index2:
      read({i.b, i.c});
      if (i.op == Op::index2) read({i.e});
      return write(i.a);
    case Op::index: case Op::call:
      read({i.b});
      readRow(site().first, site().count);
      return write(i.a);
    case Op::builtin:
      readRow(site().first, site().count);
      return write(i.a);
    case Op::returnFunction:
      operands.reads = code.outputs;
      return;
    case Op::assignList:
      read({i.b});
      operands.writes = site().slots;
      return;
    case Op::quickCall:
      read({i.b, i.c});
      return write(i.a);
    case Op::endOf: readBases(code, i.d, operands); return write(i.a);
    case Op::checkExtent: return readBases(code, i.d, operands);
    case Op::checkArgument:
      read({i.a});
      return readBases(code, i.d, operands);
    case Op::fieldOfName: case Op::field:
      read({i.b});
      return write(i.a);
    case Op::begin: case Op::jump: case Op::poll: case Op::fail: return;
    case Op::jumpOnEqual: case Op::jumpOnUnequal: case Op::jumpOnLe: case Op::jumpOnLt: case Op::jumpOnGe:
    case Op::jumpOnGt: case Op::caseJump:
      return read({i.b, i.c});
    case Op::forRange:
      readRow(i.b, i.c);
      return write(i.a, 4);
    case Op::rangeStep:
      readRow(i.a, 4);
      write(i.a + 3);
      return write(i.b);
    case Op::forArray:
      read({i.b});
      return write(i.a, 2);
    case Op::arrayStep:
      readRow(i.a, 2);
      write(i.a + 1);
      return write(i.b);
    case Op::answer: case Op::nameStatement: return read({i.b});
    default: operands.isKnown = false;
  }
}

// Backwards over the code until nothing changes; a pass carries what is needed from every jump's
// target.
Liveness::Liveness(const Code& code) : slots_(code.slotCount()), live_(code.instructions.size() + 1) {
  struct Sets {
    uint64_t reads = 0, writes = 0;
  };
  std::vector<Sets> sets(code.instructions.size());
  Operands operands;
  const auto bit = [&](int32_t reg) -> uint64_t {
    const int32_t temporary = reg - slots_;
    return temporary < 0 || temporary >= kTracked ? 0 : uint64_t{1} << temporary;
  };
  for (size_t k = 0; k < sets.size(); ++k) {
    findOperands(code, code.instructions[k], operands);
    for (const int32_t r : operands.reads) sets[k].reads |= bit(r);
    for (const int32_t r : operands.writes) sets[k].writes |= bit(r);
    if (!operands.isKnown) sets[k] = {~uint64_t{0}, 0};
  }
  for (bool changes = true; changes;) {
    changes = false;
    for (size_t k = sets.size(); k-- > 0;) {
      const Instruction& i = code.instructions[k];
      uint64_t out = fallsThrough(i) ? live_[k + 1] : 0;
      if (const int32_t target = jumpTarget(i); target >= 0) out |= live_[static_cast<size_t>(target)];
      const uint64_t in = sets[k].reads | (out & ~sets[k].writes);
      changes = changes || in != live_[k];
      live_[k] = in;
    }
  }
}

}  // namespace kelo::native
