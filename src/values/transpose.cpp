// Transposition: an exchange of the two dimensions, and for complex numbers, where asked for, of
// the signs of the imaginary parts.
#include "messages/catalogue/operators.h"
#include "messages/message.h"
#include "values/element_view.h"
#include "values/operators.h"

namespace kelo {

Storable transpose(Storable value, bool conjugate) {
  if (!value.isArray()) throw problem(text::kTransposeOfNonArray);
  if (!value.size().isMatrix()) throw problem(text::kTransposeOfManyDimensions);
  if (value.isDoubleScalar()) return value;
  const int64_t rows = value.size().rows();
  const int64_t columns = value.size().columns();
  Storable result = viewed(std::move(value), SizeVector(columns, rows), {{columns, rows}, {rows, 1}});
  NumericArray* numbers = result.numeric();
  if (!conjugate || !numbers || !numbers->is(Kind::Complex)) return result;
  return unaryLoop(std::move(*numbers).take<ComplexDouble>(), [](ComplexDouble z) noexcept { return conj(z); });
}

}  // namespace kelo
