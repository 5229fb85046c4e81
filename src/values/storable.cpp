#include "values/storable.h"

namespace kelo {

std::string Storable::kindLabel() const {
  return isNumeric() ? numeric_.kindLabel() : "struct (" + structure_.size().description() + ")";
}

Storable Storable::listOf(std::vector<Storable> values) {
  Storable result(0.0);
  auto body = makeRef<StorableList>();
  body->values = std::move(values);
  new (&result.list_) Ref<StorableList>(std::move(body));
  result.form_ = Form::list;
  return result;
}

void Storable::copyOther(const Storable& other) {
  switch (form_) {
    case Form::structure: new (&structure_) StructArray(other.structure_); break;
    case Form::funcHandle: new (&funcHandle_) FunctionHandle(other.funcHandle_); break;
    case Form::localFunc: new (&localFunc_) LocalFunction(other.localFunc_); break;
    case Form::list: new (&list_) Ref<StorableList>(other.list_); break;
    case Form::colon: case Form::none: case Form::numeric: new (&numeric_) NumericArray(0.0); break;
  }
}

void Storable::moveOther(Storable&& other) noexcept {
  switch (form_) {
    case Form::structure: new (&structure_) StructArray(std::move(other.structure_)); break;
    case Form::funcHandle: new (&funcHandle_) FunctionHandle(std::move(other.funcHandle_)); break;
    case Form::localFunc: new (&localFunc_) LocalFunction(std::move(other.localFunc_)); break;
    case Form::list: new (&list_) Ref<StorableList>(std::move(other.list_)); break;
    case Form::colon: case Form::none: case Form::numeric: new (&numeric_) NumericArray(0.0); break;
  }
  other.destroyOther();
  new (&other.numeric_) NumericArray();
  other.form_ = Form::numeric;
}

void Storable::destroyOther() noexcept {
  switch (form_) {
    case Form::structure: structure_.~StructArray(); break;
    case Form::funcHandle: funcHandle_.~FunctionHandle(); break;
    case Form::localFunc: localFunc_.~LocalFunction(); break;
    case Form::list: list_.~Ref(); break;
    case Form::colon: case Form::none: case Form::numeric: break;
  }
}

}  // namespace kelo
