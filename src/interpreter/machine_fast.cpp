// Two scalars of kinds other than two doubles; small pieces of arrays.
#include "interpreter/machine_fast.h"

#include <algorithm>
#include <cmath>

namespace kelo {
namespace {

// A scalar as a double, where that says all of it.
bool realOf(const NumericArray& scalar, double* x) {
  switch (scalar.kind()) {
    case Kind::Double: *x = scalar.asDouble().scalar(); return true;
    case Kind::Logical: *x = scalar.asLogical().scalar() ? 1 : 0; return true;
    case Kind::Char: {
      const uint32_t word = scalar.asChar().scalar().word();
      *x = word;
      return word < kPlainCharacters;
    }
    default: return false;
  }
}

bool integers(BinaryOp op, int64_t a, int64_t b, Storable* result) {
  switch (op) {
    case BinaryOp::plus: *result = IntArray(checkedAdd(a, b)); return true;
    case BinaryOp::minus: *result = IntArray(checkedSubtract(a, b)); return true;
    case BinaryOp::eqeq: result->setLogical(a == b); return true;
    case BinaryOp::neq: result->setLogical(a != b); return true;
    case BinaryOp::le: result->setLogical(a <= b); return true;
    case BinaryOp::lt: result->setLogical(a < b); return true;
    case BinaryOp::ge: result->setLogical(a >= b); return true;
    case BinaryOp::gt: result->setLogical(a > b); return true;
    default: return false;
  }
}

bool complexNumbers(BinaryOp op, ComplexDouble a, ComplexDouble b, Storable* result) {
  switch (op) {
    case BinaryOp::plus: *result = ComplexDoubleArray(a + b); return true;
    case BinaryOp::minus: *result = ComplexDoubleArray(a - b); return true;
    case BinaryOp::mult: case BinaryOp::dmult: *result = ComplexDoubleArray(a * b); return true;
    case BinaryOp::rdivide: case BinaryOp::mrdivide: *result = ComplexDoubleArray(a / b); return true;
    case BinaryOp::eqeq: result->setLogical(a == b); return true;
    case BinaryOp::neq: result->setLogical(a != b); return true;
    default: return false;
  }
}

bool complexOf(const NumericArray& scalar, ComplexDouble* z) {
  if (scalar.is(Kind::Complex)) {
    *z = scalar.asComplex().scalar();
    return true;
  }
  z->imaginary = 0;
  if (!scalar.is(Kind::Int)) return realOf(scalar, &z->real);
  return false;
}

bool logic(BinaryOp op, double x, double y, Storable* result) {
  if (std::isnan(x) || std::isnan(y)) return false;
  result->setLogical(op == BinaryOp::and_ ? x != 0 && y != 0 : x != 0 || y != 0);
  return true;
}

bool reals(BinaryOp op, double x, double y, Storable* result) {
  double number;
  bool answer;
  if (op == BinaryOp::and_ || op == BinaryOp::or_) return logic(op, x, y, result);
  if (scalarArithmetic(op, x, y, &number)) result->setNumber(number);
  else if (scalarComparison(op, x, y, &answer)) result->setLogical(answer);
  else return false;
  return true;
}

}  // namespace

bool scalarBinary(BinaryOp op, const Storable& left, const Storable& right, Storable* result) {
  if (!left.isPlainScalar() || !right.isPlainScalar()) return false;
  const NumericArray &a = *left.numeric(), &b = *right.numeric();
  bool areSame;
  if ((op == BinaryOp::eqeq || op == BinaryOp::neq) && comparePlainCharacters(left, right, &areSame)) {
    result->setLogical(areSame == (op == BinaryOp::eqeq));
    return true;
  }
  double x, y;
  if (realOf(a, &x) && realOf(b, &y)) return reals(op, x, y, result);
  if (a.is(Kind::Int) && b.is(Kind::Int)) return integers(op, a.asInt().scalar(), b.asInt().scalar(), result);
  if (a.is(Kind::Int) && b.is(Kind::Double)) {
    return reals(op, static_cast<double>(a.asInt().scalar()), b.asDouble().scalar(), result);
  }
  if (b.is(Kind::Int) && a.is(Kind::Double)) {
    return reals(op, a.asDouble().scalar(), static_cast<double>(b.asInt().scalar()), result);
  }
  ComplexDouble z, w;
  return complexOf(a, &z) && complexOf(b, &w) && complexNumbers(op, z, w, result);
}

// ---- Small matrices

namespace {

template <class F>
void combineEach(const DoubleArray& left, const DoubleArray& right, double* out, int64_t count, F&& of) {
  const double *x = left.data(), *y = right.data();
  const int64_t dx = left.isScalar() ? 0 : 1, dy = right.isScalar() ? 0 : 1;
  for (int64_t k = 0; k < count; ++k) out[k] = of(x[k * dx], y[k * dy]);
}

bool isDouble(const Storable& value) { return value.isNumeric() && value.numeric()->is(Kind::Double); }

}  // namespace

bool fewDoubles(BinaryOp op, Storable& left, Storable& right, Storable* result) {
  constexpr int64_t kMost = 64;  // elements
  if (!isDouble(left) || !isDouble(right)) return false;
  DoubleArray &a = left.numeric()->as<double>(), &b = right.numeric()->as<double>();
  if (a.isScalar() && b.isScalar()) return false;
  const SizeVector& size = a.isScalar() ? b.size() : a.size();
  if (!size.isMatrix() || size.hasZeroLength() || size.numElements() > kMost) return false;
  const bool areEqual = !a.isScalar() && !b.isScalar();
  if (areEqual && a.size() != b.size()) return false;
  const bool isProduct = op == BinaryOp::dmult || (op == BinaryOp::mult && !areEqual);
  const bool isQuotient = op == BinaryOp::rdivide || (op == BinaryOp::mrdivide && b.isScalar());
  const bool isSquare = op == BinaryOp::dpower && b.isScalar() && b.scalar() == 2;
  if (op != BinaryOp::plus && op != BinaryOp::minus && !isProduct && !isQuotient && !isSquare) return false;
  DoubleArray* const own = !a.isScalar() && a.isUnshared() ? &a : !b.isScalar() && b.isUnshared() ? &b : nullptr;
  DoubleArray made = own ? DoubleArray(0.0) : DoubleArray::uninitialized(size);
  DoubleArray& target = own ? *own : made;
  double* const out = target.writable();
  const int64_t count = size.numElements();
  if (op == BinaryOp::plus) combineEach(a, b, out, count, [](double x, double y) { return x + y; });
  else if (op == BinaryOp::minus) combineEach(a, b, out, count, [](double x, double y) { return x - y; });
  else if (isProduct) combineEach(a, b, out, count, [](double x, double y) { return x * y; });
  else if (isSquare) combineEach(a, b, out, count, [](double x, double) { return x * x; });
  else combineEach(a, b, out, count, [](double x, double y) { return x / y; });
  *result = std::move(target);
  return true;
}

namespace {

template <class T, class F>
LogicalArray compareEach(const TypedArray<T>& left, const TypedArray<T>& right, F&& of) {
  const TypedArray<T>& many = left.isScalar() ? right : left;
  auto result = LogicalArray::uninitialized(many.size());
  bool* const out = result.writable();
  const T *x = left.data(), *y = right.data();
  const int64_t dx = left.isScalar() ? 0 : 1, dy = right.isScalar() ? 0 : 1;
  for (int64_t k = 0; k < many.numElements(); ++k) out[k] = of(x[k * dx], y[k * dy]);
  return result;
}

bool compareDoubles(BinaryOp op, const DoubleArray& a, const DoubleArray& b, Storable* result) {
  switch (op) {
    case BinaryOp::eqeq: *result = compareEach(a, b, [](double x, double y) { return x == y; }); return true;
    case BinaryOp::neq: *result = compareEach(a, b, [](double x, double y) { return x != y; }); return true;
    case BinaryOp::lt: *result = compareEach(a, b, [](double x, double y) { return x < y; }); return true;
    case BinaryOp::le: *result = compareEach(a, b, [](double x, double y) { return x <= y; }); return true;
    case BinaryOp::gt: *result = compareEach(a, b, [](double x, double y) { return x > y; }); return true;
    case BinaryOp::ge: *result = compareEach(a, b, [](double x, double y) { return x >= y; }); return true;
    default: return false;
  }
}

}  // namespace

bool fewCompared(BinaryOp op, const Storable& left, const Storable& right, Storable* result) {
  constexpr int64_t kMost = 64;  // elements
  if (op < BinaryOp::eqeq || op > BinaryOp::gt || !left.isNumeric() || !right.isNumeric()) return false;
  const NumericArray &a = *left.numeric(), &b = *right.numeric();
  if (a.kind() != b.kind() || a.isEmpty() || b.isEmpty()) return false;
  if (a.isScalar() ? b.isScalar() : !b.isScalar() && a.size() != b.size()) return false;
  if (std::max(a.numElements(), b.numElements()) > kMost) return false;
  if (a.is(Kind::Double)) return compareDoubles(op, a.asDouble(), b.asDouble(), result);
  if (!a.is(Kind::Char) || (op != BinaryOp::eqeq && op != BinaryOp::neq)) return false;
  const bool wanted = op == BinaryOp::eqeq;
  *result = compareEach(a.asChar(), b.asChar(), [=](Character x, Character y) { return (x == y) == wanted; });
  return true;
}

// ---- Pieces

bool appendElement(NumericArray& array, const NumericArray& scalar) {
  const SizeVector& size = array.size();
  const int64_t count = size.numElements();
  const bool isNothing = size.isMatrix() && size.rows() == 0 && size.columns() == 0;
  if (!size.isVector() && !isNothing) return false;
  if (count == 0) {
    array = scalar;
    return true;
  }
  const SizeVector longer = size.isRow() ? SizeVector(1, count + 1) : SizeVector(count + 1, 1);
  scalar.visit([&](const auto& element) {
    auto& vector = array.as<typename std::remove_cvref_t<decltype(element)>::Element>();
    vector.resizeVector(longer);
    vector.writable()[count] = element.scalar();
  });
  return true;
}

namespace {

constexpr int64_t kMostOfList = 64;  // subscripts

// Positions from 0 of the elements that a mask or a list of numbers selects; -1 where it is left to
// the general operation.
int64_t positionsOf(const NumericArray& subscript, int64_t extent, int64_t* positions) {
  const int64_t n = subscript.numElements();
  if (n > kMostOfList) return -1;
  int64_t count = 0;
  if (subscript.is(Kind::Logical)) {
    if (n > extent) return -1;
    const bool* selected = subscript.asLogical().data();
    for (int64_t k = 0; k < n; ++k) {
      positions[count] = k;
      count += selected[k];
    }
    return count;
  }
  if (!subscript.is(Kind::Double) || n == 0) return -1;
  const double* subscripts = subscript.asDouble().data();
  for (; count < n; ++count) {
    positions[count] = plainPosition(subscripts[count], extent);
    if (positions[count] < 0) return -1;
  }
  return count;
}

// A vector gives a vector that lies as it does; of a matrix the subscript decides.
bool readFew(const NumericArray& array, const NumericArray& subscript, Storable* result) {
  const SizeVector &size = array.size(), &shape = subscript.size();
  if (!shape.isVector() && !subscript.is(Kind::Logical)) return false;
  int64_t positions[kMostOfList];
  const int64_t count = positionsOf(subscript, array.numElements(), positions);
  if (count < 0) return false;
  const bool isRow = size.isRow() || (!size.isColumn() && shape.isRow());
  *result = array.visit([&](const auto& record) {
    using Record = std::remove_cvref_t<decltype(record)>;
    auto piece = Record::uninitialized(isRow ? SizeVector(1, count) : SizeVector(count, 1));
    auto* to = piece.writable();
    for (int64_t k = 0; k < count; ++k) to[k] = record.data()[positions[k]];
    return Storable(std::move(piece));
  });
  return true;
}

}  // namespace

bool readPiece(const Storable& array, const Storable& subscript, Storable* result) {
  constexpr int64_t kMost = 512;  // elements
  if (const StructArray* structures = array.structure()) {
    double number;
    if (!subscriptNumber(subscript, &number)) return false;
    const int64_t position = plainPosition(number, structures->numElements());
    if (position < 0) return false;
    *result = structures->element(position);
    return true;
  }
  if (array.isNumeric() && subscript.isNumeric()) return readFew(*array.numeric(), *subscript.numeric(), result);
  if (!subscript.isPositions()) return false;
  const EvenPositions positions = subscript.positions();
  const int64_t count = positions.count;
  if (positions.step != 1 || count > kMost || positions.first + count > array.numElements()) return false;
  const bool isColumn = array.size().isColumn();
  *result = array.numeric()->visit([&](const auto& record) {
    using Record = std::remove_cvref_t<decltype(record)>;
    auto piece = Record::uninitialized(isColumn ? SizeVector(count, 1) : SizeVector(1, count));
    std::copy_n(record.data() + positions.first, count, piece.writable());
    return Storable(std::move(piece));
  });
  return true;
}

namespace {

constexpr int64_t kMostOfMatrix = 512;  // elements of a piece

// A piece of a matrix, in positions from 0.
struct Block {
  struct Span {
    int64_t first = 0, step = 1, count = 0;
  };
  Span rows, columns;
  int64_t stride;  // rows of the matrix

  int64_t count() const { return rows.count * columns.count; }
  SizeVector size() const { return {rows.count, columns.count}; }
  template <class F>
  void forEach(F&& at) const {
    int64_t k = 0;
    for (int64_t c = 0; c < columns.count; ++c) {
      int64_t position = (columns.first + c * columns.step) * stride + rows.first;
      for (int64_t r = 0; r < rows.count; ++r, position += rows.step) at(position, k++);
    }
  }
};

bool spanOf(const Storable& subscript, int64_t extent, Block::Span* span) {
  double number;
  if (subscript.isColon()) {
    span->count = extent;
    return true;
  }
  if (subscript.isPositions()) {
    const EvenPositions positions = subscript.positions();
    *span = {positions.first, positions.step, positions.count};
    return positions.first < extent && positions.first + (span->count - 1) * span->step < extent;
  }
  if (!subscriptNumber(subscript, &number)) return false;
  *span = {plainPosition(number, extent), 1, 1};
  return span->first >= 0;
}

// Of two elements or more, but not many.
bool blockOf(const Storable& array, const Storable& row, const Storable& column, Block* block) {
  if (!array.isNumeric() || !array.size().isMatrix()) return false;
  block->stride = array.size().rows();
  if (!spanOf(row, block->stride, &block->rows)) return false;
  if (!spanOf(column, array.size().columns(), &block->columns)) return false;
  return block->rows.count <= kMostOfMatrix && block->columns.count <= kMostOfMatrix && block->count() > 1 &&
         block->count() <= kMostOfMatrix;
}

}  // namespace

bool readPiece(const Storable& array, const Storable& row, const Storable& column, Storable* result) {
  Block block;
  if (!blockOf(array, row, column, &block)) return false;
  *result = array.numeric()->visit([&](const auto& record) {
    auto piece = std::remove_cvref_t<decltype(record)>::uninitialized(block.size());
    const auto* from = record.data();
    auto* to = piece.writable();
    block.forEach([&](int64_t position, int64_t k) { to[k] = from[position]; });
    return Storable(std::move(piece));
  });
  return true;
}

bool writePiece(Storable& array, const Storable& row, const Storable& column, const Storable& value) {
  Block block;
  if (!value.isNumeric() || !blockOf(array, row, column, &block)) return false;
  NumericArray& target = *array.numeric();
  const NumericArray& given = *value.numeric();
  if (given.kind() != target.kind() || given.identity() == target.identity()) return false;
  if (!given.isScalar() && given.size() != block.size()) return false;
  given.visit([&](const auto& record) {
    using Element = typename std::remove_cvref_t<decltype(record)>::Element;
    Element* const to = target.as<Element>().writable();
    const Element* const from = record.data();
    const int64_t step = record.isScalar() ? 0 : 1;
    block.forEach([&](int64_t position, int64_t k) { to[position] = from[k * step]; });
  });
  return true;
}

bool writePiece(Storable& array, const Storable& subscript, const Storable& value) {
  double number;
  if (!array.isStructure() || !value.isStructure() || !subscriptNumber(subscript, &number)) return false;
  StructArray& target = *array.structure();
  const StructArray given = *value.structure();  // which may be the target
  if (!given.size().isScalar() || target.isEmpty() || !target.hasSameFields(given)) return false;
  const int64_t count = target.numElements();
  int64_t position = plainPosition(number, count);
  if (position < 0) {
    if (number != static_cast<double>(count) + 1 || !target.size().isRow()) return false;
    target.extend(SizeVector(1, count + 1));
    position = count;
  }
  target.setElement(position, given, 0);
  return true;
}

}  // namespace kelo
