// The buttons and the sleep of a run, with queues that the test moves by hand.
#include <gtest/gtest.h>

#include "test_app.h"

namespace kelo {
namespace {

using Status = RunState::Status;
using Texts = std::vector<std::string>;

TEST(RunControl, RunButtonStartsACommandOnceAndKeepsItsText) {
  TestApp test;
  test.app.pressRun();  // no text: nothing
  EXPECT_EQ(test.app.console.history.items(), Texts());
  test.app.panelDir = "work";
  test.app.console.input.text = "1 +";
  test.app.pressRun();
  EXPECT_EQ(test.app.control.status(), Status::running);  // until the main thread hears of the end
  EXPECT_TRUE(test.results.empty());
  EXPECT_EQ(test.status(), Status::idle);
  ASSERT_EQ(test.results.size(), 1u);
  EXPECT_TRUE(test.results[0].failed);
  EXPECT_EQ(test.app.environment.runInDir, "work");
  EXPECT_EQ(test.app.console.input.text, std::nullopt);
  EXPECT_EQ(test.app.console.history.items(), Texts{"1 +"});
  ASSERT_EQ(test.shown.size(), 2u);  // the echo and one error
  EXPECT_EQ(test.shown[0], "1 +");
}

TEST(RunControl, RunButtonDoesNothingWhileRunning) {
  TestApp test;
  test.duringRun([&] {
    EXPECT_EQ(test.status(), Status::running);
    test.app.console.input.text = "x";
    test.app.pressRun();
    test.app.pressRunFile("", "f.m");
  });
  EXPECT_EQ(test.app.console.input.text, "x");
  EXPECT_EQ(test.app.console.history.items(), Texts());
}

TEST(RunControl, InputTakesTheTypedLineAndRemembersIt) {
  TestApp test;
  test.synchronization.whileAsleep = [&] {
    EXPECT_EQ(test.status(), Status::waitInput);
    EXPECT_EQ(test.shown, Texts{"Age? "});
    test.app.console.input.text = "42";
    test.app.pressRun();
  };
  test.duringRun([&] {
    EXPECT_EQ(test.app.environment.readInput("Age? "), "42");
    EXPECT_EQ(test.status(), Status::running);
  });
  EXPECT_EQ(test.app.console.input.text, std::nullopt);
  EXPECT_EQ(test.app.console.history.items(), Texts{"42"});
}

TEST(RunControl, StopWakesAndIsSeenOnce) {
  TestApp test;
  test.synchronization.whileAsleep = [&] {
    test.app.pressStop();
    EXPECT_FALSE(test.app.control.wait());
  };
  test.duringRun([&] {
    EXPECT_EQ(test.app.environment.readInput(""), std::nullopt);
    EXPECT_EQ(test.status(), Status::waitInput);  // the button leaves the state to the end of the run
    EXPECT_TRUE(test.app.environment.takeStopRequest());
    EXPECT_FALSE(test.app.environment.takeStopRequest());
  });
  // A press just before the sleep is not lost, and one on an idle system does not reach the next
  // run.
  test.synchronization.whileAsleep = [] { FAIL() << "slept"; };
  test.duringRun([&] {
    test.app.pressStop();
    test.app.environment.pauseFor(std::nullopt);
  });
  test.app.startCommand("");
  EXPECT_FALSE(test.app.environment.takeStopRequest());
}

TEST(RunControl, TimerEndsItsPauseAndNoOther) {
  TestApp test;
  int wakes = 0;
  test.synchronization.whileAsleep = [&] {
    EXPECT_EQ(test.status(), Status::paused);
    if (++wakes == 1) return test.app.pressRun();  // the user is faster than the first timer
    EXPECT_TRUE(test.app.control.wait()->isTimed);
    test.mainQueue.fireNextTimer();
    // What is answered is no wait any more, before the run has said a word.
    EXPECT_EQ(test.app.control.wait().has_value(), wakes == 2);
  };
  test.duringRun([&] {
    test.app.environment.pauseFor(1);
    EXPECT_EQ(test.status(), Status::running);
    const double begin = test.clock.seconds;
    test.app.environment.pauseFor(5);
    EXPECT_EQ(test.clock.seconds, begin + 5);
  });
  EXPECT_EQ(wakes, 3);  // the first timer went off during the second pause and did nothing
}

TEST(RunControl, RunOnMainWaitsForTheBlockAndBringsBackWhatItThrows) {
  TestApp test;
  bool isDone = false;
  std::optional<std::string> thrown;
  test.duringRun([&] {
    test.app.environment.runOnMain([&] { isDone = true; });
    EXPECT_TRUE(isDone);
    try {
      test.app.environment.runOnMain([] { throw problem("no place"); });
    } catch (const Problem& problem) {
      thrown = problem.reason;
    }
  });
  EXPECT_EQ(thrown, "no place");
}

}  // namespace
}  // namespace kelo
