#include "values/workspace.h"

#include "expect_failure.h"
#include "values/function_bodies.h"

namespace kelo {
namespace {

const Name kX = Name::intern("x"), kY = Name::intern("y");

Name nameOf(int k) { return Name::intern(std::string("v").append(std::to_string(k))); }

double numberIn(const Workspace& workspace, Name name) {
  const Storable* value = workspace.find(name);
  return value ? value->doubleScalar() : -1;
}

TEST(Workspace, findsManyNamesAfterErasing) {
  Workspace w;
  for (int k = 0; k < 40; ++k) w.set(nameOf(k), Storable(1.0 * k));
  for (int k = 0; k < 40; k += 2) EXPECT_TRUE(w.erase(nameOf(k)));
  EXPECT_FALSE(w.erase(nameOf(0)));
  for (int k = 0; k < 40; ++k) EXPECT_EQ(numberIn(w, nameOf(k)), k % 2 ? k : -1);
  for (int k = 1; k < 33; k += 2) w.erase(nameOf(k));
  EXPECT_EQ(numberIn(w, nameOf(35)), 35);
  EXPECT_EQ(numberIn(w, nameOf(3)), -1);
}

TEST(Workspace, aCopyNeverShowsALaterChange) {
  Workspace original;
  original.set(kX, Storable(1.0));
  Workspace copy = original;
  original.set(kX, Storable(2.0));
  original.set(kY, Storable(3.0));
  EXPECT_EQ(numberIn(copy, kX), 1);
  EXPECT_EQ(copy.find(kY), nullptr);
}

TEST(Workspace, removesLocalFunctionsOnly) {
  auto file = makeRef<LocalFunctionFile>();
  file->functions = {{kX, {}, {}, nullptr}};
  Workspace w;
  w.set(kX, LocalFunction(file, 0));
  w.set(kY, Storable(2.0));
  w.removeLocalFunctions();
  EXPECT_EQ(w.names(), std::vector<Name>{kY});
  EXPECT_EQ(numberIn(w, kY), 2);
}

}  // namespace
}  // namespace kelo
