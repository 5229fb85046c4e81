#include "interpreter/code.h"

#include <algorithm>

namespace kelo {

int32_t Code::slotOf(Name name) const {
  const auto found = std::find(slots.begin(), slots.end(), name);
  return found == slots.end() ? -1 : static_cast<int32_t>(found - slots.begin());
}

int32_t* jumpOperand(Instruction& i) {
  switch (i.op) {
    case Op::jump: case Op::jumpOnTruth: case Op::jumpOnEqual: case Op::jumpOnUnequal: case Op::jumpOnLe:
    case Op::jumpOnLt: case Op::jumpOnGe: case Op::jumpOnGt: case Op::caseJump:
      return &i.a;
    case Op::fieldPath: case Op::rangeStep: case Op::arrayStep: return &i.c;
    default: return nullptr;
  }
}

int32_t jumpTarget(const Instruction& i) {
  const int32_t* target = jumpOperand(const_cast<Instruction&>(i));
  return target ? *target : -1;
}

const std::vector<int32_t>* slotsBehind(const Code& code, const Instruction& call, int32_t result) {
  const Instruction& next = (&call)[1];
  const bool assigns = next.op == Op::assignList && next.b == result && next.flag == 0;
  return assigns ? &code.sites[static_cast<size_t>(next.d)].slots : nullptr;
}

}  // namespace kelo
