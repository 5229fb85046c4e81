#include "values/function_handle.h"

#include "values/function_bodies.h"

namespace kelo {

LocalFunction::LocalFunction(Ref<LocalFunctionFile> file, int64_t index) : file_(std::move(file)), index_(index) {}
LocalFunction::LocalFunction(const LocalFunction&) = default;
LocalFunction::LocalFunction(LocalFunction&&) noexcept = default;
LocalFunction& LocalFunction::operator=(LocalFunction other) noexcept {
  std::swap(file_, other.file_);
  std::swap(index_, other.index_);
  return *this;
}
LocalFunction::~LocalFunction() = default;

const LocalFunctionBody& LocalFunction::body() const { return file_->functions[static_cast<size_t>(index_)]; }

int64_t LocalFunctionFile::indexOf(Name name) const {
  for (size_t k = 0; k < functions.size(); ++k) {
    if (functions[k].funName == name) return static_cast<int64_t>(k);
  }
  return -1;
}

FunctionHandle::FunctionHandle(Form form, Name name) : form_(form), name_(name) {}
FunctionHandle::FunctionHandle(const FunctionHandle&) = default;
FunctionHandle::FunctionHandle(FunctionHandle&&) noexcept = default;
FunctionHandle& FunctionHandle::operator=(FunctionHandle other) noexcept {
  std::swap(form_, other.form_);
  std::swap(name_, other.name_);
  std::swap(localIndex_, other.localIndex_);
  std::swap(body_, other.body_);
  return *this;
}
FunctionHandle::~FunctionHandle() = default;

FunctionHandle FunctionHandle::builtIn(Name name) { return {Form::builtIn, name}; }
FunctionHandle FunctionHandle::userDefined(Name name) { return {Form::userDefined, name}; }

FunctionHandle FunctionHandle::local(LocalFunction function) {
  const LocalFunctionBody& body = function.body();
  FunctionHandle handle(Form::local, body.funName);
  handle.localIndex_ = static_cast<int32_t>(&body - function.file()->functions.data());
  function.file()->retain();
  handle.body_ = Ref<CountedObject>::adopt(function.file().get());
  return handle;
}

FunctionHandle FunctionHandle::anonymous(Ref<AnonymousFunction> function) {
  FunctionHandle handle(Form::anonymous, Name());
  handle.body_ = Ref<CountedObject>::adopt(function.detach());
  return handle;
}

AnonymousFunction& FunctionHandle::anonymousFunction() const { return static_cast<AnonymousFunction&>(*body_); }

LocalFunction FunctionHandle::localFunction() const {
  body_->retain();
  auto file = Ref<LocalFunctionFile>::adopt(static_cast<LocalFunctionFile*>(body_.get()));
  return {std::move(file), localIndex_};
}

bool FunctionHandle::isOf(const LocalFunctionFile* file, int64_t index) const {
  return form_ == Form::local && localIndex_ == index && static_cast<LocalFunctionFile*>(body_.get()) == file;
}

std::string FunctionHandle::text() const {
  return form_ == Form::anonymous ? anonymousFunction().body->displayText : "@" + name_.text();
}

}  // namespace kelo
