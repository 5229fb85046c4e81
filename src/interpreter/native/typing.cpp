#include "interpreter/native/typing.h"

#include "interpreter/native/intrinsics.h"
#include "interpreter/quick_calls.h"

namespace kelo::native {
namespace {

bool isComparison(BinaryOp op) { return op >= BinaryOp::eqeq && op <= BinaryOp::gt; }
bool isSum(BinaryOp op) { return op == BinaryOp::plus || op == BinaryOp::minus; }
bool isProduct(BinaryOp op) { return op == BinaryOp::mult || op == BinaryOp::dmult; }
bool isQuotient(BinaryOp op) { return op == BinaryOp::mrdivide || op == BinaryOp::rdivide; }

}  // namespace

Held meeting(const Type& a, const Type& b) {
  if (a.isReal() && b.isReal()) return Held::real;
  if (a.held == Held::integer && b.held == Held::integer) return Held::integer;
  if (a.held == Held::integer && b.held == Held::real) return Held::real;
  if (a.held == Held::real && b.held == Held::integer) return Held::real;
  const bool isComplexA = a.held == Held::complex, isComplexB = b.held == Held::complex;
  if ((isComplexA && (isComplexB || b.isReal())) || (isComplexB && a.isReal())) return Held::complex;
  return Held::other;
}

bool Typing::isShared(int32_t lane) const {
  for (const Type& type : state_) {
    if (type.held == Held::alias && type.source == lane) return true;
  }
  return false;
}

bool Typing::define(int32_t reg, Type type) {
  const int32_t lane = graph_.laneOf(reg);
  if (lane < 0 || isShared(lane)) return false;
  type.isChanged = true;
  state_[static_cast<size_t>(lane)] = type;
  return true;
}

// A temporary may stand for an array without holding it.
bool Typing::copy(int32_t to, int32_t from) {
  Type type = of(from);
  if (type.isScalar()) return define(to, type);
  if (!type.isArray() || to < graph_.code().slotCount()) return false;
  const int32_t lane = graph_.arrayLane(state_, from);
  type = state_[static_cast<size_t>(lane)];
  type.held = Held::alias;
  type.source = static_cast<int16_t>(lane);
  type.isWritable = false;
  return define(to, type);
}

// A character is looked at when it becomes a number.
void Typing::setPlain(int32_t operand) {
  if (operand < 0) return;
  Type& type = state_[static_cast<size_t>(graph_.laneOf(operand))];
  if (type.held == Held::character) type.isPlain = true;
}

bool Typing::binary(const Instruction& i) {
  const auto op = static_cast<BinaryOp>(i.op);
  const Type a = of(i.b), b = of(i.c);
  const Held kind = meeting(a, b);
  if (kind == Held::other) return false;
  setPlain(i.b);
  setPlain(i.c);
  if (kind == Held::complex) {
    if (op == BinaryOp::eqeq || op == BinaryOp::neq) return define(i.a, scalar(Held::logical));
    return (isSum(op) || isProduct(op) || isQuotient(op)) && define(i.a, scalar(Held::complex));
  }
  if (isComparison(op)) return define(i.a, scalar(Held::logical));
  if (kind == Held::integer) return isSum(op) && define(i.a, scalar(Held::integer));
  if (op == BinaryOp::and_ || op == BinaryOp::or_) return define(i.a, scalar(Held::logical));
  return define(i.a, real((isSum(op) || isProduct(op)) && a.isSurelyWhole() && b.isSurelyWhole()));
}

bool Typing::unary(const Instruction& i) {
  const Type x = of(i.b);
  switch (i.op) {
    case Op::unaryPlus: return x.isScalar() && copy(i.a, i.b);
    case Op::unaryMinus: return (x.held == Held::real || x.held == Held::complex) && define(i.a, x);
    default: return (x.held == Held::real || x.held == Held::logical) && define(i.a, scalar(Held::logical));
  }
}

namespace {

bool hasNativeForm(QuickCall function) { return function < QuickCall::strcmp && function != QuickCall::ndims; }

}  // namespace

bool Typing::quickCall(const Instruction& i) {
  const Type x = of(i.b), y = of(i.c);
  const auto function = static_cast<QuickCall>(i.e);
  if (!hasNativeForm(function)) return false;
  switch (function) {
    case QuickCall::isempty: case QuickCall::numel: case QuickCall::length: case QuickCall::size: return sizeQuery(i);
    case QuickCall::toDouble:
      setPlain(i.b);
      return (x.isReal() || x.held == Held::integer) && define(i.a, real(x.isSurelyWhole()));
    case QuickCall::toChar:
      return x.held == Held::real && define(i.a, {.held = Held::character, .isPlain = true});
    case QuickCall::exclusiveOr: return x.isNumber() && y.isNumber() && define(i.a, scalar(Held::logical));
    case QuickCall::abs:
      if (x.held == Held::complex) return define(i.a, real(false));
      break;
    default: break;
  }
  if (!x.isNumber() || !y.isNumber()) return false;
  switch (function) {
    case QuickCall::ceil: case QuickCall::fix: case QuickCall::floor: case QuickCall::round:
      return define(i.a, real(true));
    case QuickCall::abs: case QuickCall::max: case QuickCall::min: case QuickCall::mod: case QuickCall::rem:
      return define(i.a, real(x.isSurelyWhole() && y.isSurelyWhole()));
    default: return define(i.a, real(false));
  }
}

// Of a size only its two lengths are asked here.
bool Typing::sizeQuery(const Instruction& i) {
  const Type x = of(i.b);
  const auto function = static_cast<QuickCall>(i.e);
  const bool asksLengths = function == QuickCall::length || function == QuickCall::size;
  if (!x.isScalar() && !(x.isArray() && (x.isMatrix || !asksLengths))) return false;
  if (function == QuickCall::size) {
    const bool isConstant = i.c < 0 && of(i.c).held == Held::real;
    const double d = isConstant ? graph_.code().constants[static_cast<size_t>(~i.c)].doubleScalar() : 0;
    if (d != 1 && d != 2) return false;
  }
  return define(i.a, scalar(function == QuickCall::isempty ? Held::logical : Held::integer));
}

bool Typing::builtin(const Instruction& i) {
  const Site& site = graph_.code().sites[static_cast<size_t>(i.d)];
  const Intrinsic* intrinsic = intrinsicOf(site);
  if (intrinsic == nullptr) return false;
  const auto argument = [&](int32_t k) { return of(site.first + k); };
  switch (intrinsic->form) {
    case Intrinsic::Form::real: return define(i.a, real(false));
    case Intrinsic::Form::logical: return define(i.a, scalar(Held::logical));
    case Intrinsic::Form::complex:
      return argument(0).isNumber() && argument(1).isNumber() && define(i.a, scalar(Held::complex));
    case Intrinsic::Form::realPart: case Intrinsic::Form::imaginaryPart:
      return argument(0).held == Held::complex && define(i.a, real(false));
    case Intrinsic::Form::conjugate: return argument(0).held == Held::complex && define(i.a, argument(0));
    case Intrinsic::Form::isNaN: return argument(0).held == Held::real && define(i.a, scalar(Held::logical));
  }
  return false;
}

// What the name means does not change: nobody but the unit itself could give it a value.
bool Typing::callUnit(const Instruction& i) {
  const Type base = of(i.b);
  if (base.held != Held::other || base.isChanged) return false;
  Kinds kinds;
  for (const int32_t operand : argumentsOf(graph_.code(), i)) {
    const Type type = of(operand);
    if (!isPassed(type)) return false;
    kinds.push_back(kindOf(type));
  }
  call_ = graph_.callOf(i, std::move(kinds));
  if (call_ < 0) return false;
  const KnownCall& known = graph_.calls()[static_cast<size_t>(call_)];
  const std::vector<Held>& results = graph_.resultsOf(known);
  const bool isAssigned = known.targets != std::vector<int32_t>{i.a};
  if (isAssigned ? known.targets.size() > results.size() : results.size() != 1) return false;
  for (size_t k = 0; k < known.targets.size(); ++k) {
    if (!define(known.targets[k], {.held = results[k]})) return false;
  }
  if (isAssigned) length_ = 2;
  return true;
}

// ---- Elements

// A subscript that passes is a whole number from then on.
bool Typing::isSubscript(int32_t operand) {
  const Type type = of(operand);
  if (type.held != Held::real && type.held != Held::integer) return false;
  if (operand >= 0 && type.held == Held::real) state_[static_cast<size_t>(graph_.laneOf(operand))].isWhole = true;
  return true;
}

bool Typing::index(int32_t result, int32_t array, std::initializer_list<int32_t> subscripts) {
  const Type type = of(array);
  if (!type.isArray() || (subscripts.size() > 1 && !type.isMatrix)) return false;
  for (const int32_t each : subscripts) {
    if (!isSubscript(each)) return false;
  }
  switch (type.element) {
    case Kind::Double: return define(result, real(false));
    case Kind::Int: return define(result, scalar(Held::integer));
    case Kind::Logical: return define(result, scalar(Held::logical));
    case Kind::Char: return define(result, scalar(Held::character));
    case Kind::Complex: return define(result, scalar(Held::complex));
  }
  return false;
}

bool Typing::store(int32_t target, std::initializer_list<int32_t> subscripts, int32_t value) {
  const Type type = of(target), given = of(value);
  if (type.held != Held::array || !type.isWritable || isShared(graph_.laneOf(target))) return false;
  if (subscripts.size() > 1 && !type.isMatrix) return false;
  for (const int32_t each : subscripts) {
    if (!isSubscript(each)) return false;
  }
  switch (type.element) {
    case Kind::Double: return given.held == Held::real;
    case Kind::Int: return given.held == Held::integer;
    case Kind::Logical: return given.held == Held::logical;
    case Kind::Char: return given.held == Held::character;
    case Kind::Complex: return given.held == Held::complex;
  }
  return false;
}

Extent extentOf(const LoopGraph& graph, const State& state, const Instruction& i) {
  if (i.d < 0) return Extent::none;
  const Site& site = graph.code().sites[static_cast<size_t>(i.d)];
  if (site.isChain) return Extent::none;
  const Type base = graph.typeOf(state, site.base);
  if (base.isScalar()) return Extent::one;
  if (!base.isArray()) return Extent::none;
  if (site.count == 1) return Extent::count;
  if (site.count != 2 || !base.isMatrix) return Extent::none;
  return i.b == 0 ? Extent::rows : Extent::columns;
}

// Whether a site calls a function: nothing in the unit gives the name a value.
bool Typing::isCallee(const Site& site) const {
  if (site.isTarget || !site.isSlot) return false;
  const Type base = of(site.base);
  return base.held == Held::other && !base.isChanged && graph_.mustNotBeArray(site.base);
}

// What the machine asks of an argument, as far as it is plain here.
bool Typing::checkArgument(const Instruction& i) const {
  const Site& site = graph_.code().sites[static_cast<size_t>(i.d)];
  const Type value = of(i.a);
  if (site.row || isCallee(site)) return value.isScalar() || value.isArray();
  return (value.held == Held::real || value.held == Held::integer) && !i.c;
}

bool hasNativeForm(const Code& code, const Instruction& i) {
  if (i.op <= Op::not_ || (i.op >= Op::jump && i.op <= Op::rangeStep)) return true;
  switch (i.op) {
    case Op::begin: case Op::poll: case Op::move: case Op::loadName: case Op::assign: case Op::firstOf:
    case Op::checkElement: case Op::checkRange: case Op::checkTarget: case Op::index1: case Op::index2:
    case Op::index: case Op::call: case Op::store1: case Op::store2: case Op::endOf: case Op::checkExtent:
    case Op::checkArgument: case Op::checkSwitch: case Op::caseJump: case Op::arrayStep:
      return true;
    case Op::assignList: return i.flag == 0;
    case Op::appendRow: return i.c == 1;
    case Op::quickCall: return hasNativeForm(static_cast<QuickCall>(i.e));
    case Op::builtin: return intrinsicOf(code.sites[static_cast<size_t>(i.d)]) != nullptr;
    default: return false;
  }
}

bool Typing::step(const Instruction& i) {
  if (i.op <= Op::or_) return binary(i);
  switch (i.op) {
    case Op::unaryPlus: case Op::unaryMinus: case Op::not_: return unary(i);
    case Op::begin: case Op::poll: case Op::jump: return true;
    case Op::move: case Op::loadName: case Op::assign: return copy(i.a, i.b);
    case Op::firstOf: return i.a == i.b && of(i.b).held != Held::other;
    case Op::checkElement: case Op::checkRange: return of(i.b).held != Held::other;
    case Op::checkTarget: return of(i.a).held != Held::other;
    case Op::index1: return of(i.b).isArray() ? index(i.a, i.b, {i.c}) : callUnit(i);
    case Op::index2: return of(i.b).isArray() ? index(i.a, i.b, {i.c, i.e}) : callUnit(i);
    case Op::index: case Op::call: return callUnit(i);
    case Op::returnFunction: return graph_.giveResults(state_, graph_.code().outputs);
    case Op::returnValue: return graph_.giveResults(state_, {&i.b, 1});
    case Op::store1: return store(i.a, {i.b}, i.c);
    case Op::store2: return store(i.a, {i.b, i.c}, i.e);
    case Op::appendRow: {
      const Type row = of(i.a);
      return i.c == 1 && row.held == Held::array && row.element == Kind::Double && row.isWritable && row.isMatrix &&
             !isShared(graph_.laneOf(i.a)) && of(i.b).held == Held::real;
    }
    case Op::endOf:
      return extentOf(graph_, state_, i) != Extent::none && define(i.a, scalar(Held::integer));
    case Op::checkExtent: return extentOf(graph_, state_, i) != Extent::none;
    case Op::checkArgument: return checkArgument(i);
    case Op::quickCall: return quickCall(i);
    case Op::builtin: return builtin(i);
    case Op::checkSwitch: return of(i.b).isScalar();
    case Op::caseJump: {
      const Held kind = meeting(of(i.b), of(i.c));
      setPlain(i.b);
      setPlain(i.c);
      return kind == Held::real || kind == Held::integer;
    }
    case Op::jumpOnTruth: return of(i.b).isNumber();
    case Op::jumpOnEqual: case Op::jumpOnUnequal: case Op::jumpOnLe: case Op::jumpOnLt: case Op::jumpOnGe:
    case Op::jumpOnGt: {
      const Held kind = meeting(of(i.b), of(i.c));
      setPlain(i.b);
      setPlain(i.c);
      return kind == Held::real || kind == Held::integer;
    }
    case Op::forRange: {
      bool isWhole = true;
      for (int32_t k = 0; k < i.c; ++k) {
        const Type type = of(i.b + k);
        if (type.held != Held::real && type.held != Held::integer) return false;
        if (k + 1 < i.c) isWhole = isWhole && type.isSurelyWhole();
      }
      return define(i.a, real(isWhole)) && define(i.a + 1, real(isWhole)) && define(i.a + 2, real(true)) &&
             define(i.a + 3, real(true));
    }
    case Op::rangeStep: {
      for (int32_t k = 0; k < 4; ++k) {
        if (of(i.a + k).held != Held::real) return false;
      }
      return true;
    }
    case Op::arrayStep: return of(i.a).isArray() && of(i.a).element != Kind::Complex && of(i.a + 1).held == Held::real;
    default: return false;
  }
}

bool Typing::takeJump(const Instruction& i) {
  if (i.op == Op::rangeStep) {
    return define(i.b, real(of(i.a).isWhole && of(i.a + 1).isWhole)) && define(i.a + 3, real(true));
  }
  if (i.op == Op::arrayStep) {
    const Kind kind = of(i.a).element;
    if (!define(i.a + 1, real(true))) return false;
    return define(i.b, kind == Kind::Char ? scalar(Held::character) : real(kind != Kind::Double));
  }
  return true;
}

}  // namespace kelo::native
