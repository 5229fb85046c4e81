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
#include "interpreter/native/native_loops.h"
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

#define KELO_GENERAL(done)           \
  {                                  \
    frames_.back().pc = pc;          \
    if (!(done)) return Outcome::failed; \
    ++pc;                            \
    continue;                        \
  }
#define KELO_CALL(done)              \
  {                                  \
    frames_.back().pc = pc;          \
    if (!(done)) return Outcome::failed; \
    goto resume;                     \
  }

// Goes on at instruction `to`. Each jump backwards ends a round of a loop, which may have become
// native code.
#define KELO_GO(to)                                                                          \
  {                                                                                          \
    const Instruction* const from = pc;                                                      \
    pc = start + (to);                                                                       \
    if (pc < from && --const_cast<Instruction&>(i).d < 0) [[unlikely]]                       \
      pc = native::enterLoop(nativeContext(frames_.back().functions), *frames_.back().code,  \
                             const_cast<Instruction&>(i), R);                                \
    continue;                                                                                \
  }

// Runs until the entry frame ends or something fails; frame().pc then stands at the failed
// instruction.
Machine::Outcome Machine::execute() {
  const Instruction *pc, *start;
  Storable* R;         // registers of the frame
  const Storable* K;   // constant ~k
  const Site* sites;
  const Name* names;   // of fields
  Storable scratch(0.0);

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
    const Instruction& i = *pc;
    switch (i.op) {
#define KELO_BINARY(name, store)                                      \
  case Op::name: {                                                    \
    const Storable &left = operand(R, K, i.b), &right = operand(R, K, i.c); \
    if (Storable::areDoubleScalars(left, right)) [[likely]] {         \
      const double x = left.doubleScalar(), y = right.doubleScalar(); \
      R[i.a].store;                                                   \
      ++pc;                                                           \
      continue;                                                       \
    }                                                                 \
    if (scalarBinary(BinaryOp::name, left, right, &R[i.a])) {         \
      ++pc;                                                           \
      continue;                                                       \
    }                                                                 \
    KELO_GENERAL(binary(i, BinaryOp::name, &R[i.a]))                  \
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
      case Op::and_: case Op::or_: {
        const Storable &left = operand(R, K, i.b), &right = operand(R, K, i.c);
        if (left.isScalarOf(Kind::Logical) && right.isScalarOf(Kind::Logical)) {
          const bool x = left.numeric()->asLogical().scalar(), y = right.numeric()->asLogical().scalar();
          R[i.a].setLogical(i.op == Op::and_ ? x && y : x || y);
          break;
        }
        [[fallthrough]];
      }
      case Op::dpower: case Op::power: case Op::ldivide: case Op::mldivide: {
        const auto op = static_cast<BinaryOp>(i.op);
        if (scalarBinary(op, operand(R, K, i.b), operand(R, K, i.c), &R[i.a])) break;
        KELO_GENERAL(binary(i, op, &R[i.a]))
      }
      case Op::unaryPlus: KELO_GENERAL(unary(i, UnaryOp::plus))
      case Op::unaryMinus: {
        const Storable& x = operand(R, K, i.b);
        if (!x.isDoubleScalar()) KELO_GENERAL(unary(i, UnaryOp::minus))
        R[i.a].setNumber(-x.doubleScalar());
        break;
      }
      case Op::not_: {
        const Storable& x = operand(R, K, i.b);
        if (!x.isScalarOf(Kind::Logical)) KELO_GENERAL(unary(i, UnaryOp::not_))
        R[i.a].setLogical(!x.numeric()->asLogical().scalar());
        break;
      }
      case Op::transpose: KELO_GENERAL(transpose(i))
      case Op::range: KELO_GENERAL(range(i))
      case Op::rangeArgument: KELO_GENERAL(rangeArgument(i))
      case Op::joinRow: KELO_GENERAL(joinRow(i))
      case Op::appendRow: KELO_GENERAL(appendRow(i))
      case Op::appendText: KELO_GENERAL(appendText(i))
      case Op::joinRows: KELO_GENERAL(joinRows(i))
      case Op::checkElement: KELO_GENERAL(checkElement(R[i.b], placeOf(i)))
      case Op::checkRange:
        if (R[i.b].isNumeric()) break;
        KELO_GENERAL(checkRange(i))

      case Op::begin: break;
      case Op::move: {
        const Storable& from = operand(R, K, i.b);
        if (from.isPlainScalar()) R[i.a] = from;
        else R[i.a] = take(i.b);
        break;
      }
      case Op::assign: {
        const Storable& from = operand(R, K, i.b);
        if (from.isPlainScalar()) {
          R[i.a] = from;
          break;
        }
        if (from.isValue()) {
          R[i.a] = take(i.b);
          break;
        }
        KELO_GENERAL(assign(R[i.a], i.b, text::kNoValueToAssign, placeOf(i)))
      }
      case Op::firstOf: {
        if (R[i.b].isValue()) break;
        KELO_GENERAL(assign(R[i.a], i.b, textAt(i.c), placeOf(i)))
      }
      case Op::assignList: KELO_GENERAL(assignList(i))
      case Op::store1: {
        const Storable &subscript = operand(R, K, i.b), &value = operand(R, K, i.c);
        frames_.back().pc = pc;  // a shared array is copied, and appending may find no memory
        if (storeScalar(R[i.a], subscript, value)) [[likely]] break;
        const Storable* arguments[] = {&subscript};
        KELO_GENERAL(store(i, arguments, 1, &value))
      }
      case Op::store2: {
        const Storable &row = operand(R, K, i.b), &column = operand(R, K, i.c), &value = operand(R, K, i.e);
        frames_.back().pc = pc;  // a shared array is copied
        if (storeScalar(R[i.a], row, column, value)) [[likely]] break;
        const Storable* arguments[] = {&row, &column};
        KELO_GENERAL(store(i, arguments, 2, &value))
      }
      case Op::store: case Op::erase: KELO_GENERAL(storeRow(i))
      case Op::checkTarget:
        if (R[i.a].isArray() || R[i.a].isNone() || R[i.a].isLocalFunc()) break;
        KELO_GENERAL(fail(placeOf(i), text::kAssignmentTargetNotArray))

      case Op::loadName: {
        const Storable& value = R[i.b];
        if (value.isArray() || value.isFuncHandle()) {
          R[i.a] = value;
          break;
        }
        KELO_CALL(loadName(i))
      }
      case Op::index1: {
        if (readScalar(R[i.b], operand(R, K, i.c), &R[i.flag ? i.flag - 1 : i.a])) [[likely]] {
          pc += i.flag ? 2 : 1;
          continue;
        }
        if (R[i.b].isFuncHandle() && operand(R, K, i.c).isPlainScalar()) {
          Storable* const arguments = R + sites[i.d].first;
          *arguments = operand(R, K, i.c);
          KELO_CALL(call(i, arguments))
        }
        KELO_CALL(indexOrCall(i))
      }
      case Op::index2: {
        if (readScalar(R[i.b], operand(R, K, i.c), operand(R, K, i.e), &R[i.flag ? i.flag - 1 : i.a])) [[likely]] {
          pc += i.flag ? 2 : 1;
          continue;
        }
        KELO_CALL(indexOrCall(i))
      }
      case Op::index: KELO_CALL(indexOrCall(i))
      case Op::call: {
        const Site& site = sites[i.d];
        frames_.back().pc = pc;
        if (meansTheSame(R[i.b], site) && callAgain(site, R + site.first, i.a)) [[likely]] goto resume;
        KELO_CALL(call(i, R + site.first))
      }
      case Op::builtin: KELO_GENERAL(callRow(siteAt(i.d), i.a))
      case Op::quickCall: {
        const Storable &x = operand(R, K, i.b), &y = operand(R, K, i.c);
        const auto function = static_cast<QuickCall>(i.e);
        double number;
        if (Storable::areDoubleScalars(x, y) && quickCall(function, x.doubleScalar(), y.doubleScalar(), &number)) {
          R[i.a].setNumber(number);
          break;
        }
        frames_.back().pc = pc;  // a text may find no memory
        if (quickCall(function, x, y, &R[i.a])) {
          const int32_t slots = frames_.back().code->slotCount();  // behind them are temporaries
          if (i.b >= slots && i.b != i.a) R[i.b].letGo();
          if (i.c >= slots && i.c != i.a) R[i.c].letGo();
          break;
        }
        KELO_GENERAL(callQuickRow(i))
      }
      case Op::endOf: KELO_GENERAL(endOf(i))
      case Op::colon: KELO_GENERAL(colon(i))
      case Op::checkExtent: KELO_GENERAL(checkExtent(i))
      case Op::checkArgument: {
        const Storable& value = operand(R, K, i.a);
        if (!i.c && value.isDoubleScalar()) break;
        const Site& site = sites[i.d];
        if (value.isValue() && (site.row || (!site.isTarget && R[site.base].isNone()))) break;
        KELO_GENERAL(checkArgument(i))
      }
      case Op::makeHandle: KELO_GENERAL(makeHandle(i))

      case Op::checkStructure: KELO_GENERAL(structureIn(i.b, placeOf(i)) != nullptr)
      case Op::fieldOfName:
        if (readPlainField(R[i.b], names[i.c], i, &R[i.d ? i.d - 1 : i.a])) {
          pc += i.d ? 2 : 1;
          continue;
        }
        KELO_GENERAL(fieldOfName(i))
      case Op::fieldPath:
        if (!readPath(R[i.b], sites[i.d].fields, &R[i.a])) break;
        pc = start + i.c;
        continue;
      case Op::field: KELO_GENERAL(field(i, nameAt(i.c), nameAt(i.d)))
      case Op::elementField: KELO_GENERAL(elementField(i))
      case Op::checkField:
        if (R[i.b].isValue()) break;
        KELO_GENERAL(fail(placeOf(i), text::kFieldOfMultipleOutputs))
      case Op::namedField: KELO_GENERAL(namedField(i))
      case Op::setField: {
        const Storable& value = operand(R, K, i.c);
        frames_.back().pc = pc;  // a shared structure is copied
        Storable* field = nullptr;
        if (value.isPlainScalar()) field = writableFieldAt(R[i.a], names[i.b], i);
        if (field == nullptr) KELO_GENERAL(setField(i))
        *field = value;
        break;
      }
      case Op::setNamedField: KELO_GENERAL(setNamedField(i))
      case Op::setPath: KELO_GENERAL(setPath(i))
      case Op::setElementField: KELO_GENERAL(setElementField(i))
      case Op::setFieldElement: KELO_GENERAL(setFieldElement(i))
      case Op::chainBegin:
        chains_.emplace_back(frames_.back().code->slots[static_cast<size_t>(i.a)]);
        break;
      case Op::checkChain: KELO_GENERAL(reachedSize(i.a, placeOf(i), nullptr))
      case Op::chainIndices: KELO_GENERAL(chainIndices(i))
      case Op::chainField: chains_.back().addField(nameAt(i.b)); break;
      case Op::chainNamedField: KELO_GENERAL(chainNamedField(i))
      case Op::chainAssign: KELO_GENERAL(chainEnd(i, false))
      case Op::chainErase: KELO_GENERAL(chainEnd(i, true))

      case Op::jump: pc = start + i.a; continue;
      case Op::jumpOnTruth: {
        const Storable& x = operand(R, K, i.b);
        bool answer;
        if (x.isScalarOf(Kind::Logical)) [[likely]] {
          answer = x.numeric()->asLogical().scalar();
        } else {
          frames_.back().pc = pc;
          if (!truth(i, &answer)) return Outcome::failed;
        }
        if (answer == static_cast<bool>(i.flag)) KELO_GO(i.a)
        break;
      }
#define KELO_JUMP(name, op, sign)                                       \
  case Op::name: {                                                      \
    const Storable &left = operand(R, K, i.b), &right = operand(R, K, i.c); \
    bool answer;                                                        \
    if (Storable::areDoubleScalars(left, right)) [[likely]] {   \
      answer = left.doubleScalar() sign right.doubleScalar();           \
    } else if (scalarBinary(BinaryOp::op, left, right, &scratch)) {     \
      answer = scratch.numeric()->asLogical().scalar();                 \
    } else {                                                            \
      frames_.back().pc = pc;                                           \
      if (!compare(i, BinaryOp::op, &answer)) return Outcome::failed;   \
    }                                                                   \
    if (answer == static_cast<bool>(i.flag)) KELO_GO(i.a)               \
    break;                                                              \
  }
      KELO_JUMP(jumpOnEqual, eqeq, ==)
      KELO_JUMP(jumpOnUnequal, neq, !=)
      KELO_JUMP(jumpOnLe, le, <=)
      KELO_JUMP(jumpOnLt, lt, <)
      KELO_JUMP(jumpOnGe, ge, >=)
      KELO_JUMP(jumpOnGt, gt, >)
#undef KELO_JUMP
      case Op::forRange: {
        double first, count;
        if (i.c != 2 || !plainRange(R[i.b], R[i.b + 1], &first, &count)) KELO_GENERAL(forRange(i))
        R[i.a].setNumber(first);
        R[i.a + 1].setNumber(1);
        R[i.a + 2].setNumber(count);
        R[i.a + 3].setNumber(0);
        break;
      }
      case Op::rangeStep: {
        Storable* state = R + i.a;
        const double k = state[3].doubleScalar();
        if (!(k < state[2].doubleScalar())) break;
        R[i.b].setNumber(k * state[1].doubleScalar() + state[0].doubleScalar());
        state[3].setNumber(k + 1);
        KELO_GO(i.c)
      }
      case Op::forArray: KELO_GENERAL(forArray(i))
      case Op::arrayStep:
        if (!arrayStep(i)) break;
        KELO_GO(i.c)
      case Op::checkSwitch:
        if (operand(R, K, i.b).isPlainScalar()) break;
        KELO_GENERAL(checkSwitch(i))
      case Op::caseJump: {
        const Storable &value = operand(R, K, i.b), &candidate = operand(R, K, i.c);
        bool matches;
        if (Storable::areDoubleScalars(value, candidate)) {
          matches = value.doubleScalar() == candidate.doubleScalar();
        } else if (!comparePlainCharacters(value, candidate, &matches)) {
          frames_.back().pc = pc;
          if (!caseMatches(i, &matches)) return Outcome::failed;
        }
        if (matches) break;
        pc = start + i.a;
        continue;
      }

      case Op::answer: KELO_GENERAL(answer(i.a, i.b, i.flag))
      case Op::nameStatement: KELO_GENERAL(nameStatement(i))
      case Op::showName:
        frames_.back().pc = pc;
        showValue(frames_.back().code->slots[static_cast<size_t>(i.a)], R[i.a]);
        break;
      case Op::poll:
        if (app_.takeStopRequest()) [[unlikely]] {
          frames_.back().pc = pc;
          fail(placeOf(i), text::kTerminatedByUser);
          return Outcome::failed;
        }
        break;
      case Op::fail:
        frames_.back().pc = pc;
        if (i.flag) failTooDeep(placeOf(i));
        else fail(placeOf(i), textAt(i.a));
        return Outcome::failed;
      case Op::returnFunction: {
        frames_.back().pc = pc;
        if (returnPlainly()) [[likely]] goto resume;
        const Outcome outcome = returnFunction();
        if (outcome != Outcome::goesOn) return outcome;
        goto resume;
      }
      case Op::returnValue: {
        frames_.back().pc = pc;
        if (operand(R, K, i.b).isValue() && !frames_.back().isEntry) [[likely]] {
          returnPlainly(operand(R, K, i.b));
          goto resume;
        }
        const Outcome outcome = returnValue(take(i.b));
        if (outcome != Outcome::goesOn) return outcome;
        goto resume;
      }
      default: __builtin_unreachable();
    }
    ++pc;
  }
}

}  // namespace kelo
