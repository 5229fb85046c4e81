// The loop.
//
// What an instruction does for scalars, and for single elements of arrays, is done on the spot;
// anything else is left to the general operations of the other sources, which give the same
// results. A general operation that starts or ends a call leaves a new frame on top; the loop then
// takes up that one where it stands.
#include <cmath>

#include "interpreter/environment.h"
#include "interpreter/function_unit.h"
#include "interpreter/machine.h"
#include "interpreter/machine_fast.h"
#include "interpreter/machine_frames.h"
#include "interpreter/native/native.h"
#include "interpreter/quick_calls.h"
#include "messages/catalogue/indexing.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/values.h"
#include "messages/fatal_fault.h"

namespace kelo {

// From the frame on top, which is an entry, to its end.
bool Machine::run() {
  while (true) {
    Outcome outcome = Outcome::failed;
    try {
      outcome = execute();
    } catch (const FatalFault&) {
      while (!frame().isEntry) pop();
      pop();
      throw;
    } catch (...) {
      failWithCurrentException(placeOf(*frame().pc), lastResortOf(frame().pc->op));
    }
    if (outcome == Outcome::ended) return true;
    if (outcome == Outcome::failed) {
      unwind();
      return false;
    }
  }
}

// The regions around the failed instruction have their say, then those around the calls that led
// there.
void Machine::unwind() {
  while (true) {
    const auto at = static_cast<int32_t>(frame().pc - frame().code->instructions.data());
    for (const Region& region : frame().code->regions) {
      if (at < region.begin || at >= region.end) continue;
      switch (region.kind) {
        case Region::Kind::list:
          if (app_.takeStopRequest()) fail(*region.node, text::kTerminatedByUser);
          break;
        case Region::Kind::message: fail(*region.node, region.text); break;
        case Region::Kind::argument: {
          const Site& site = siteAt(region.site);
          const bool isIndex = site.isTarget || reg(site.base).isArray();
          fail(*region.node, isIndex ? text::kIndexEvaluationFailed : text::kArgumentFailed);
          break;
        }
      }
    }
    const bool isLast = frame().isEntry;
    pop();
    if (isLast) return;
  }
}

#define KELO_GENERAL(done)               \
  {                                      \
    frames_.back().pc = pc;              \
    if (!(done)) return Outcome::failed; \
    ++pc;                                \
    continue;                            \
  }
#define KELO_CALL(done)                  \
  {                                      \
    frames_.back().pc = pc;              \
    if (!(done)) return Outcome::failed; \
    goto resume;                         \
  }

// Goes on at instruction `to`. Each jump backwards ends a round of a loop, which may have become
// native code.
#define KELO_GO(to)                                                                                   \
  {                                                                                                   \
    auto& jump = const_cast<Instruction&>(*pc);                                                       \
    pc = start + (to);                                                                                \
    if (pc < &jump && --jump.d < 0) [[unlikely]]                                                      \
      pc = native::enterLoop(nativeContext(frames_.back().functions), *frames_.back().code, jump, R); \
    continue;                                                                                         \
  }

// OPTIMIZATION: from its end each operation jumps to the next by itself, which processors foresee
// better than one jump that all share; the compiler makes the copies.
#define KELO_LABEL(name) &&op_##name,
#pragma GCC diagnostic ignored "-Wpedantic"  // of labels as values, which standard C++ has not

// Runs until the entry frame ends or something fails; frame().pc then stands at the failed
// instruction.
Machine::Outcome Machine::execute() {
  const Instruction *pc, *start;
  Storable* R;         // registers of the frame
  const Storable* K;   // constant ~k
  const Site* sites;
  const Name* names;   // of fields
  Storable scratch(0.0);
  static const void* const kLabels[] = {KELO_OPERATIONS(KELO_LABEL)};

resume:
  {
    Frame& top = frames_.back();
    pc = top.pc + 1;
    start = top.code->instructions.data();
    R = top.base;
    K = top.code->constants.data();
    sites = top.code->sites.data();
    names = top.code->names.data();
  }
  while (true) {
    goto* kLabels[static_cast<size_t>(pc->op)];
#define KELO_BINARY(name, store)                                                \
  op_##name: {                                                                  \
    const Storable &left = operand(R, K, pc->b), &right = operand(R, K, pc->c); \
    if (Storable::areDoubleScalars(left, right)) [[likely]] {                   \
      const double x = left.doubleScalar(), y = right.doubleScalar();           \
      R[pc->a].store;                                                           \
      ++pc;                                                                     \
      continue;                                                                 \
    }                                                                           \
    double x, y;                                                                \
    if (areDoubleAndCount(left, right, &x, &y)) {                               \
      R[pc->a].store;                                                           \
      ++pc;                                                                     \
      continue;                                                                 \
    }                                                                           \
    if (scalarBinary(BinaryOp::name, left, right, &R[pc->a])) {                 \
      ++pc;                                                                     \
      continue;                                                                 \
    }                                                                           \
    KELO_GENERAL(binary(*pc, BinaryOp::name, &R[pc->a]))                        \
  }
    KELO_BINARY(plus, setNumber(x + y))
    KELO_BINARY(minus, setNumber(x - y))
    KELO_BINARY(dmult, setNumber(x * y))
    KELO_BINARY(mult, setNumber(x * y))
    KELO_BINARY(mrdivide, setNumber(x / y))
    KELO_BINARY(rdivide, setNumber(x / y))
    KELO_BINARY(eqeq, setLogical(x == y))
    KELO_BINARY(neq, setLogical(x != y))
    KELO_BINARY(le, setLogical(x <= y))
    KELO_BINARY(lt, setLogical(x < y))
    KELO_BINARY(ge, setLogical(x >= y))
    KELO_BINARY(gt, setLogical(x > y))
#undef KELO_BINARY
    op_and_: op_or_: {
      const Storable &left = operand(R, K, pc->b), &right = operand(R, K, pc->c);
      if (left.isScalarOf(Kind::Logical) && right.isScalarOf(Kind::Logical)) {
        const bool x = left.numeric()->asLogical().scalar(), y = right.numeric()->asLogical().scalar();
        R[pc->a].setLogical(pc->op == Op::and_ ? x && y : x || y);
        goto next;
      }
    }
    op_dpower: op_power: op_ldivide: op_mldivide: {
      const auto op = static_cast<BinaryOp>(pc->op);
      if (scalarBinary(op, operand(R, K, pc->b), operand(R, K, pc->c), &R[pc->a])) goto next;
      KELO_GENERAL(binary(*pc, op, &R[pc->a]))
    }
    op_unaryPlus: KELO_GENERAL(unary(*pc, UnaryOp::plus))
    op_unaryMinus: {
      const Storable& x = operand(R, K, pc->b);
      if (!x.isDoubleScalar()) KELO_GENERAL(unary(*pc, UnaryOp::minus))
      R[pc->a].setNumber(-x.doubleScalar());
      goto next;
    }
    op_not_: {
      const Storable& x = operand(R, K, pc->b);
      if (!x.isScalarOf(Kind::Logical)) KELO_GENERAL(unary(*pc, UnaryOp::not_))
      R[pc->a].setLogical(!x.numeric()->asLogical().scalar());
      goto next;
    }
    op_transpose: KELO_GENERAL(transpose(*pc))
    op_range: KELO_GENERAL(range(*pc))
    op_rangeArgument: KELO_GENERAL(rangeArgument(*pc))
    op_joinRow: KELO_GENERAL(joinRow(*pc))
    op_appendRow: KELO_GENERAL(appendRow(*pc))
    op_appendText: KELO_GENERAL(appendText(*pc))
    op_joinRows: KELO_GENERAL(joinRows(*pc))
    op_checkElement: KELO_GENERAL(checkElement(R[pc->b], placeOf(*pc)))
    op_checkRange:
      if (R[pc->b].isNumeric()) goto next;
      KELO_GENERAL(checkRange(*pc))

    op_begin: goto next;
    op_move: {
      const Storable& from = operand(R, K, pc->b);
      if (from.isPlainScalar()) R[pc->a] = from;
      else R[pc->a] = take(pc->b);
      goto next;
    }
    op_assign: {
      const Storable& from = operand(R, K, pc->b);
      if (from.isPlainScalar()) {
        R[pc->a] = from;
        goto next;
      }
      if (from.isValue()) {
        R[pc->a] = take(pc->b);
        goto next;
      }
      KELO_GENERAL(assign(R[pc->a], pc->b, text::kNoValueToAssign, placeOf(*pc)))
    }
    op_firstOf: {
      if (R[pc->b].isValue()) goto next;
      KELO_GENERAL(assign(R[pc->a], pc->b, textAt(pc->c), placeOf(*pc)))
    }
    op_assignList: KELO_GENERAL(assignList(*pc))
    op_store1: {
      const Storable &subscript = operand(R, K, pc->b), &value = operand(R, K, pc->c);
      frames_.back().pc = pc;  // a shared array is copied, and appending may find no memory
      if (storeScalar(R[pc->a], subscript, value)) [[likely]] goto next;
      const Storable* arguments[] = {&subscript};
      KELO_GENERAL(store(*pc, arguments, 1, &value))
    }
    op_store2: {
      const Storable &row = operand(R, K, pc->b), &column = operand(R, K, pc->c), &value = operand(R, K, pc->e);
      frames_.back().pc = pc;  // a shared array is copied
      if (storeScalar(R[pc->a], row, column, value)) [[likely]] goto next;
      const Storable* arguments[] = {&row, &column};
      KELO_GENERAL(store(*pc, arguments, 2, &value))
    }
    op_store: op_erase: KELO_GENERAL(storeRow(*pc))
    op_checkTarget:
      if (R[pc->a].isArray() || R[pc->a].isNone() || R[pc->a].isLocalFunc()) goto next;
      KELO_GENERAL(fail(placeOf(*pc), text::kAssignmentTargetNotArray))

    op_loadName: {
      const Storable& value = R[pc->b];
      if (value.isArray() || value.isFuncHandle()) {
        R[pc->a] = value;
        goto next;
      }
      KELO_CALL(loadName(*pc))
    }
    op_index1: {
      if (readScalar(R[pc->b], operand(R, K, pc->c), &R[pc->flag ? pc->flag - 1 : pc->a])) [[likely]] {
        pc += pc->flag ? 2 : 1;
        continue;
      }
      if (R[pc->b].isFuncHandle() && operand(R, K, pc->c).isPlainScalar()) {
        Storable* const arguments = R + sites[pc->d].first;
        *arguments = operand(R, K, pc->c);
        KELO_CALL(call(*pc, arguments))
      }
      KELO_CALL(indexOrCall(*pc))
    }
    op_index2: {
      Storable& result = R[pc->flag ? pc->flag - 1 : pc->a];
      if (readScalar(R[pc->b], operand(R, K, pc->c), operand(R, K, pc->e), &result)) [[likely]] {
        pc += pc->flag ? 2 : 1;
        continue;
      }
      KELO_CALL(indexOrCall(*pc))
    }
    op_index: KELO_CALL(indexOrCall(*pc))
    op_call: {
      const Site& site = sites[pc->d];
      frames_.back().pc = pc;
      if (meansTheSame(R[pc->b], site) && callAgain(site, R + site.first, pc->a)) [[likely]] goto resume;
      KELO_CALL(call(*pc, R + site.first))
    }
    op_builtin: KELO_GENERAL(callRow(siteAt(pc->d), pc->a))
    op_quickCall: {
      const Storable &x = operand(R, K, pc->b), &y = operand(R, K, pc->c);
      const auto function = static_cast<QuickCall>(pc->e);
      double number;
      if (Storable::areDoubleScalars(x, y) && quickCall(function, x.doubleScalar(), y.doubleScalar(), &number)) {
        R[pc->a].setNumber(number);
        goto next;
      }
      frames_.back().pc = pc;  // a text may find no memory
      if (quickCall(function, x, y, &R[pc->a])) {
        const int32_t slots = frames_.back().code->slotCount();  // behind them are temporaries
        if (pc->b >= slots && pc->b != pc->a) R[pc->b].letGo();
        if (pc->c >= slots && pc->c != pc->a) R[pc->c].letGo();
        goto next;
      }
      KELO_GENERAL(callQuickRow(*pc))
    }
    op_endOf: KELO_GENERAL(endOf(*pc))
    op_colon: KELO_GENERAL(colon(*pc))
    op_checkExtent: KELO_GENERAL(checkExtent(*pc))
    op_checkArgument: {
      const Storable& value = operand(R, K, pc->a);
      if (!pc->c && value.isDoubleScalar()) goto next;
      const Site& site = sites[pc->d];
      if (value.isValue() && (site.row || (!site.isTarget && !R[site.base].isArray()))) goto next;
      KELO_GENERAL(checkArgument(*pc))
    }
    op_makeHandle: KELO_GENERAL(makeHandle(*pc))

    op_checkStructure: KELO_GENERAL(structureIn(pc->b, placeOf(*pc)) != nullptr)
    op_fieldOfName:
      if (readPlainField(R[pc->b], names[pc->c], *pc, &R[pc->d ? pc->d - 1 : pc->a])) {
        pc += pc->d ? 2 : 1;
        continue;
      }
      KELO_GENERAL(fieldOfName(*pc))
    op_fieldPath:
      if (!readPath(R[pc->b], sites[pc->d].fields, &R[pc->a])) goto next;
      pc = start + pc->c;
      continue;
    op_field: KELO_GENERAL(field(*pc, nameAt(pc->c), nameAt(pc->d)))
    op_elementField:
      if (const Storable* field = plainElementField(R[pc->b], operand(R, K, pc->c), names[pc->e], *pc)) {
        R[pc->a] = *field;
        goto next;
      }
      KELO_GENERAL(elementField(*pc))
    op_checkField:
      if (R[pc->b].isValue()) goto next;
      KELO_GENERAL(fail(placeOf(*pc), text::kFieldOfMultipleOutputs))
    op_namedField: KELO_GENERAL(namedField(*pc))
    op_setField: {
      const Storable& value = operand(R, K, pc->c);
      if (!value.isPlainScalar()) KELO_GENERAL(setField(*pc))
      frames_.back().pc = pc;  // a shared structure is copied
      if (Storable* field = writableFieldAt(R[pc->a], names[pc->b], *pc)) {
        *field = value;
        goto next;
      }
      StructArray* const structure = R[pc->a].structure();
      if (structure && structure->addNext(names[pc->b], value)) goto next;
      KELO_GENERAL(setField(*pc))
    }
    op_setNamedField: KELO_GENERAL(setNamedField(*pc))
    op_setPath: {
      const Storable& value = operand(R, K, pc->c);
      frames_.back().pc = pc;  // a shared structure is copied
      if (value.isPlainScalar() && writePath(R[pc->a], sites[pc->d].fields, value)) goto next;
      KELO_GENERAL(setPath(*pc))
    }
    op_setElementField: KELO_GENERAL(setElementField(*pc))
    op_setFieldElement: KELO_GENERAL(setFieldElement(*pc, {&operand(R, K, pc->c), 1}))
    op_setFieldElement2: {
      const Storable subscripts[] = {operand(R, K, pc->c), operand(R, K, pc->d)};
      KELO_GENERAL(setFieldElement(*pc, subscripts))
    }
    op_makeStructure: KELO_GENERAL(makeStructure(*pc))
    op_chainBegin:
      chains_.emplace_back(frames_.back().code->slots[static_cast<size_t>(pc->a)]);
      goto next;
    op_checkChain: KELO_GENERAL(reachedSize(pc->a, placeOf(*pc), nullptr))
    op_chainIndices: KELO_GENERAL(chainIndices(*pc))
    op_chainField: chains_.back().addField(nameAt(pc->b)); goto next;
    op_chainNamedField: KELO_GENERAL(chainNamedField(*pc))
    op_chainAssign: KELO_GENERAL(chainEnd(*pc, false))
    op_chainErase: KELO_GENERAL(chainEnd(*pc, true))

    op_jump: pc = start + pc->a; continue;
    op_jumpOnTruth: {
      const Storable& x = operand(R, K, pc->b);
      bool answer;
      if (x.isScalarOf(Kind::Logical)) [[likely]] {
        answer = x.numeric()->asLogical().scalar();
      } else {
        frames_.back().pc = pc;
        if (!truth(*pc, &answer)) return Outcome::failed;
      }
      if (answer == static_cast<bool>(pc->flag)) KELO_GO(pc->a)
      goto next;
    }
#define KELO_JUMP(name, op, sign)                                               \
  op_##name: {                                                                  \
    const Storable &left = operand(R, K, pc->b), &right = operand(R, K, pc->c); \
    bool answer;                                                                \
    if (Storable::areDoubleScalars(left, right)) [[likely]] {                   \
      answer = left.doubleScalar() sign right.doubleScalar();                   \
    } else if (double x, y; areDoubleAndCount(left, right, &x, &y)) {           \
      answer = x sign y;                                                        \
    } else if (scalarBinary(BinaryOp::op, left, right, &scratch)) {             \
      answer = scratch.numeric()->asLogical().scalar();                         \
    } else {                                                                    \
      frames_.back().pc = pc;                                                   \
      if (!compare(*pc, BinaryOp::op, &answer)) return Outcome::failed;         \
    }                                                                           \
    if (answer == static_cast<bool>(pc->flag)) KELO_GO(pc->a)                   \
    goto next;                                                                  \
  }
    KELO_JUMP(jumpOnEqual, eqeq, ==)
    KELO_JUMP(jumpOnUnequal, neq, !=)
    KELO_JUMP(jumpOnLe, le, <=)
    KELO_JUMP(jumpOnLt, lt, <)
    KELO_JUMP(jumpOnGe, ge, >=)
    KELO_JUMP(jumpOnGt, gt, >)
#undef KELO_JUMP
    op_forRange: {
      double first, count;
      if (pc->c != 2 || !plainRange(R[pc->b], R[pc->b + 1], &first, &count)) KELO_GENERAL(forRange(*pc))
      R[pc->a].setNumber(first);
      R[pc->a + 1].setNumber(1);
      R[pc->a + 2].setNumber(count);
      R[pc->a + 3].setNumber(0);
      goto next;
    }
    op_rangeStep: {
      Storable* state = R + pc->a;
      const double k = state[3].doubleScalar();
      if (!(k < state[2].doubleScalar())) goto next;
      R[pc->b].setNumber(k * state[1].doubleScalar() + state[0].doubleScalar());
      state[3].setNumber(k + 1);
      KELO_GO(pc->c)
    }
    op_forArray: KELO_GENERAL(forArray(*pc))
    op_arrayStep:
      if (!arrayStep(*pc)) goto next;
      KELO_GO(pc->c)
    op_checkSwitch:
      if (operand(R, K, pc->b).isPlainScalar()) goto next;
      KELO_GENERAL(checkSwitch(*pc))
    op_caseJump: {
      const Storable &value = operand(R, K, pc->b), &candidate = operand(R, K, pc->c);
      bool matches;
      if (Storable::areDoubleScalars(value, candidate)) {
        matches = value.doubleScalar() == candidate.doubleScalar();
      } else if (!comparePlainCharacters(value, candidate, &matches)) {
        frames_.back().pc = pc;
        if (!caseMatches(*pc, &matches)) return Outcome::failed;
      }
      if (matches) goto next;
      pc = start + pc->a;
      continue;
    }

    op_answer: KELO_GENERAL(answer(pc->a, pc->b, pc->flag))
    op_nameStatement: KELO_GENERAL(nameStatement(*pc))
    op_showName:
      frames_.back().pc = pc;
      showValue(frames_.back().code->slots[static_cast<size_t>(pc->a)], R[pc->a]);
      goto next;
    op_poll:
      if (app_.takeStopRequest()) [[unlikely]] {
        frames_.back().pc = pc;
        fail(placeOf(*pc), text::kTerminatedByUser);
        return Outcome::failed;
      }
      goto next;
    op_fail:
      frames_.back().pc = pc;
      if (pc->flag) failTooDeep(placeOf(*pc));
      else fail(placeOf(*pc), textAt(pc->a));
      return Outcome::failed;
    op_returnFunction: {
      frames_.back().pc = pc;
      if (returnPlainly()) [[likely]] goto resume;
      const Outcome outcome = returnFunction();
      if (outcome != Outcome::goesOn) return outcome;
      goto resume;
    }
    op_returnValue: {
      frames_.back().pc = pc;
      if (operand(R, K, pc->b).isValue() && !frames_.back().isEntry) [[likely]] {
        returnPlainly(operand(R, K, pc->b));
        goto resume;
      }
      const Outcome outcome = returnValue(take(pc->b));
      if (outcome != Outcome::goesOn) return outcome;
      goto resume;
    }
  next:
    ++pc;
  }
}

}  // namespace kelo
