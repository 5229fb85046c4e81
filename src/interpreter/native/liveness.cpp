#include "interpreter/native/liveness.h"

#include <cstring>

namespace kelo::native {
namespace {

// The operands that hold temporaries, those written before the colon. A letter is an operand; 2 and
// 4: so many from a on; r: c from b on; s: the arguments of the site; o: the bases of the site and of
// those around it, at which `end` looks. Null: unknown.
const char* operandsOf(Op op) {
  if (op <= Op::or_) return "a:bc";
  switch (op) {
    case Op::unaryPlus: case Op::unaryMinus: case Op::not_: case Op::transpose: case Op::move: case Op::assign:
    case Op::loadName: case Op::firstOf: case Op::fieldOfName: case Op::fieldPath: case Op::field:
      return "a:b";
    case Op::elementField: return "a:c";
    case Op::setField: case Op::setPath: return ":c";
    case Op::setElementField: case Op::setFieldElement: case Op::setFieldElement2: return ":ce";
    case Op::range: case Op::joinRow: case Op::joinRows: case Op::appendRow: return "a:r";
    case Op::rangeArgument: return "a:ro";
    case Op::checkElement: case Op::checkRange: case Op::checkField: case Op::checkSwitch: case Op::jumpOnTruth:
    case Op::returnValue: case Op::assignList: case Op::answer: case Op::nameStatement:
      return ":b";
    case Op::store1: case Op::jumpOnEqual: case Op::jumpOnUnequal: case Op::jumpOnLe: case Op::jumpOnLt:
    case Op::jumpOnGe: case Op::jumpOnGt: case Op::caseJump:
      return ":bc";
    case Op::store2: return ":bce";
    case Op::index1: case Op::quickCall: return "a:bc";
    case Op::index2: return "a:bce";
    case Op::index: case Op::call: return "a:bs";
    case Op::builtin: return "a:s";
    case Op::endOf: return "a:o";
    case Op::checkExtent: return ":o";
    case Op::checkArgument: return ":ao";
    case Op::begin: case Op::jump: case Op::poll: case Op::fail: case Op::checkTarget: case Op::returnFunction:
      return ":";
    case Op::forRange: return "4:r";
    case Op::rangeStep: return ":4";
    case Op::forArray: return "2:b";
    case Op::arrayStep: return ":2";
    default: return nullptr;
  }
}

}  // namespace

bool fallsThrough(const Instruction& i) {
  return i.op != Op::jump && i.op != Op::fail && i.op != Op::returnFunction && i.op != Op::returnValue;
}

uint64_t Liveness::bitsOf(const Code& code, const Instruction& i, const char* operands) const {
  uint64_t bits = 0;
  const auto add = [&](int32_t first, int32_t count = 1) {
    for (int32_t r = first - slots_; r < first - slots_ + count; ++r) {
      if (r >= 0 && r < kTracked) bits |= uint64_t{1} << r;
    }
  };
  for (; *operands != 0 && *operands != ':'; ++operands) {
    switch (*operands) {
      case 'a': add(i.a); break;
      case 'b': add(i.b); break;
      case 'c': add(i.c); break;
      case 'e': add(i.e); break;
      case 'r': add(i.b, i.c); break;
      case '2': add(i.a, 2); break;
      case '4': add(i.a, 4); break;
      case 's': add(code.sites[static_cast<size_t>(i.d)].first, code.sites[static_cast<size_t>(i.d)].count); break;
      default:
        for (int32_t site = i.d; site >= 0; site = code.sites[static_cast<size_t>(site)].outer) {
          add(code.sites[static_cast<size_t>(site)].base);
        }
    }
  }
  return bits;
}

// Backwards over the code until nothing changes; a pass carries what is needed from every jump's
// target.
Liveness::Liveness(const Code& code) : slots_(code.slotCount()), live_(code.instructions.size() + 1) {
  for (bool changes = true; changes;) {
    changes = false;
    for (size_t k = code.instructions.size(); k-- > 0;) {
      const Instruction& i = code.instructions[k];
      uint64_t needed = fallsThrough(i) ? live_[k + 1] : 0;
      if (const int32_t target = jumpTarget(i); target >= 0) needed |= live_[static_cast<size_t>(target)];
      const char* operands = operandsOf(i.op);
      if (operands) needed &= ~bitsOf(code, i, operands);
      needed |= operands ? bitsOf(code, i, std::strchr(operands, ':') + 1) : ~uint64_t{0};
      changes = changes || needed != live_[k];
      live_[k] = needed;
    }
  }
}

}  // namespace kelo::native
