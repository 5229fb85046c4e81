// What the machine's loop does on the spot: operations on scalars and on single elements. Each says
// false, and has done nothing, where it is not that simple; what it does is what the general
// operation would do.
#pragma once

#include <cmath>

#include "interpreter/code.h"
#include "messages/fatal_fault.h"
#include "values/chains.h"
#include "values/indexing.h"

namespace kelo {

inline const Storable& operand(const Storable* registers, const Storable* constants, int32_t r) {
  return r >= 0 ? registers[r] : constants[~r];
}

constexpr uint32_t kPlainCharacters = 0x80;  // beyond them a character may be several numbers, or equal another

/// Whether two ASCII characters are the same one.
inline bool comparePlainCharacters(const Storable& a, const Storable& b, bool* areSame) {
  if (!a.isScalarOf(Kind::Char) || !b.isScalarOf(Kind::Char)) return false;
  const uint32_t x = a.numeric()->asChar().scalar().word(), y = b.numeric()->asChar().scalar().word();
  *areSame = x == y;
  return x < kPlainCharacters && y < kPlainCharacters;
}

/// Two scalars of any kinds but characters beyond ASCII. Matrices of one element are no different.
bool scalarBinary(BinaryOp op, const Storable& a, const Storable& b, Storable* result);

/// A sum, a difference, a product or a quotient, by element, of small matrices of doubles of one
/// size, or of one and a double, or the squares of one; in the memory of one of them where nobody
/// else holds that.
bool fewDoubles(BinaryOp op, Storable& left, Storable& right, Storable* result);

/// A comparison of small arrays of doubles of one size, or of one and a double; equality of small
/// texts in the same way.
bool fewCompared(BinaryOp op, const Storable& left, const Storable& right, Storable* result);

/// A subscript as a number, when it is a double or an integer.
inline bool subscriptNumber(const Storable& subscript, double* number) {
  if (subscript.isDoubleScalar()) [[likely]] {
    *number = subscript.doubleScalar();
    return true;
  }
  if (!subscript.isScalarOf(Kind::Int)) return false;
  *number = static_cast<double>(subscript.numeric()->asInt().scalar());
  return true;
}

/// A double and a count of the system's own, in whatever order, which meet as doubles.
inline bool areDoubleAndCount(const Storable& a, const Storable& b, double* x, double* y) {
  if (a.isDoubleScalar() ? !b.isScalarOf(Kind::Int) : !b.isDoubleScalar()) return false;
  return subscriptNumber(a, x) && subscriptNumber(b, y);
}

/// a:b of whole numbers, not large, with one element or more.
inline bool plainRange(const Storable& a, const Storable& b, double* first, double* count) {
  constexpr double kMost = 1e9;
  double last;
  if (!subscriptNumber(a, first) || !subscriptNumber(b, &last)) return false;
  *count = last - *first + 1;
  return *first >= -kMost && last <= kMost && *count >= 1 && std::trunc(*first) == *first && std::trunc(last) == last;
}

/// The element at a position. REQUIRES: it is there
inline void elementAt(const NumericArray& array, int64_t position, Storable* result) {
  switch (array.kind()) {
    case Kind::Double: return result->setNumber(array.asDouble()[position]);
    case Kind::Logical: return result->setLogical(array.asLogical()[position]);
    case Kind::Char: *result = CharArray(array.asChar()[position]); return;
    case Kind::Int: *result = IntArray(array.asInt()[position]); return;
    case Kind::Complex: *result = ComplexDoubleArray(array.asComplex()[position]); return;
  }
}

inline bool readScalar(const Storable& array, const Storable& subscript, Storable* result) {
  double i;
  if (!array.isNumeric() || !subscriptNumber(subscript, &i)) return false;
  const NumericArray& numbers = *array.numeric();
  const int64_t position = plainPosition(i, numbers.numElements());
  if (position < 0) return false;
  elementAt(numbers, position, result);
  return true;
}

inline bool readScalar(const Storable& array, const Storable& row, const Storable& column, Storable* result) {
  double i, j;
  if (!array.isNumeric() || !subscriptNumber(row, &i) || !subscriptNumber(column, &j)) return false;
  const NumericArray& numbers = *array.numeric();
  const int64_t position = plainPosition(numbers.size(), i, j);
  if (position < 0) return false;
  elementAt(numbers, position, result);
  return true;
}

/// Writes a scalar of the array's own kind. REQUIRES: the position is there
inline bool putScalar(NumericArray& array, int64_t position, const Storable& value) {
  if (!value.isScalarOf(array.kind())) return false;
  putElement(array, position, *value.numeric());
  return true;
}

/// x(end + 1) = scalar, of the array's own kind, on a vector or nothing.
bool appendElement(NumericArray& array, const NumericArray& scalar);

/// A write just past the end of a vector appends.
inline bool storeScalar(Storable& target, const Storable& subscript, const Storable& value) {
  double i;
  if (!target.isNumeric() || !subscriptNumber(subscript, &i)) return false;
  NumericArray& array = *target.numeric();
  const int64_t position = plainPosition(i, array.numElements());
  if (position >= 0) return putScalar(array, position, value);
  return i == static_cast<double>(array.numElements()) + 1 && value.isScalarOf(array.kind()) &&
         appendElement(array, *value.numeric());
}

inline bool storeScalar(Storable& target, const Storable& row, const Storable& column, const Storable& value) {
  double i, j;
  if (!target.isNumeric() || !subscriptNumber(row, &i) || !subscriptNumber(column, &j)) return false;
  NumericArray& array = *target.numeric();
  const int64_t position = plainPosition(array.size(), i, j);
  return position >= 0 && putScalar(array, position, value);
}

/// An element of a structure array, or elements side by side of a vector or a matrix, or those that
/// a short list or mask selects. A large piece is left to the general operation, which may show it
/// without a copy.
bool readPiece(const Storable& array, const Storable& subscript, Storable* result);

/// Overwrites an element of a structure array with a structure of the same fields, or adds it at the
/// end of a row.
bool writePiece(Storable& array, const Storable& subscript, const Storable& value);

/// Rows and columns of a matrix by two subscripts, each a number, a range or a colon. A large piece
/// is left to the general operation.
bool readPiece(const Storable& array, const Storable& row, const Storable& column, Storable* result);

/// Overwrites such a piece with a number, or with a matrix of its size.
bool writePiece(Storable& array, const Storable& row, const Storable& column, const Storable& value);

/// Where a field stands; -1 where there is none. The instruction remembers it.
inline int64_t fieldIndex(const StructArray& array, Name field, const Instruction& instruction) {
  int64_t index = instruction.flag;
  if (index < array.fieldCount() && array.fields()[static_cast<size_t>(index)] == field) return index;
  index = array.fieldIndex(field);
  if (index >= 0 && index < UINT16_MAX) const_cast<Instruction&>(instruction).flag = static_cast<uint16_t>(index);
  return index;
}

/// The same of a scalar structure.
inline int64_t plainFieldIndex(const StructArray* array, Name field, const Instruction& instruction) {
  return array == nullptr || !array->size().isScalar() ? -1 : fieldIndex(*array, field, instruction);
}

inline const Storable* plainFieldAt(const Storable& value, Name field, const Instruction& instruction) {
  const int64_t index = plainFieldIndex(value.structure(), field, instruction);
  return index < 0 ? nullptr : &value.structure()->value(0, index);
}

/// The same for writing: no other holder of the structure sees it.
inline Storable* writableFieldAt(Storable& value, Name field, const Instruction& instruction) {
  const int64_t index = plainFieldIndex(value.structure(), field, instruction);
  return index < 0 ? nullptr : &value.structure()->writableValue(0, index);
}

/// The field of one element of a structure array; null where that takes a closer look.
inline const Storable* plainElementField(const Storable& array, const Storable& subscript, Name field,
                                         const Instruction& instruction) {
  const StructArray* structures = array.structure();
  double number;
  if (structures == nullptr || !subscriptNumber(subscript, &number)) return nullptr;
  const int64_t position = plainPosition(number, structures->numElements());
  const int64_t index = position < 0 ? -1 : fieldIndex(*structures, field, instruction);
  return index < 0 ? nullptr : &structures->value(position, index);
}

inline bool readPlainField(const Storable& value, Name field, const Instruction& instruction, Storable* result) {
  const Storable* found = plainFieldAt(value, field, instruction);
  if (found == nullptr) return false;
  *result = *found;
  return true;
}

/// What a row of fields leads to, through scalar structures alone.
inline bool readPath(const Storable& root, const std::vector<Name>& fields, Storable* result) {
  const Storable* at = &root;
  for (const Name field : fields) {
    at = plainField(*at, field);
    if (at == nullptr) return false;
  }
  *result = *at;
  return true;
}

/// Writes what a row of fields leads to, which no other holder of the structures sees.
inline bool writePath(Storable& root, const std::vector<Name>& fields, const Storable& value) {
  Storable* at = &root;
  for (const Name field : fields) {
    at = writablePlainField(*at, field);
    if (at == nullptr) return false;
  }
  *at = value;
  return true;
}

}  // namespace kelo
