#include "values/workspace.h"

#include <algorithm>

#include "expect_failure.h"
#include "values/function_bodies.h"

namespace kelo {
namespace {

const Name kX = Name::intern("x"), kY = Name::intern("y"), kZ = Name::intern("z");

Name nameOf(int k) { return Name::intern(std::string("v").append(std::to_string(k))); }

double numberIn(const Workspace& workspace, Name name) {
  const Storable* value = workspace.find(name);
  return value ? value->doubleScalar() : -1;
}

std::vector<std::string> sortedNames(const Workspace& workspace) {
  std::vector<std::string> result;
  for (const Name name : workspace.names()) result.push_back(name.text());
  std::sort(result.begin(), result.end());
  return result;
}
using Names = std::vector<std::string>;

TEST(Workspace, findsManyNamesAfterErasing) {
  Workspace w;
  for (int k = 0; k < 40; ++k) w.set(nameOf(k), Storable(1.0 * k));
  for (int k = 0; k < 40; k += 2) EXPECT_TRUE(w.erase(nameOf(k)));
  EXPECT_FALSE(w.erase(nameOf(0)));
  for (int k = 0; k < 40; ++k) EXPECT_EQ(numberIn(w, nameOf(k)), k % 2 ? k : -1);
  for (int k = 1; k < 33; k += 2) w.erase(nameOf(k));  // few enough to be scanned again
  EXPECT_EQ(numberIn(w, nameOf(35)), 35);
  EXPECT_EQ(numberIn(w, nameOf(3)), -1);
}

TEST(Workspace, aStaleHintDoesNoHarm) {
  Workspace w;
  w.set(kX, Storable(1.0));
  w.set(kY, Storable(2.0));
  uint32_t hint = 0;
  EXPECT_EQ(w.find(kY, &hint)->doubleScalar(), 2);
  w.erase(kX);
  EXPECT_EQ(w.find(kY, &hint)->doubleScalar(), 2);
  hint = 77;
  EXPECT_EQ(w.find(kY, &hint)->doubleScalar(), 2);
  EXPECT_EQ(w.find(kX, &hint), nullptr);
}

TEST(Workspace, seesCapturedVariablesAndWritesItsOwn) {
  Workspace definition;
  definition.set(kX, Storable(1.0));
  definition.set(kY, Storable(2.0));
  Workspace call = Workspace::over(definition);
  definition.set(kY, Storable(20.0));  // after the capture
  EXPECT_EQ(numberIn(call, kY), 2);
  call.set(kX, Storable(5.0));
  uint32_t hint = 0;
  EXPECT_EQ(call.variable(kY, &hint).doubleScalar(), 2);  // made its own with the captured value
  EXPECT_EQ(numberIn(definition, kX), 1);
  call.set(kZ, Storable(6.0));
  EXPECT_EQ(sortedNames(call), Names({"x", "y", "z"}));

  Workspace inner = Workspace::over(call);  // a handle made inside the call
  EXPECT_EQ(numberIn(inner, kX), 5);
  EXPECT_EQ(numberIn(inner, kY), 2);
  inner.set(kX, Storable(7.0));
  EXPECT_EQ(numberIn(call, kX), 5);
}

TEST(Workspace, erasesCapturedVariables) {
  Workspace definition;
  definition.set(kX, Storable(1.0));
  definition.set(kY, Storable(2.0));
  Workspace call = Workspace::over(definition);
  EXPECT_TRUE(call.erase(kX));
  EXPECT_EQ(call.find(kX), nullptr);
  EXPECT_EQ(numberIn(call, kY), 2);
  EXPECT_EQ(numberIn(definition, kX), 1);
}

TEST(Workspace, removesLocalFunctionsOnly) {
  auto file = makeRef<LocalFunctionFile>();
  file->functions = {{kX, {}, {}, nullptr}};
  Workspace w = Workspace::over(file);
  EXPECT_EQ(w.find(kX), nullptr);  // a function behind is no variable
  w.set(kX, LocalFunction(file, 0));
  w.set(kY, Storable(2.0));
  w.removeLocalFunctions();
  EXPECT_EQ(sortedNames(w), Names({"y"}));
  EXPECT_EQ(w.functions().get(), file.get());
}

TEST(Workspace, aNewOneIsEmptyAlsoWhenItsTableWasUsedBefore) {
  for (int round = 0; round < 3; ++round) {
    Workspace w;
    EXPECT_EQ(w.find(kX), nullptr);
    for (int k = 0; k < 20; ++k) w.set(nameOf(k), Storable(1.0 * k));
    w.set(kX, Storable(1.0));
  }
}

TEST(WorkspaceStack, keepsItsBase) {
  WorkspaceStack stack;
  stack.top().set(kX, Storable(1.0));
  EXPECT_FALSE(stack.pop());
  for (int k = 0; k < 100; ++k) stack.push(Workspace::over(stack.top()));
  EXPECT_EQ(numberIn(stack.top(), kX), 1);
  stack.top().set(kX, Storable(2.0));
  stack.popToBase();
  EXPECT_EQ(stack.depth(), 1);
  EXPECT_EQ(numberIn(stack.base(), kX), 1);
}

}  // namespace
}  // namespace kelo
