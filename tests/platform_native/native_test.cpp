// The forms on the machine: a folder of its own under the temporary directory, threads, the
// settings file.
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>

#include "platform/native/clock.h"
#include "platform/native/disk.h"
#include "platform/native/json_store.h"
#include "platform/native/parallel_pool.h"
#include "platform/native/queues.h"
#include "platform/native/synchronization.h"
#include "platform/stack_guard.h"

namespace kelo::platform::native {
namespace {

namespace fs = std::filesystem;

class NativeTest : public testing::Test {
 protected:
  NativeTest() {
    std::string pattern = (fs::temp_directory_path() / "kelo_test.XXXXXX").string();
    folder = mkdtemp(pattern.data());
  }
  ~NativeTest() override { fs::remove_all(folder); }

  void write(const std::string& name, const std::string& text) { std::ofstream(folder + "/" + name) << text; }
  std::string read(const std::string& name) {
    std::ifstream file(folder + "/" + name);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::string folder;
};

TEST_F(NativeTest, DiskStaysInside) {
  fs::create_directory(folder + "/work");
  fs::create_directory(folder + "/work/sub");
  write("outside.m", "secret");
  write("work/a.m", "x = 1");
  Disk disk(folder + "/work");
  EXPECT_EQ(disk.readFile("a.m"), "x = 1");
  EXPECT_EQ(disk.fileSize("a.m"), 5);
  EXPECT_EQ(disk.fileSize("sub"), std::nullopt);
  EXPECT_EQ(disk.readFile("sub/../a.m"), "x = 1");
  for (const std::string path : {"../outside.m", "sub/../../outside.m", "/etc/passwd", "", "sub", "none.m"}) {
    EXPECT_EQ(disk.readFile(path), std::nullopt) << path;
    EXPECT_FALSE(disk.isRegularFile(path)) << path;
  }
  EXPECT_FALSE(disk.exists(std::string("a.m\0b", 5)));
  EXPECT_EQ(disk.listDirectory(""), (std::vector<std::string>{"a.m", "sub"}));
  EXPECT_EQ(disk.listDirectory(".."), std::nullopt);

  EXPECT_TRUE(disk.writeFile("a.m", "new"));
  EXPECT_EQ(read("work/a.m"), "new");
  EXPECT_FALSE(disk.writeFile("sub", "a folder"));
  EXPECT_FALSE(disk.writeFile("none/b.m", "no folder"));
  EXPECT_FALSE(disk.writeFile("../b.m", "outside"));
  EXPECT_EQ(disk.listDirectory(""), (std::vector<std::string>{"a.m", "sub"}));  // no temporary file is left
}

TEST_F(NativeTest, DiskWritesThroughLinksAndLeavesNothingBeside) {
  Disk disk(folder);
  write("data.csv", "1");
  fs::create_symlink("data.csv", folder + "/link.csv");
  fs::create_symlink("new.csv", folder + "/link_to_none.csv");
  write(".data.csv.kelo~", "left behind by a program that was killed");
  EXPECT_TRUE(disk.writeFile("link.csv", "2"));
  EXPECT_TRUE(disk.writeFile("link_to_none.csv", "3"));
  EXPECT_EQ(read("data.csv"), "2");
  EXPECT_EQ(read("new.csv"), "3");
  EXPECT_TRUE(fs::is_symlink(folder + "/link.csv"));
  EXPECT_EQ(disk.listDirectory(""),
            (std::vector<std::string>{"data.csv", "link.csv", "link_to_none.csv", "new.csv"}));
}

TEST_F(NativeTest, StoreComesBackAndKeepsWhatOthersWrote) {
  const auto refuse = [](const std::string& fault) { FAIL() << fault; };
  const std::string state = folder + "/new/state";
  JsonStore first(state, refuse), second(state, refuse);
  EXPECT_EQ(second.read<bool>("showWarning"), std::nullopt);  // read before the first one saves
  first.set("consoleHistory", std::vector<std::string>{"a", "b\n\"'", "\xff"});
  first.set("randStateU", INT64_MIN);
  EXPECT_TRUE(first.save());
  second.set("showWarning", false);
  EXPECT_TRUE(second.save());

  JsonStore third(state, refuse);
  EXPECT_EQ(third.read<bool>("showWarning"), false);
  EXPECT_EQ(third.read<int64_t>("randStateU"), INT64_MIN);
  EXPECT_EQ(third.read<bool>("randStateU"), std::nullopt);
  EXPECT_EQ(third.read<std::vector<std::string>>("consoleHistory"),
            (std::vector<std::string>{"a", "b\n\"'", "\xEF\xBF\xBD"}));
}

TEST_F(NativeTest, StoreMakesAChangeToWhatIsStoredByThen) {
  const auto refuse = [](const std::string& fault) { FAIL() << fault; };
  const auto longer = [](const std::string& part) {
    return [part](const StoredValue* old) { return StoredValue((old ? std::get<std::string>(*old) : "") + part); };
  };
  JsonStore first(folder, refuse), second(folder, refuse);
  first.change("log", longer("a"));
  second.change("log", longer("b"));
  first.change("log", longer("c"));
  write("settings.json.Ab12cd", "left behind by a save that was killed");
  EXPECT_TRUE(first.save());
  EXPECT_TRUE(second.save());
  EXPECT_EQ(second.read<std::string>("log"), "b");  // what this one made of it
  EXPECT_EQ(JsonStore(folder, refuse).read<std::string>("log"), "acb");
  EXPECT_EQ(Disk(folder).listDirectory(""), std::vector<std::string>{"settings.json"});

  JsonStore nowhere("", refuse);
  nowhere.set("a", true);
  EXPECT_TRUE(nowhere.save());
  EXPECT_EQ(nowhere.read<bool>("a"), true);
}

TEST_F(NativeTest, StoreLeavesABrokenFileAlone) {
  for (const std::string broken : {"{\"a\": 1", "[1]", ""}) {
    write("settings.json", broken);
    int faults = 0;
    JsonStore store(folder, [&](const std::string&) { ++faults; });
    EXPECT_EQ(store.get("a"), std::nullopt);
    store.set("a", true);
    EXPECT_FALSE(store.save());
    EXPECT_EQ(faults, 1);
    EXPECT_EQ(store.read<bool>("a"), true);  // for this session
    EXPECT_EQ(read("settings.json"), broken);
  }
}

/// Calls that fit; the frame is handed down, so that no call can take the place of its caller.
int64_t depthUntilLow(const volatile char* caller) {
  volatile char frame[60000];  // large, so that few pages are touched
  frame[0] = caller[0];
  return stackIsLow() ? 0 : 1 + depthUntilLow(frame);
}

TEST(ThreadQueue, RunsInOrderOnABigGuardedStack) {
  ThreadQueue queue;
  std::vector<int> order;
  for (int k = 0; k < 100; ++k) queue.async([&order, k] { order.push_back(k); });
  int64_t depth = 0;
  queue.runAndWait([&] { depth = depthUntilLow(""); });
  ASSERT_EQ(order.size(), 100u);
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
  EXPECT_GT(depth, 10000);
  setStackLimit(nullptr);
}

TEST(LoopQueue, RunsBlocksAndTimersWhenDue) {
  LoopQueue queue;
  std::string order;
  queue.after(0.03, [&] { order += "late "; });
  queue.after(0.01, [&] { order += "early "; });
  queue.async([&] { order += "now "; });
  EXPECT_EQ(queue.secondsToNextTimer(), 0);
  queue.runReady();
  EXPECT_EQ(order, "now ");
  while (const auto seconds = queue.secondsToNextTimer()) {
    usleep(static_cast<useconds_t>(*seconds * 1e6));
    queue.runReady();
  }
  EXPECT_EQ(order, "now early late ");
}

TEST(Synchronization, SemaphoreCounts) {
  ThreadSynchronization synchronization;
  ThreadQueue queue;
  const auto there = synchronization.makeSemaphore(), back = synchronization.makeSemaphore();
  there->signal();
  there->signal();
  queue.async([=] {
    for (int k = 0; k < 3; ++k) there->wait();
    back->signal();
  });
  there->signal();
  back->wait();
}

TEST(ParallelPool, CoversEachElementOnceInWholeGrains) {
  ParallelPool pool;
  for (const int64_t count : {1, 1000, 100001}) {
    std::vector<std::atomic<int>> visits(static_cast<size_t>(count));
    std::atomic<int> misplaced = 0;
    pool.run(count, 64, [&](int64_t begin, int64_t end) {
      if (begin % 64 != 0) ++misplaced;
      for (int64_t k = begin; k < end; ++k) ++visits[static_cast<size_t>(k)];
    });
    EXPECT_EQ(misplaced, 0);
    for (const auto& visit : visits) ASSERT_EQ(visit, 1) << count;
  }
}

TEST(LoopQueue, IsServedWhileAnotherQueueWaitsForIt) {
  ThreadQueue queue;
  LoopQueue mainQueue;
  const auto done = ThreadSynchronization().makeSemaphore();
  bool hasRun = false;
  queue.async([&] {
    mainQueue.async([&] {
      hasRun = true;
      done->signal();
    });
    done->wait();
  });
  mainQueue.serveWhileRunning(queue, [&] { EXPECT_TRUE(hasRun); });
}

}  // namespace
}  // namespace kelo::platform::native
