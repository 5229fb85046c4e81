#include "values/held_name.h"

#include <gtest/gtest.h>

#include <optional>

#include "values/struct_array.h"

namespace kelo {
namespace {

// Entries that were given back are the next to be used, so a name that stayed shows by its number.
bool isGivenBack(uint32_t id) { return Name(HeldName::of("made by nobody else")).id() == id; }

TEST(Name, IsTheSameForTheSameText) {
  const HeldName made = HeldName::of("made first");
  EXPECT_EQ(Name(made), Name::intern("made first"));
  EXPECT_EQ(Name::intern("known first"), Name(HeldName::of("known first")));
  EXPECT_EQ(Name::intern(""), Name());
}

TEST(Name, ThatARunMakesIsGivenBackByItsLastHolder) {
  std::optional<HeldName> made = HeldName::of("two holders");
  std::optional<HeldName> other = made;
  const uint32_t id = Name(*made).id();
  made.reset();
  EXPECT_FALSE(isGivenBack(id));
  EXPECT_EQ(other->text(), "two holders");
  other.reset();
  EXPECT_TRUE(isGivenBack(id));
}

TEST(Name, StaysOnceAProgramHasIt) {
  std::optional<HeldName> made = HeldName::of("of a program too");
  const Name kept = Name::intern("of a program too");
  made.reset();
  EXPECT_FALSE(isGivenBack(kept.id()));
  EXPECT_EQ(kept.text(), "of a program too");
}

TEST(Name, OfAFieldStaysWithItsStructures) {
  std::optional<HeldName> made = HeldName::of("of a field");
  const uint32_t id = Name(*made).id();
  StructArray s;
  s.ensureField(*made);
  std::optional<StructArray> copy = s;
  std::optional<StructArray> larger(std::in_place, SizeVector(1, 3), std::vector<Name>{*made});
  copy->ensureField(Name::intern("b"));
  s.removeField(*made);
  made.reset();
  EXPECT_FALSE(isGivenBack(id));
  copy.reset();
  EXPECT_FALSE(isGivenBack(id));
  larger.reset();
  EXPECT_TRUE(isGivenBack(id));
}

}  // namespace
}  // namespace kelo
