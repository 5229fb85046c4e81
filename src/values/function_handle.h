// Function handles and local functions, as data. What calling them does is the interpreter's
// business.
//
// A handle is one of four forms: anonymous (a body of source text and the variables captured where
// it was written), a built-in, a function file of the user, or a local function. A local function
// is a place in the list of the functions of one file; the list is shared, so that each function of
// a file sees all of them without holding itself.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "values/counted.h"
#include "values/name.h"

namespace kelo {

class KeloNode;
struct AnonymousFunction;
struct LocalFunctionFile;
struct LocalFunctionBody;

/// A function declared beside others in one file or script.
class LocalFunction {
 public:
  LocalFunction(Ref<LocalFunctionFile> file, int64_t index);
  LocalFunction(const LocalFunction&);
  LocalFunction(LocalFunction&&) noexcept;
  LocalFunction& operator=(LocalFunction) noexcept;
  ~LocalFunction();

  const LocalFunctionBody& body() const;
  const Ref<LocalFunctionFile>& file() const { return file_; }
  int64_t index() const { return index_; }  ///< among the functions of the file

 private:
  Ref<LocalFunctionFile> file_;
  int64_t index_;
};

class FunctionHandle {
 public:
  enum class Form : uint8_t { anonymous, builtIn, userDefined, local };

  static FunctionHandle builtIn(Name name);
  static FunctionHandle userDefined(Name name);
  static FunctionHandle local(LocalFunction function);
  static FunctionHandle anonymous(Ref<AnonymousFunction> function);

  FunctionHandle(const FunctionHandle&);
  FunctionHandle(FunctionHandle&&) noexcept;
  FunctionHandle& operator=(FunctionHandle) noexcept;
  ~FunctionHandle();

  Form form() const { return form_; }
  Name name() const { return name_; }  ///< of a built-in, a user's function or a local one; empty for the anonymous
  /// REQUIRES: the form
  AnonymousFunction& anonymousFunction() const;
  LocalFunction localFunction() const;
  /// Whether it is the local function at this place in a file.
  bool isOf(const LocalFunctionFile* file, int64_t index) const;
  /// What the console shows: "@sin", "@(x) x+1".
  std::string text() const;

 private:
  FunctionHandle(Form form, Name name);
  Ref<CountedObject> body_;  // an AnonymousFunction or a LocalFunctionFile; null: neither
  Form form_;
  Name name_;
  int32_t localIndex_ = 0;
};

}  // namespace kelo
