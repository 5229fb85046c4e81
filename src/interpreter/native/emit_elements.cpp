// Elements of arrays, `end`, and the steps of loops.
#include "grammar/kelo_node.h"
#include "interpreter/native/emitter.h"
#include "interpreter/native/intrinsics.h"
#include "interpreter/native/typing.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

// ---- Positions

// A subscript as a position from 0 in a dimension of this length.
x86::Gp Emitter::position(int32_t subscript, const Mem& extent, Label missed) {
  const Gp whole = cc_.newInt64("position");
  const Type type = typeOf(subscript);
  if (type.held == Held::integer) {
    cc_.mov(whole, asWhole(subscript));
  } else {
    const Xmm x = asReal(subscript);
    cc_.vcvttsd2si(whole, x);
    if (!type.isWhole) {
      const Xmm back = newReal("back");
      cc_.vxorpd(back, back, back);
      cc_.vcvtsi2sd(back, back, whole);
      cc_.vucomisd(back, x);
      cc_.jp(exit());
      cc_.jne(exit());
    }
  }
  cc_.dec(whole);
  cc_.cmp(whole, extent);
  cc_.jae(missed);
  return whole;
}

// The position of an element by one subscript, or by two where the instruction is one of two.
x86::Gp Emitter::position(const Instruction& i, int32_t lane, int32_t first, int32_t second, Label missed) {
  if (i.op == Op::index1 || i.op == Op::store1) return position(first, arrayWord(lane, LaneWords::kCount), missed);
  const Gp row = position(first, arrayWord(lane, LaneWords::kRows), missed);
  const Gp column = position(second, arrayWord(lane, LaneWords::kColumns), missed);
  cc_.imul(column, arrayWord(lane, LaneWords::kRows));
  cc_.add(row, column);
  return row;
}

x86::Mem Emitter::elementAt(int32_t lane, Kind kind, Gp& position) {
  const Gp data = dataLane(lane);
  switch (kind) {
    case Kind::Double: case Kind::Int: return x86::ptr(data, position, 3, 0, 8);
    case Kind::Logical: return x86::ptr(data, position, 0, 0, 1);
    case Kind::Char: return x86::ptr(data, position, 2, 0, 4);
    case Kind::Complex: break;
  }
  cc_.add(position, position);
  return x86::ptr(data, position, 3, 0, 8);
}

// ---- Reading and writing

void Emitter::loadElement(int32_t reg, Kind kind, const Mem& element) {
  switch (kind) {
    case Kind::Double: cc_.vmovsd(realOf(reg), element); return;
    case Kind::Int: cc_.mov(wholeLane(graph_.laneOf(reg)), element); return;
    case Kind::Logical: cc_.movzx(wordOf(reg), element); return;
    case Kind::Char: cc_.mov(wordOf(reg), element); return;
    case Kind::Complex:
      cc_.vmovsd(realOf(reg), element);
      cc_.vmovsd(realLane(graph_.laneOf(reg), true), element.cloneAdjusted(8));
      return;
  }
}

void Emitter::read(const Instruction& i, int32_t second) {
  const int32_t lane = graph_.arrayLane(node().state, i.b);
  const Kind kind = typeOf(i.b).element;
  Gp at = position(i, lane, i.c, second, exit());
  loadElement(i.a, kind, elementAt(lane, kind, at));
}

void Emitter::write(const Instruction& i, int32_t second, int32_t value) {
  const int32_t lane = graph_.laneOf(i.a);
  const Kind kind = typeOf(i.a).element;
  const bool mayAppend = i.op == Op::store1 && kind == Kind::Double;
  const Label missed = mayAppend ? cc_.newLabel() : exit(), done = cc_.newLabel();
  Gp at = position(i, lane, i.b, second, missed);
  if (mayAppend) {
    aside_.push_back([=, this, which = node_] {
      node_ = which;
      cc_.bind(missed);
      cc_.cmp(at, arrayWord(lane, LaneWords::kCount));
      cc_.jne(exit());
      append(i.a, value, false);
      cc_.jmp(done);
    });
  }
  const Mem element = elementAt(lane, kind, at);
  switch (kind) {
    case Kind::Double:
      cc_.vmovsd(element, asReal(value));
      cc_.bind(done);
      return;
    case Kind::Int: cc_.mov(element, asWhole(value)); return;
    case Kind::Logical: cc_.mov(element, asWord(value).r8()); return;
    case Kind::Char:
      if (value >= 0) cc_.mov(element, wordOf(value));
      else cc_.mov(element, asWord(value));
      return;
    case Kind::Complex: {
      Xmm re, im;
      asComplex(value, &re, &im);
      cc_.vmovsd(element, re);
      cc_.vmovsd(element.cloneAdjusted(8), im);
      return;
    }
  }
}

// A double after a vector, with spare room; the array may move.
void Emitter::append(int32_t reg, int32_t value, bool isRow) {
  const int32_t lane = graph_.laneOf(reg);
  const Gp function = cc_.newIntPtr("function"), variable = cc_.newIntPtr("variable"), words = cc_.newIntPtr("words");
  const Gp done = cc_.newInt64("done");
  cc_.mov(function, reinterpret_cast<uint64_t>(isRow ? &appendToRow : &appendToVector));
  cc_.mov(variable, wordAt(LaneWords::kRegisters));
  cc_.add(variable, reg * static_cast<int32_t>(sizeof(Storable)));
  cc_.lea(words, x86::ptr(cells_, LaneWords::first(lane)));
  const Xmm number = asReal(value);
  asmjit::InvokeNode* call;
  cc_.invoke(&call, function, asmjit::FuncSignatureT<int64_t, void*, void*, double>());
  call->setArg(0, variable);
  call->setArg(1, words);
  call->setArg(2, number);
  call->setRet(0, done);
  cc_.test(done, done);
  cc_.jz(exit());
  cc_.mov(dataLane(lane), arrayWord(lane, LaneWords::kData));
}

void Emitter::appendRow(const Instruction& i) { append(i.a, i.b, true); }

// The node keeps the extent that it had last, as in the machine.
void Emitter::endOf(const Instruction& i) {
  const Extent extent = extentOf(graph_, node().state, i);
  const Site& site = graph_.code().sites[static_cast<size_t>(i.d)];
  const Gp length = cc_.newInt64("end");
  if (extent == Extent::one) {
    cc_.mov(length, 1);
  } else {
    const int32_t lane = graph_.arrayLane(node().state, site.base);
    const int32_t word = extent == Extent::count  ? LaneWords::kCount
                         : extent == Extent::rows ? LaneWords::kRows
                                                  : LaneWords::kColumns;
    cc_.mov(length, arrayWord(lane, word));
  }
  if (i.op == Op::checkExtent) {
    cc_.test(length, length);
    cc_.jz(exit());
    return;
  }
  const Gp address = cc_.newIntPtr("extent");
  KeloNode& place = *graph_.code().places[static_cast<size_t>(node().pc)];
  cc_.mov(address, reinterpret_cast<uint64_t>(&place.cache.extent));
  cc_.mov(x86::ptr_64(address), length);
  cc_.mov(wholeLane(graph_.laneOf(i.a)), length);
}

// ---- Loops

void Emitter::forRange(const Instruction& i) {
  const Xmm first = asReal(i.b), last = asReal(i.b + i.c - 1);
  const Xmm step = i.c == 3 ? asReal(i.b + 1) : constant(1), count = newReal("count");
  const Gp function = cc_.newIntPtr("function");
  cc_.mov(function, reinterpret_cast<uint64_t>(&rangeCount));
  asmjit::InvokeNode* call;
  cc_.invoke(&call, function, asmjit::FuncSignatureT<double, double, double, double>());
  call->setArg(0, first);
  call->setArg(1, step);
  call->setArg(2, last);
  call->setRet(0, count);
  cc_.vucomisd(count, constantMemory(0));
  cc_.jb(exit());
  const Xmm start = newReal("start");  // the state may lie where the operands were
  cc_.vmovapd(start, first);
  setReal(i.a + 1, step);
  setReal(i.a, start);
  setReal(i.a + 2, count);
  setReal(i.a + 3, constant(0));
}

void Emitter::rangeStep(const Instruction& i) {
  const Label past = cc_.newLabel();
  const Xmm k = realOf(i.a + 3), value = newReal("value");
  cc_.vucomisd(realOf(i.a + 2), k);
  cc_.jbe(past);
  cc_.vmulsd(value, k, realOf(i.a + 1));
  cc_.vaddsd(realOf(i.b), value, realOf(i.a));
  cc_.vaddsd(k, k, constantMemory(1));
  jumpTo(i, node());
  cc_.bind(past);
}

// Where the array ends the register code lets it go.
void Emitter::arrayStep(const Instruction& i) {
  const int32_t lane = graph_.arrayLane(node().state, i.a);
  const Kind kind = typeOf(i.a).element;
  const Xmm round = realOf(i.a + 1);
  Gp at = cc_.newInt64("at");
  cc_.vcvttsd2si(at, round);
  cc_.cmp(at, arrayWord(lane, LaneWords::kCount));
  cc_.jae(exit());
  const Mem element = elementAt(lane, kind, at);
  if (kind == Kind::Double) {
    cc_.vmovsd(realOf(i.b), element);
  } else if (kind == Kind::Char) {
    cc_.mov(wordOf(i.b), element);
  } else {
    const Gp whole = cc_.newInt64("element");
    if (kind == Kind::Logical) cc_.movzx(whole, element);
    else cc_.mov(whole, element);
    cc_.vxorpd(realOf(i.b), realOf(i.b), realOf(i.b));
    cc_.vcvtsi2sd(realOf(i.b), realOf(i.b), whole);
  }
  cc_.vaddsd(round, round, constantMemory(1));
  jumpTo(i, node());
}

}  // namespace kelo::native
