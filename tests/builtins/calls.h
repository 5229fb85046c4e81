// Calls of built-ins from tests: the row's handler by itself, with arguments made by tests/values/arrays.h, and what it
// gives or complains of as text.
#pragma once

#include <vector>

#include "builtins/library.h"
#include "values/arrays.h"

namespace kelo::testing {

/// What a built-in gives, or its complaint. REQUIRES: the handler needs nothing of the application; the count is right
inline NumericArray called(const char* name, std::vector<Storable> args) {
  alignas(16) static char noApplication[16];
  const Builtin* row = builtins::library().find(Name::intern(name));
  const CallSite site;
  Call call(*row, args, std::nullopt, site, reinterpret_cast<AppController&>(noApplication), nullptr);
  return *row->handler(call).numericArray();
}

inline std::string outcomeOf(const char* name, const std::vector<Storable>& args) {
  return outcome([&] { return called(name, args); });
}

struct CallRow {
  const char* name;
  std::vector<Storable> args;
  const char* expected;  ///< as `outcome` tells it
};

}  // namespace kelo::testing
