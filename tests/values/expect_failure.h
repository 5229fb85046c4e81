// Expectations on what is thrown: a Problem with a reason, or a fatal fault.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "messages/fatal_fault.h"
#include "messages/message.h"

namespace kelo {

/// The reason and, after a bar, what was expected of the Problem that f throws; "none" when it
/// throws none.
template <class F>
std::string problemOf(F f) {
  try {
    f();
  } catch (const Problem& p) {
    return p.reason.value_or("") + (p.expected ? "|" + *p.expected : "");
  }
  return "none";
}

}  // namespace kelo

#define EXPECT_FATAL(statement) EXPECT_THROW(statement, ::kelo::FatalFault)
