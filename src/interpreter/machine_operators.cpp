// Operators, ranges, brackets, conditions and loops over arrays, for operands of any kind.
#include <algorithm>

#include <fmt/format.h>

#include "frontend/node_text.h"
#include "grammar/kelo_node.h"
#include "interpreter/environment.h"
#include "interpreter/machine.h"
#include "interpreter/machine_fast.h"
#include "interpreter/quick_calls.h"
#include "linear/linear.h"
#include "messages/catalogue/interpreter.h"
#include "messages/catalogue/operators.h"
#include "messages/catalogue/values.h"

namespace kelo {
namespace {

// The operator as typed.
std::string operatorText(KeloNode& node) {
  for (auto* child : node.children) {
    if (auto* leaf = dynamic_cast<antlr4::tree::TerminalNode*>(child)) return leaf->getText();
  }
  return "";
}

bool allTrue(const LogicalArray& array) {
  for (const bool element : array.values()) {
    if (!element) return false;
  }
  return true;
}

// One element of a loop's array: a double, a complex number where the element is not real, or a
// character.
Storable loopElement(const NumericArray& array, int64_t k) {
  switch (array.kind()) {
    case Kind::Double: return Storable(array.asDouble()[k]);
    case Kind::Int: return Storable(static_cast<double>(array.asInt()[k]));
    case Kind::Logical: return Storable(array.asLogical()[k] ? 1.0 : 0.0);
    case Kind::Char: return CharArray(array.asChar()[k]);
    case Kind::Complex: break;
  }
  const ComplexDouble z = array.asComplex()[k];
  if (z.imaginary == 0) return Storable(z.real);
  return ComplexDoubleArray(z);
}

// A matrix of doubles that takes some time to be transposed.
bool isLargeMatrix(const Storable& value) {
  constexpr int64_t kMany = 10000;
  const NumericArray* array = value.numeric();
  return array && array->is(Kind::Double) && array->numElements() >= kMany && array->size().isMatrix() &&
         !array->size().isVector();
}

}  // namespace

bool Machine::binary(const Instruction& i, BinaryOp op, Storable* result) {
  KeloNode& place = placeOf(i);
  if (at(i.b).isTransposed() || at(i.c).isTransposed()) return productOfTransposed(i, result);
  if (!at(i.b).isNumeric() || !at(i.c).isNumeric()) {
    return fail(place, fmt::format(text::kBinaryNotNumeric, operatorText(place)));
  }
  Storable left = take(i.b), right = i.c == i.b ? left : take(i.c);
  if (fewDoubles(op, left, right, result) || fewCompared(op, left, right, result)) return true;
  *result = kelo::binary(op, std::move(*left.numeric()), std::move(*right.numeric()),
                         [&](std::string text) { warn(place, std::move(text)); });
  return true;
}

// A product of which a transpose is a factor.
bool Machine::productOfTransposed(const Instruction& i, Storable* result) {
  KeloNode& place = placeOf(i);
  const auto factor = [&](int32_t operand) -> std::optional<Factor> {
    Storable value = take(operand);
    if (value.isTransposed()) return Factor{value.takeTransposed(), true};
    if (!value.isNumeric()) return std::nullopt;
    return Factor{std::move(*value.numeric())};
  };
  std::optional<Factor> left = factor(i.b), right = factor(i.c);
  if (!left || !right) return fail(place, fmt::format(text::kBinaryNotNumeric, operatorText(place)));
  *result = mtimes(std::move(*left), std::move(*right));
  return true;
}

bool Machine::unary(const Instruction& i, UnaryOp op) {
  KeloNode& place = placeOf(i);
  if (!at(i.b).isNumeric()) return fail(place, fmt::format(text::kUnaryNotNumeric, operatorText(place)));
  Storable operand = take(i.b);
  reg(i.a) = kelo::unary(op, std::move(*operand.numeric()));
  return true;
}

bool Machine::transpose(const Instruction& i) {
  if (!at(i.b).isArray()) return fail(placeOf(i), text::kTransposeOfNonArray);
  if (i.flag && isLargeMatrix(at(i.b))) {
    Storable matrix = take(i.b);
    reg(i.a) = Storable::transposed(std::move(*matrix.numeric()).take<double>());
    return true;
  }
  reg(i.a) = kelo::transpose(take(i.b), i.c != 0);
  return true;
}

// ---- Ranges

bool Machine::checkRange(const Instruction& i) {
  return reg(i.b).isNumeric() || fail(placeOf(i), text::kRangeOperands);
}

bool Machine::rangeFrom(const Instruction& i, Range* range) {
  for (int32_t k = 0; k < i.c; ++k) {
    if (!reg(i.b + k).isNumeric()) return fail(placeOf(i), text::kRangeOperands);
  }
  const NumericArray* step = i.c == 3 ? reg(i.b + 1).numeric() : nullptr;
  *range = rangeOf(*reg(i.b).numeric(), step, *reg(i.b + i.c - 1).numeric());
  for (int32_t k = 0; k < i.c; ++k) reg(i.b + k).clear();
  return true;
}

bool Machine::range(const Instruction& i) {
  Range range;
  if (!rangeFrom(i, &range)) return false;
  reg(i.a) = range.elements();
  return true;
}

// ---- Brackets

bool Machine::checkElement(const Storable& value, KeloNode& place) {
  const auto isArray = [](const Storable& each) { return each.isArray(); };
  const bool areArrays =
      value.isList() ? std::all_of(value.list().begin(), value.list().end(), isArray) : value.isArray();
  return areArrays || fail(place, text::kCatenatesNonArray);
}

namespace {

// Rows and scalars of one kind side by side, and empty arrays, which count for nothing. They are
// used up.
template <class T>
void joinRowsOf(Storable* values, int32_t count, int64_t length, Storable* result) {
  TypedArray<T> row = TypedArray<T>::uninitialized(SizeVector(1, length));
  T* to = row.writable();
  for (Storable* value = values; value < values + count; ++value) {
    if (!value->isEmpty()) {
      const TypedArray<T>& piece = value->numeric()->as<T>();
      to = std::copy_n(piece.data(), piece.numElements(), to);
    }
    value->letGo();
  }
  *result = std::move(row);
}

bool joinPlainRows(Storable* values, int32_t count, Storable* result) {
  int64_t length = 0;
  std::optional<Kind> kind;
  for (int32_t k = 0; k < count; ++k) {
    const NumericArray* piece = values[k].numeric();
    if (!piece) return false;
    if (piece->isEmpty()) continue;
    if (!piece->size().isRow() || piece->kind() != kind.value_or(piece->kind())) return false;
    kind = piece->kind();
    length += piece->numElements();
  }
  if (count < 2 || !kind) return false;
  switch (*kind) {
    case Kind::Double: joinRowsOf<double>(values, count, length, result); break;
    case Kind::Int: joinRowsOf<int64_t>(values, count, length, result); break;
    case Kind::Logical: joinRowsOf<bool>(values, count, length, result); break;
    case Kind::Complex: joinRowsOf<ComplexDouble>(values, count, length, result); break;
    case Kind::Char: joinRowsOf<Character>(values, count, length, result); break;
  }
  return true;
}

}  // namespace

// d: whether the element is the only one, which may be anything.
bool Machine::joinRow(const Instruction& i) {
  Storable* values = frame().base + i.b;
  if (i.d && values->isValue()) {
    if (i.a != i.b) reg(i.a) = std::move(*values);
    return true;
  }
  if (joinPlainRows(values, i.c, &reg(i.a))) return true;
  std::vector<Storable> row;
  for (int32_t k = 0; k < i.c; ++k) {
    if (!checkElement(values[k], placeOf(i))) return false;
    if (values[k].isList()) std::move(values[k].list().begin(), values[k].list().end(), std::back_inserter(row));
    else row.push_back(std::move(values[k]));
  }
  reg(i.a) = catenate(std::span(row), 2);
  return true;
}

namespace {

// Adds a row of the same kind, or a scalar, to a row that nobody else holds.
template <class T>
void append(TypedArray<T>& row, const TypedArray<T>& more) {
  const int64_t before = row.numElements(), count = more.numElements();
  if (row.appendInPlace(more.data(), count)) return;
  row.resizeVector(SizeVector(1, before + count));
  std::copy_n(more.data(), count, row.writable() + before);
}

// Whether the values can be added to the row where it lies.
bool canAppend(const NumericArray& row, const Storable* values, int32_t count) {
  if (!row.isUnshared() || row.isEmpty() || !row.size().isRow()) return false;
  for (const Storable* each = values; each < values + count; ++each) {
    const NumericArray* value = each->numeric();
    if (!value || !value->is(row.kind()) || value->isEmpty() || !value->size().isRow()) return false;
  }
  return true;
}

void appendInPlace(NumericArray& row, const NumericArray& more) {
  switch (row.kind()) {
    case Kind::Double: return append(row.as<double>(), more.asDouble());
    case Kind::Int: return append(row.as<int64_t>(), more.asInt());
    case Kind::Logical: return append(row.as<bool>(), more.asLogical());
    case Kind::Complex: return append(row.as<ComplexDouble>(), more.asComplex());
    case Kind::Char: return append(row.as<Character>(), more.asChar());
  }
}

}  // namespace

// OPTIMIZATION: one more element behind a row costs the same however long the row is.
bool Machine::appendRow(const Instruction& i) {
  Storable& variable = reg(i.a);
  if (variable.isNumeric() && canAppend(*variable.numeric(), &reg(i.b), i.c)) {
    for (int32_t k = 0; k < i.c; ++k) appendInPlace(*variable.numeric(), *reg(i.b + k).numeric());
    return true;
  }
  if (i.c == 1 && variable.isNumeric() && variable.isEmpty() && reg(i.b).isArray() && !reg(i.b).isEmpty()) {
    variable = std::move(reg(i.b));  // nothing stands before it
    return true;
  }
  std::vector<Storable> row{variable};
  for (int32_t k = 0; k < i.c; ++k) {
    Storable& value = reg(i.b + k);
    if (!checkElement(value, placeOf(i))) return false;
    if (value.isList()) std::move(value.list().begin(), value.list().end(), std::back_inserter(row));
    else row.push_back(std::move(value));
  }
  variable = catenate(std::span(row), 2);
  return true;
}

bool Machine::joinRows(const Instruction& i) {
  std::vector<Storable> rows;
  for (int32_t k = 0; k < i.c; ++k) rows.push_back(std::move(reg(i.b + k)));
  reg(i.a) = catenate(std::span(rows), 1);
  return true;
}

// ---- Conditions

// Whether every element is true. NOTE: intended: an empty array counts as true.
bool Machine::isTrue(const Storable& value, const char* notNumeric, KeloNode& place, bool* answer) {
  const NumericArray* numeric = value.numeric();
  if (numeric == nullptr) return fail(place, notNumeric);
  if (value.isDoubleScalar() && value.doubleScalar() == value.doubleScalar()) *answer = value.doubleScalar() != 0;
  else *answer = allTrue(numeric->toLogicalArray());
  return true;
}

bool Machine::truth(const Instruction& i, bool* answer) {
  return isTrue(take(i.b), textAt(i.c), placeOf(i), answer);
}

bool Machine::compare(const Instruction& i, BinaryOp op, bool* answer) {
  Storable result;
  return binary(i, op, &result) && isTrue(result, "", placeOf(i), answer);
}

// ---- Loops

bool Machine::forRange(const Instruction& i) {
  Range range;
  if (!rangeFrom(i, &range)) return false;
  reg(i.a).setNumber(range.first);
  reg(i.a + 1).setNumber(range.step);
  reg(i.a + 2).setNumber(static_cast<double>(range.count));
  reg(i.a + 3).setNumber(0);
  return true;
}

bool Machine::forArray(const Instruction& i) {
  if (!at(i.b).isNumeric()) return fail(placeOf(i), text::kLoopIndexNotNumeric);
  reg(i.a) = take(i.b);
  reg(i.a + 1).setNumber(0);
  return true;
}

// False at the end.
bool Machine::arrayStep(const Instruction& i) {
  const NumericArray& array = *reg(i.a).numeric();
  const auto k = static_cast<int64_t>(reg(i.a + 1).doubleScalar());
  if (k >= array.numElements()) {
    reg(i.a).clear();
    return false;
  }
  reg(i.b) = loopElement(array, k);
  reg(i.a + 1).setNumber(static_cast<double>(k + 1));
  return true;
}

// ---- switch

bool Machine::checkSwitch(const Instruction& i) {
  const NumericArray* array = at(i.b).numeric();
  return (array && (array->is(Kind::Char) || array->isScalar())) || fail(placeOf(i), textAt(i.c));
}

// Of others than two numbers or two plain characters.
bool Machine::caseMatches(const Instruction& i, bool* matches) {
  const Storable &value = at(i.b), &candidate = at(i.c);
  const NumericArray &a = *value.numeric(), &b = *candidate.numeric();
  if (a.is(Kind::Char) && b.is(Kind::Char)) {
    *matches = sameText(a.asChar(), b.asChar());
  } else if (a.size() != b.size()) {
    *matches = false;
  } else {
    *matches = allTrue(elementwise(BinaryOp::eqeq, a, b).asLogical());
  }
  return true;
}

}  // namespace kelo
