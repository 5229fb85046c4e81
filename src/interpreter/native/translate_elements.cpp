// Elements of arrays, `end`, and the steps of loops.
#include "grammar/kelo_node.h"
#include "interpreter/native/translator.h"

namespace kelo::native {

namespace x86 = asmjit::x86;

// ---- Positions

// A subscript that passes is a whole number from then on.
bool Translator::areSubscripts(std::initializer_list<int32_t> operands) {
  for (const int32_t operand : operands) {
    Type type = of(operand);
    if (type.held != Held::real && type.held != Held::integer) return false;
    type.isWhole = type.held == Held::real;
    if (operand >= 0) learn(operand, type);
  }
  return true;
}

// A subscript as a position from 0 in a dimension of this length.
x86::Gp Translator::position(int32_t subscript, const Mem& extent, Label missed) {
  const Gp position = newWhole();
  const Type type = of(subscript);
  if (type.held == Held::integer) {
    cc_.mov(position, asWhole(subscript));
  } else {
    const Xmm x = asReal(subscript);
    cc_.vcvttsd2si(position, x);
    if (!type.isWhole) {
      const Xmm back = newReal();
      cc_.vxorpd(back, back, back);
      cc_.vcvtsi2sd(back, back, position);
      cc_.vucomisd(back, x);
      cc_.jp(exit());
      cc_.jne(exit());
    }
  }
  cc_.dec(position);
  cc_.cmp(position, extent);
  cc_.jae(missed);
  return position;
}

x86::Gp Translator::position(int32_t array, std::initializer_list<int32_t> subscripts, Label missed) {
  const int32_t* const first = subscripts.begin();
  if (subscripts.size() == 1) return position(*first, arrayWord(array, Layout::kCount), missed);
  const Gp row = position(first[0], arrayWord(array, Layout::kRows), missed);
  const Gp column = position(first[1], arrayWord(array, Layout::kColumns), missed);
  cc_.imul(column, arrayWord(array, Layout::kRows));
  cc_.add(row, column);
  return row;
}

x86::Mem Translator::elementAt(int32_t array, Kind kind, Gp& position) {
  switch (kind) {
    case Kind::Double: case Kind::Int: return x86::ptr(data(array), position, 3, 0, 8);
    case Kind::Logical: return x86::ptr(data(array), position, 0, 0, 1);
    case Kind::Char: return x86::ptr(data(array), position, 2, 0, 4);
    case Kind::Complex: break;
  }
  cc_.add(position, position);
  return x86::ptr(data(array), position, 3, 0, 8);
}

// ---- Reading and writing

bool Translator::index(const Instruction& i) {
  if (!of(i.b).isArray()) return callUnit(i);
  return i.op == Op::index1 ? read(i, {i.c}) : read(i, {i.c, i.e});
}

bool Translator::read(const Instruction& i, std::initializer_list<int32_t> subscripts) {
  const Type type = of(i.b);
  if (!areSubscripts(subscripts) || (subscripts.size() > 1 && !type.isMatrix)) return false;
  return define(i.a, scalar(heldOf(type.element))) && make([&] {
           const int32_t array = arrayAt(i.b);
           Gp at = position(array, subscripts, exit());
           const Mem element = elementAt(array, type.element, at);
           switch (type.element) {
             case Kind::Int: cc_.mov(whole(i.a), element); return;
             case Kind::Logical: cc_.movzx(whole(i.a), element); return;
             case Kind::Char: cc_.mov(whole(i.a).r32(), element); return;
             case Kind::Complex: cc_.vmovsd(real(i.a, true), element.cloneAdjusted(8)); [[fallthrough]];
             case Kind::Double: cc_.vmovsd(real(i.a), element); return;
           }
         });
}

bool Translator::store(const Instruction& i) {
  return i.op == Op::store1 ? store(i.a, {i.b}, i.c) : store(i.a, {i.b, i.c}, i.e);
}

// A unit writes to an array of its own; that of a loop may grow by one, if it is a vector.
bool Translator::store(int32_t array, std::initializer_list<int32_t> subscripts, int32_t value) {
  const bool isVector = subscripts.size() == 1;
  const Type type = of(array);
  if (type.held != Held::array || of(value).held != heldOf(type.element) || aliasesOf(array) > 0) return false;
  if (!areSubscripts(subscripts) || !(isVector || type.isMatrix)) return false;
  if (!type.isWritable) {
    if (!isUnit()) return false;
    makesArrays_ = true;
    Type own = type;
    own.isWritable = true;
    learn(array, own);
  }
  return make([&] {
    if (!type.isWritable) makeOwn(array);
    const bool mayAppend = isVector && type.element == Kind::Double && !isUnit() && !isField(array);
    const Label missed = mayAppend ? cc_.newLabel() : exit(), done = cc_.newLabel();
    Gp at = position(array, subscripts, missed);
    if (mayAppend) {
      aside_.push_back([=, this, node = node_, state = state_] {
        node_ = node;
        state_ = state;
        cc_.bind(missed);
        cc_.cmp(at, arrayWord(array, Layout::kCount));
        cc_.jne(exit());
        appendScalar(array, value, false);
        cc_.jmp(done);
      });
    }
    write(array, value, at);
    cc_.bind(done);
  });
}

void Translator::write(int32_t array, int32_t value, Gp& position) {
  const Kind kind = of(array).element;
  const Mem element = elementAt(array, kind, position);
  switch (kind) {
    case Kind::Double: cc_.vmovsd(element, asReal(value)); return;
    case Kind::Int: cc_.mov(element, asWhole(value)); return;
    case Kind::Logical: cc_.mov(element, asWhole(value).r8()); return;
    case Kind::Char: cc_.mov(element, value < 0 ? asWhole(value).r32() : whole(value).r32()); return;
    case Kind::Complex: {
      Xmm re, im;
      asComplex(value, &re, &im);
      cc_.vmovsd(element, re);
      cc_.vmovsd(element.cloneAdjusted(8), im);
    }
  }
}

// A double after a vector, with spare room; the array may move.
void Translator::appendScalar(int32_t reg, int32_t value, bool isRow) {
  const Gp variable = cc_.newIntPtr(), words = cc_.newIntPtr(), done = newWhole();
  cc_.mov(variable, wordAt(Layout::kRegisters));
  cc_.add(variable, reg * static_cast<int32_t>(sizeof(Storable)));
  cc_.lea(words, wordAt(Layout::of(reg)));
  callCpp(isRow ? &appendToRow : &appendToVector, done, variable, words, asReal(value));
  cc_.test(done, done);
  cc_.jz(exit());
  cc_.mov(data(reg), arrayWord(reg, Layout::kData));
}

bool Translator::append(const Instruction& i) {
  const Type row = of(i.a);
  return row.held == Held::array && row.element == Kind::Double && row.isWritable && row.isMatrix && !isUnit() &&
         aliasesOf(i.a) == 0 && of(i.b).held == Held::real && make([&] { appendScalar(i.a, i.b, true); });
}

// ---- `end` and arguments

Translator::Extent Translator::extentOf(const Instruction& i) {
  if (i.d < 0 || siteOf(i).isChain) return std::nullopt;
  const Site& site = siteOf(i);
  const Type base = of(site.base);
  if (base.isScalar()) return kOne;
  if (!base.isArray()) return std::nullopt;
  if (site.count == 1) return Layout::kCount;
  if (site.count != 2 || !base.isMatrix) return std::nullopt;
  return i.b == 0 ? Layout::kRows : Layout::kColumns;
}

// The node keeps the extent that it had last, as in the machine.
bool Translator::endOf(const Instruction& i) {
  const Extent extent = extentOf(i);
  if (!extent || (i.op == Op::endOf && !define(i.a, scalar(Held::integer)))) return false;
  return make([&] {
    const Gp length = newWhole();
    if (*extent == kOne) cc_.mov(length, 1);
    else cc_.mov(length, arrayWord(arrayAt(siteOf(i).base), *extent));
    if (i.op == Op::checkExtent) {
      cc_.test(length, length);
      cc_.jz(exit());
      return;
    }
    const Gp address = cc_.newIntPtr();
    KeloNode& place = *code().places[static_cast<size_t>(node().pc)];
    cc_.mov(address, reinterpret_cast<uint64_t>(&place.cache.extent));
    cc_.mov(x86::ptr_64(address), length);
    cc_.mov(whole(i.a), length);
  });
}

// What the machine asks of an argument, as far as it is plain here. A name to which nothing in the
// unit gives a value is that of a function.
bool Translator::checkArgument(const Instruction& i) {
  const Site& site = siteOf(i);
  const Type value = of(i.a);
  bool isCallee = false;
  if (!site.isTarget && site.isSlot) {
    const Type base = of(site.base);
    isCallee = base.held == Held::other && !base.isChanged && mustNotBeArray(site.base);
  }
  if (site.row || isCallee) return value.isScalar() || value.isArray();
  return (value.held == Held::real || value.held == Held::integer) && !i.c;
}

// ---- Loops

bool Translator::forRange(const Instruction& i) {
  bool isWhole = true;
  for (int32_t k = 0; k < i.c; ++k) {
    const Type type = of(i.b + k);
    if (type.held != Held::real && type.held != Held::integer) return false;
    if (k + 1 < i.c) isWhole = isWhole && type.isSurelyWhole();
  }
  for (int32_t k = 0; k < 4; ++k) {
    if (!define(i.a + k, native::real(isWhole || k > 1))) return false;
  }
  return make([&] {
    const Xmm first = asReal(i.b), last = asReal(i.b + i.c - 1), start = newReal(), count = newReal();
    const Xmm step = i.c == 3 ? asReal(i.b + 1) : constant(1);
    callCpp(&rangeCount, count, first, step, last);
    cc_.vucomisd(count, memory(0));
    cc_.jb(exit());
    cc_.vmovapd(start, first);  // the state may lie where the operands were
    setReal(i.a + 1, step);
    setReal(i.a, start);
    setReal(i.a + 2, count);
    cc_.vmovsd(real(i.a + 3), memory(0));
  });
}

bool Translator::rangeStep(const Instruction& i) {
  for (int32_t k = 0; k < 4; ++k) {
    if (of(i.a + k).held != Held::real) return false;
  }
  return make([&] {
    const Label past = cc_.newLabel();
    const Xmm k = real(i.a + 3), value = newReal();
    cc_.vucomisd(real(i.a + 2), k);
    cc_.jbe(past);
    cc_.vmulsd(value, k, real(i.a + 1));
    cc_.vaddsd(real(i.b), value, real(i.a));
    cc_.vaddsd(k, k, memory(1));
    jumpTo(i);
    cc_.bind(past);
  });
}

// Where the array of a loop ends the register code lets it go.
bool Translator::arrayStep(const Instruction& i) {
  const Type type = of(i.a);
  if (!type.isArray() || type.element == Kind::Complex || of(i.a + 1).held != Held::real) return false;
  return make([&] {
    const int32_t array = arrayAt(i.a);
    const Xmm round = real(i.a + 1), value = real(i.b);
    const Label past = cc_.newLabel();
    Gp at = newWhole();
    cc_.vcvttsd2si(at, round);
    cc_.cmp(at, arrayWord(array, Layout::kCount));
    cc_.jae(isUnit() ? past : exit());
    const Mem element = elementAt(array, type.element, at);
    const Gp number = newWhole();
    switch (type.element) {
      case Kind::Double: cc_.vmovsd(value, element); break;
      case Kind::Char: cc_.mov(whole(i.b).r32(), element); break;
      case Kind::Logical: cc_.movzx(number, element); break;
      default: cc_.mov(number, element);
    }
    if (type.element == Kind::Logical || type.element == Kind::Int) {
      cc_.vxorpd(value, value, value);
      cc_.vcvtsi2sd(value, value, number);
    }
    cc_.vaddsd(round, round, memory(1));
    jumpTo(i);
    cc_.bind(past);
  });
}

bool Translator::takeJump(const Instruction& i) {
  if (i.op == Op::rangeStep) {
    return define(i.b, native::real(of(i.a).isWhole && of(i.a + 1).isWhole)) && define(i.a + 3, native::real(true));
  }
  if (i.op == Op::arrayStep) {
    const Kind kind = of(i.a).element;
    return define(i.a + 1, native::real(true)) &&
           define(i.b, kind == Kind::Char ? scalar(Held::character) : native::real(kind != Kind::Double));
  }
  return true;
}

}  // namespace kelo::native
