// The table of built-ins as a whole: every reserved name has one row, says what it is for with an
// example that runs, and complains once, without doing anything, of one argument too few, one too
// many and one output too many.
#include <gtest/gtest.h>

#include <set>

#include "builtins/library.h"
#include "grammar/builtin_names.h"
#include "interpreter/dispatch.h"
#include "interpreter/test_app.h"

namespace kelo {
namespace {

/// What a call with so many arguments shows. REQUIRES: the call is refused
std::vector<std::string> shownBy(const Builtin& row, int inputs, int outputs) {
  TestApp test(builtins::library());
  std::vector<Storable> args(static_cast<size_t>(inputs), Storable(1.0));
  const NodeValue result = callBuiltin(row, args, outputs, CallSite{}, test.app.environment);
  EXPECT_TRUE(result.isFailure()) << row.name << " with " << inputs << " arguments";
  return test.shown;
}

TEST(Table, HasEachReservedNameOnce) {
  std::vector<std::string_view> names;
  for (const Builtin* row : builtins::library().rows()) names.push_back(row->name);
  EXPECT_EQ(names, std::vector<std::string_view>(std::begin(kBuiltinNames), std::end(kBuiltinNames)));
}

TEST(Table, TellsWhatEachFunctionIsFor) {
  for (const Builtin* row : builtins::library().rows()) {
    EXPECT_GT(std::string_view(row->help).size(), 5u) << row->name;
    EXPECT_NE(std::string_view(row->help).back(), '.') << row->name;
    EXPECT_NE(std::string_view(row->example).find(row->name), std::string_view::npos) << row->name;
    EXPECT_LE(row->inputs.least, row->inputs.most) << row->name;
    EXPECT_EQ(row->inputs.most == 0, std::string_view(row->arguments).empty()) << row->name;
  }
}

TEST(Table, GivesExamplesThatRun) {
  const std::set<std::string_view> waiting = {"input", "pause"};
  for (const Builtin* row : builtins::library().rows()) {
    if (waiting.contains(row->name)) continue;
    TestApp test(builtins::library());
    test.app.startCommand(row->example);
    test.mainQueue.drain();
    const int messages = std::string_view(row->name) == "error" ? 1 : 0;
    const std::string last = test.shown.empty() ? "" : test.shown.back();
    EXPECT_EQ(test.app.environment.messagesShown(), messages) << row->example << "\n" << last;
  }
}

TEST(Table, RefusesWrongCountsWithOneSentence) {
  for (const Builtin* row : builtins::library().rows()) {
    if (row->inputs.least > 0) {
      EXPECT_EQ(shownBy(*row, row->inputs.least - 1, 1).size(), 1u) << row->name;
    }
    if (row->inputs.most < kAny) {
      EXPECT_EQ(shownBy(*row, row->inputs.most + 1, 1).size(), 1u) << row->name;
    }
    const int tooMany = std::max(row->outputs, 1) + 1;
    if (row->outputs < kAny) {
      EXPECT_EQ(shownBy(*row, row->inputs.least, tooMany).size(), 1u) << row->name;
    }
  }
}

}  // namespace
}  // namespace kelo
