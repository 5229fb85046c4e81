// Questions about the kind and shape of a value, and the conversions `double` and `logical`. A
// handle or a structure answers by its kind, and "no" where a question makes no sense for it.
#include <cmath>

#include <utf8proc.h>

#include "builtins/library.h"
#include "interpreter/reader.h"
#include "messages/catalogue/elementwise.h"
#include "values/comparison.h"
#include "values/elementwise.h"

namespace kelo::builtins {
namespace {

bool isKind(const Storable& value, Kind kind) { return value.isNumeric() && value.numeric()->is(kind); }

bool isChar(const Storable& v) { return isKind(v, Kind::Char); }
bool isLogical(const Storable& v) { return isKind(v, Kind::Logical); }
bool isNumericKind(const Storable& v) { return v.isNumeric() && !isChar(v) && !isLogical(v); }
bool isReal(const Storable& v) { return v.isNumeric() && !isKind(v, Kind::Complex); }
bool isStruct(const Storable& v) { return v.isStructure(); }
bool isEmpty(const Storable& v) { return v.isArray() && v.isEmpty(); }
bool isScalar(const Storable& v) { return v.isArray() && v.size().isScalar(); }
bool isRow(const Storable& v) { return v.isArray() && v.size().isRow(); }
bool isColumn(const Storable& v) { return v.isArray() && v.size().isColumn(); }
bool isMatrix(const Storable& v) { return v.isArray() && v.size().isMatrix(); }
/// One dimension of length 1 or more, the other of length 1: 1 x 0 is a row, but no vector. NOTE:
/// intended.
bool isVector(const Storable& v) { return v.isArray() && v.size().isVector() && v.numElements() >= 1; }

template <bool (*kAnswer)(const Storable& value)>
NodeValue question(Call& call) {
  return LogicalArray(kAnswer(call.arg(0)));
}

// Questions to each element.

template <class OfDouble, class OfComplex, class OfCharacter>
NodeValue eachElement(const Call& call, OfDouble ofDouble, OfComplex ofComplex, OfCharacter ofCharacter) {
  const NumericArray* a = call.arg(0).numeric();
  if (!a) return LogicalArray(false);
  switch (a->kind()) {
    case Kind::Double: return unaryLoop(a->asDouble(), ofDouble);
    case Kind::Complex: return unaryLoop(a->asComplex(), ofComplex);
    case Kind::Char: return unaryLoop(a->asChar(), ofCharacter);
    default: return LogicalArray(a->size(), false);
  }
}
constexpr auto kNever = [](auto) noexcept { return false; };

NodeValue isInf(Call& call) {
  return eachElement(
      call, [](double x) noexcept { return std::isinf(x); }, [](ComplexDouble z) noexcept { return z.hasInf(); },
      kNever);
}

/// NaN alone differs from itself.
NodeValue isNan(Call& call) {
  if (const NumericArray* a = call.arg(0).numeric(); a && a->is(Kind::Double)) {
    if (auto differs = comparedAtOnce(BinaryOp::neq, *a, *a)) return std::move(*differs);
  }
  return eachElement(
      call, [](double x) noexcept { return std::isnan(x); }, [](ComplexDouble z) noexcept { return z.hasNaN(); },
      kNever);
}

// No noexcept on these two: clusters are looked up in a table that belongs to this thread.
NodeValue isLetter(Call& call) {
  return eachElement(call, kNever, kNever, [](Character c) {
    const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(c.firstCodePoint()));
    return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO;
  });
}

NodeValue isSpace(Call& call) {
  return eachElement(call, kNever, kNever, [](Character c) {
    const char32_t code = c.firstCodePoint();
    return (code >= 9 && code <= 13) || utf8proc_category(static_cast<utf8proc_int32_t>(code)) == UTF8PROC_CATEGORY_ZS;
  });
}

// Conversions.

constexpr Wording kNumeric = {"A", "A", predicate::kNumericArray};

/// Complex numbers stay as they are: they hold doubles already.
NodeValue toDouble(Call& call) {
  NumericArray a = read::takeNumeric(call, 0, kNumeric);
  if (a.is(Kind::Complex)) return a;
  return std::move(a).toDoubleArray();
}

NodeValue toLogical(Call& call) { return read::numeric(call, 0, kNumeric).toLogicalArray(); }

// clang-format off
constexpr Builtin kKinds[] = {
    {"ischar",    question<isChar>,        {1, 1}, 1, "A",
     "Whether a value is a character array", "ischar('a')", {.inputs = text::kOneInputExactly}},
    {"iscolumn",  question<isColumn>,      {1, 1}, 1, "A",
     "Whether an array is a column", "iscolumn([1; 2])", {.inputs = text::kOneInputExactly}},
    {"isempty",   question<isEmpty>,       {1, 1}, 1, "A",
     "Whether an array has no elements", "isempty([])", {.inputs = text::kOneInputExactly}},
    {"islogical", question<isLogical>,     {1, 1}, 1, "A",
     "Whether a value is a logical array", "islogical(1 > 0)", {.inputs = text::kOneInputExactly}},
    {"ismatrix",  question<isMatrix>,      {1, 1}, 1, "A",
     "Whether an array has two dimensions", "ismatrix([1 2; 3 4])", {.inputs = text::kOneInputExactly}},
    {"isnumeric", question<isNumericKind>, {1, 1}, 1, "A",
     "Whether a value is an array of numbers, neither characters nor logicals", "isnumeric(5)",
     {.inputs = text::kOneInputExactly}},
    {"isreal",    question<isReal>,        {1, 1}, 1, "A",
     "Whether an array is not complex", "isreal(1+2i)", {.inputs = text::kOneInputExactly}},
    {"isrow",     question<isRow>,         {1, 1}, 1, "A",
     "Whether an array is a row", "isrow([1 2])", {.inputs = text::kOneInputExactly}},
    {"isscalar",  question<isScalar>,      {1, 1}, 1, "A",
     "Whether an array has exactly one element", "isscalar(5)", {.inputs = text::kOneInputExactly}},
    {"isstruct",  question<isStruct>,      {1, 1}, 1, "A",
     "Whether a value is a structure array", "isstruct(struct())", {.inputs = text::kOneInputExactly}},
    {"isvector",  question<isVector>,      {1, 1}, 1, "A",
     "Whether an array is a row or a column", "isvector([1 2])", {.inputs = text::kOneInputExactly}},
    {"isinf",     isInf,                   {1, 1}, 1, "A",
     "Which elements are infinite", "isinf([1 Inf])", {.inputs = text::kOneInputExactly}},
    {"isnan",     isNan,                   {1, 1}, 1, "A",
     "Which elements are not a number", "isnan([1 NaN])", {.inputs = text::kOneInputExactly}},
    {"isletter",  isLetter,                {1, 1}, 1, "A",
     "Which characters are letters", "isletter('a1')", {.inputs = text::kOneInputExactly}},
    {"isspace",   isSpace,                 {1, 1}, 1, "A",
     "Which characters are spaces", "isspace('a b')", {.inputs = text::kOneInputExactly}},

    {"double",    toDouble,                {1, 1}, 1, "A",
     "Converts logicals and characters to numbers", "double('abc')"},
    {"logical",   toLogical,               {1, 1}, 1, "A",
     "Converts numbers to logicals, true where not 0", "logical([2 0])"},
};
// clang-format on

}  // namespace

std::span<const Builtin> kindsTable() { return kKinds; }

}  // namespace kelo::builtins
