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

void Storable::copyOther(const Storable& other) {
  switch (other.form()) {
    case Form::numeric: case Form::transposed: new (&numeric_) NumericArray(other.numeric_); break;
    case Form::structure: new (&structure_) StructArray(other.structure_); break;
    case Form::funcHandle: new (&funcHandle_) FunctionHandle(other.funcHandle_); break;
    case Form::localFunc: new (&localFunc_) LocalFunction(other.localFunc_); break;
    case Form::list: new (&list_) Ref<StorableList>(other.list_); break;
    case Form::colon: case Form::positions: case Form::none: new (&numeric_) NumericArray(0.0); break;
  }
  setForm(other.form());
}

void Storable::destroyOther() noexcept {
  switch (form()) {
    case Form::numeric: case Form::transposed: numeric_.~NumericArray(); break;
    case Form::structure: structure_.~StructArray(); break;
    case Form::funcHandle: funcHandle_.~FunctionHandle(); break;
    case Form::localFunc: localFunc_.~LocalFunction(); break;
    case Form::list: list_.~Ref(); break;
    case Form::colon: case Form::positions: case Form::none: break;
  }
}

}  // namespace kelo
