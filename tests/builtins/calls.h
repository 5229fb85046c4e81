// Calls of built-ins from tests: the row's handler by itself, with arguments made by
// tests/values/arrays.h, and what it gives or complains of as text.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "builtins/library.h"
#include "values/arrays.h"

namespace kelo::testing {

/// What a built-in gives. REQUIRES: the handler needs nothing of the application; the count is
/// right
inline NodeValue answered(const char* name, std::vector<Storable> args, std::optional<int> outputs = std::nullopt) {
  alignas(16) static char noApplication[16];
  const Builtin* row = builtins::library().find(Name::intern(name));
  const CallSite site;
  Call call(*row, args, outputs, site, reinterpret_cast<Environment&>(noApplication), nullptr);
  return row->handler(call);
}

inline NumericArray called(const char* name, std::vector<Storable> args) {
  return *answered(name, std::move(args)).storable().numeric();
}

inline std::vector<Storable> outputsOf(const char* name, std::vector<Storable> args, int n) {
  return answered(name, std::move(args), n).storable().list();
}

inline std::string outcomeOf(const char* name, const std::vector<Storable>& args) {
  return outcome([&] { return called(name, args); });
}

struct CallRow {
  const char* name;
  std::vector<Storable> args;
  const char* expected;  ///< as `outcome` tells it
};

inline void check(const std::vector<CallRow>& rows) {
  for (const CallRow& r : rows) {
    std::string call = std::string(r.name) + "(";
    for (const Storable& a : r.args) call += (a.isNumeric() ? describe(*a.numeric()) : a.kindLabel()) + "; ";
    EXPECT_EQ(outcomeOf(r.name, r.args), r.expected) << call << ")";
  }
}

}  // namespace kelo::testing
