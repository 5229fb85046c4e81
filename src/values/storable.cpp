#include "values/storable.h"

namespace kelo {

DoubleArray EvenPositions::asSubscripts() const {
  DoubleArray result = DoubleArray::uninitialized(SizeVector(1, count));
  double* out = result.writable();
  for (int64_t k = 0; k < count; ++k) out[k] = static_cast<double>(first + k * step + 1);
  return result;
}

std::string Storable::kindLabel() const {
  return isNumeric() ? numeric_.kindLabel() : "struct (" + structure_.size().description() + ")";
}

Storable Storable::listOf(std::vector<Storable> values) {
  Storable result(0.0);
  auto body = makeRef<StorableList>();
  body->values = std::move(values);
  new (&result.list_) Ref<StorableList>(std::move(body));
  result.setForm(Form::list);
  return result;
}

}  // namespace kelo
