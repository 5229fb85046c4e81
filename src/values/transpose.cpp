// Transposition: an exchange of the two dimensions, and for complex numbers, where asked for, of
// the signs of the imaginary parts.
#include "messages/catalogue/operators.h"
#include "messages/message.h"
#include "values/element_view.h"
#include "values/operators.h"

namespace kelo {
namespace {

Storable reshaped(NumericArray array, const SizeVector& size) {
  return std::move(array).visit([&](auto&& record) { return Storable(std::move(record).reshaped(size)); });
}

}  // namespace

// A vector keeps the order of its elements.
Storable transpose(Storable value, bool conjugate) {
  if (!value.isArray()) throw problem(text::kTransposeOfNonArray);
  if (!value.size().isMatrix()) throw problem(text::kTransposeOfManyDimensions);
  if (value.isDoubleScalar()) return value;
  const int64_t rows = value.size().rows();
  const int64_t columns = value.size().columns();
  const SizeVector turned(columns, rows);
  const bool isVector = value.isNumeric() && value.size().isVector();
  Storable result = isVector ? reshaped(std::move(*value.numeric()), turned)
                             : viewed(std::move(value), turned, {{columns, rows}, {rows, 1}});
  NumericArray* numbers = result.numeric();
  if (!conjugate || !numbers || !numbers->is(Kind::Complex)) return result;
  return unaryLoop(std::move(*numbers).take<ComplexDouble>(), [](ComplexDouble z) noexcept { return conj(z); });
}

}  // namespace kelo
