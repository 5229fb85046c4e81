#include "interpreter/console.h"

#include <gtest/gtest.h>

#include "test_app.h"

namespace kelo {
namespace {

using Texts = std::vector<std::string>;

Texts numbered(int first, int last) {
  Texts texts;
  for (int k = first; k <= last; ++k) texts.push_back("c" + std::to_string(k));
  return texts;
}

TEST(History, KeepsTwentyAndLosesTheOldestEvenForARepeatedText) {
  platform::MemoryStore store;
  Console::History history(store);
  for (const std::string& text : numbered(1, 21)) history.add(text);
  EXPECT_EQ(history.items(), numbered(2, 21));
  history.add("c21");
  EXPECT_EQ(history.items(), numbered(3, 21));
  history.add("c21");  // below the limit now: nothing goes, nothing comes
  EXPECT_EQ(history.items(), numbered(3, 21));

  Console::History later(store);
  later.load();
  EXPECT_EQ(later.items(), numbered(3, 21));
  EXPECT_EQ(later.index(), 19);
}

TEST(History, ConsolesOfOneStoreKeepEachOthersTexts) {
  platform::MemoryStore store;
  Console::History first(store), second(store);
  first.add("a");
  second.add("b");
  first.add("c");
  EXPECT_EQ(first.items(), (Texts{"a", "c"}));
  Console::History later(store);
  later.load();
  EXPECT_EQ(later.items(), (Texts{"a", "b", "c"}));
}

TEST(History, KeepsNoVeryLongTextAndNoneWhereNobodyTypes) {
  platform::MemoryStore store;
  Console::History history(store);
  history.add(std::string(Console::History::kLongestText + 1, 'x'));
  EXPECT_EQ(history.items(), Texts());
  history.setKeeping(false);
  history.add("5");
  EXPECT_EQ(history.items(), Texts());
  EXPECT_TRUE(store.values.empty());
}

TEST(History, WalksBackAndForth) {
  platform::MemoryStore store;
  Console::History history(store);
  EXPECT_TRUE(history.prevButtonDisabled());
  EXPECT_FALSE(history.nextButtonDisabled());  // also of an empty list
  EXPECT_EQ(history.previous(), std::nullopt);
  EXPECT_EQ(history.next(), std::nullopt);

  history.add("a");
  history.add("b");
  EXPECT_TRUE(history.nextButtonDisabled());
  EXPECT_EQ(history.previous(), "b");
  EXPECT_FALSE(history.prevButtonDisabled() || history.nextButtonDisabled());
  EXPECT_EQ(history.previous(), "a");
  EXPECT_TRUE(history.prevButtonDisabled());
  EXPECT_EQ(history.previous(), std::nullopt);
  EXPECT_EQ(history.next(), "b");
  EXPECT_EQ(history.next(), "");
  EXPECT_EQ(history.next(), std::nullopt);
  EXPECT_EQ(history.previous(), "b");
}

TEST(Output, ShowsAllAndKeepsATail) {
  TestApp test;
  const int count = 5000;
  for (int k = 0; k < count; ++k) test.app.environment.showText("line\nline");
  EXPECT_EQ(test.shown.size(), count);
  const auto kept = static_cast<int64_t>(test.app.console.output.items().size());
  EXPECT_GE(2 * kept, Console::Output::maxNumOfLines);
  EXPECT_LE(2 * kept, 2 * Console::Output::maxNumOfLines);
}

TEST(Settings, AreReadAndMended) {
  platform::MemoryStore store;
  store.set("numDigitsIndex", int64_t{7});
  store.set("showWarning", false);
  store.set("randStateV", int64_t{-1});
  TestApp donor;
  AppController app({donor.parserQueue, donor.mainQueue, donor.synchronization, donor.files, store, donor.clock}, donor,
                    TestApp::noBuiltins());
  EXPECT_EQ(app.environment.nDigits(), 5);
  EXPECT_EQ(app.environment.randState.randStateV, UINT64_MAX);
  EXPECT_EQ(app.environment.randState.randStateU, std::nullopt);

  Message warning;
  warning.type = Message::MsgType::warning;
  app.environment.show(warning);
  EXPECT_EQ(donor.shown, Texts());
  app.environment.show(Message());
  EXPECT_EQ(donor.shown, Texts{"Error in the console."});
  EXPECT_EQ(app.environment.errorsShown(), 1);
}

}  // namespace
}  // namespace kelo
