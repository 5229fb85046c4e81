// The file tree on a real disk: what it does, and what attacks it withstands.
#include "platform/native/disk_tree.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/native/inotify_watcher.h"
#include "platform/native/queues.h"

namespace kelo::platform::native {
namespace {

namespace fs = std::filesystem;

std::string newFolder() {
  std::string pattern = (fs::temp_directory_path() / "kelo_tree.XXXXXX").string();
  return mkdtemp(pattern.data());
}

class DiskTreeTest : public testing::Test {
 protected:
  DiskTreeTest() {
    fs::create_directories(base + "/work/sub");
    fs::create_directories(base + "/work_private");
    write("work/a.m", "a");
    write("work/sub/b.m", "b");
    write("work_private/secret", "secret");
  }
  ~DiskTreeTest() override { fs::remove_all(base); }

  void write(const std::string& name, const std::string& text) const { std::ofstream(base + "/" + name) << text; }
  std::string read(const std::string& name) const {
    std::ifstream file(base + "/" + name);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string names(const std::string& path) const {
    std::string all;
    for (const auto& entry : tree.list(path).value_or(std::vector<FileTree::Entry>())) all += entry.name + " ";
    return all;
  }
  static bool always(std::string_view) { return true; }

  const std::string base = newFolder();
  DiskTree tree{base + "/work"};
};

TEST_F(DiskTreeTest, DoesWhatAFileManagerNeeds) {
  EXPECT_EQ(names(""), "a.m sub ");
  EXPECT_EQ(tree.status("a.m")->size, 1);
  EXPECT_NEAR(*tree.status("a.m")->modified, static_cast<double>(time(nullptr)), 100);
  EXPECT_TRUE(tree.status("sub")->isFolder);
  EXPECT_TRUE(tree.create("sub/c.m", "c"));
  EXPECT_FALSE(tree.create("sub/c.m", "other"));
  EXPECT_EQ(tree.read("sub/c.m"), "c");
  ASSERT_EQ(chmod((base + "/work/a.m").c_str(), 0640), 0);
  EXPECT_FALSE(tree.replace("a.m", "new", [](std::string_view present) { return present == "x"; }));
  EXPECT_TRUE(tree.replace("a.m", "new", [](std::string_view present) { return present == "a"; }));
  EXPECT_FALSE(tree.replace("none", "new", always));
  struct stat status;
  ASSERT_EQ(stat((base + "/work/a.m").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640u);
  EXPECT_TRUE(tree.makeFolder("d"));
  EXPECT_FALSE(tree.makeFolder("d"));
  EXPECT_FALSE(tree.move("a.m", "sub/b.m"));
  EXPECT_FALSE(tree.move("sub", "sub/e"));
  EXPECT_TRUE(tree.move("sub", "d/sub"));
  EXPECT_EQ(names("d/sub"), "b.m c.m ");
  EXPECT_TRUE(tree.remove("d"));
  EXPECT_FALSE(tree.remove(""));
  EXPECT_EQ(names(""), "a.m ");
  EXPECT_EQ(read("work/a.m"), "new");
}

TEST_F(DiskTreeTest, NoPathLeadsOutside) {
  fs::create_directory_symlink(base + "/work_private", base + "/work/linked");
  fs::create_symlink(base + "/work_private/secret", base + "/work/link.m");
  fs::create_directory_symlink("..", base + "/work/sub/up");
  ASSERT_EQ(mkfifo((base + "/work/pipe").c_str(), 0600), 0);
  EXPECT_EQ(names(""), "a.m sub ");  // neither links nor pipes
  const std::string nul("a.m\0x", 5), longName(300, 'a');
  for (const std::string& path :
       {std::string(".."), std::string("../work_private"), std::string("../work_private/secret"), base + "/work/a.m",
        std::string("sub/../../work_private/secret"), std::string("sub/../a.m"), std::string("./a.m"),
        std::string("sub//b.m"), std::string("a.m/"), std::string("linked"), std::string("linked/secret"),
        std::string("link.m"), std::string("pipe"), std::string("sub/up"), std::string("sub/up/a.m"),
        std::string("%2e%2e/work_private/secret"), std::string("C:\\"), nul, longName}) {
    EXPECT_FALSE(tree.list(path)) << path;
    EXPECT_FALSE(tree.status(path)) << path;
    EXPECT_FALSE(tree.read(path)) << path;
    EXPECT_FALSE(tree.replace(path, "x", always)) << path;
    EXPECT_FALSE(tree.move(path, "moved")) << path;
    EXPECT_FALSE(tree.remove(path)) << path;
    EXPECT_FALSE(tree.create(path + "/new", "x")) << path;
    EXPECT_FALSE(tree.makeFolder(path + "/new")) << path;
    EXPECT_FALSE(tree.move("a.m", path + "/new")) << path;
  }
  EXPECT_FALSE(tree.create("link.m", "x"));
  EXPECT_EQ(read("work_private/secret"), "secret");
  EXPECT_TRUE(tree.remove("sub"));  // the link in it goes, not what it points to
  EXPECT_EQ(read("work/a.m"), "a");
}

TEST_F(DiskTreeTest, AFolderReplacedByALinkMeanwhileLeadsNowhere) {
  std::atomic<bool> ends = false;
  std::thread attacker([&] {
    const std::string folder = base + "/work/sub", away = base + "/work/away";
    while (!ends) {
      fs::rename(folder, away);
      fs::create_directory_symlink(base + "/work_private", folder);
      fs::remove(folder);
      fs::rename(away, folder);
    }
  });
  int escaped = 0;
  for (int k = 0; k < 3000; ++k) {
    escaped += tree.read("sub/secret").has_value();
    escaped += tree.replace("sub/secret", "x", always);
    tree.create("sub/new" + std::to_string(k), "x");
    escaped += tree.remove("sub/secret");
  }
  ends = true;
  attacker.join();
  EXPECT_EQ(escaped, 0);
  EXPECT_TRUE(tree.create("sub/last", "x"));
  EXPECT_EQ(std::distance(fs::directory_iterator(base + "/work_private"), fs::directory_iterator()), 1);
  EXPECT_EQ(read("work_private/secret"), "secret");
}

TEST_F(DiskTreeTest, AFailedWriteLeavesTheOldFileAndNoOther) {
  // No file may grow past one byte here, as on a full disk.
  const pid_t child = fork();
  if (child == 0) {
    const rlimit limit = {1, 1};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const bool refused = !tree.replace("a.m", "longer", always) && !tree.create("new.m", "longer");
    _exit(refused ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(names(""), "a.m sub ");
  EXPECT_EQ(read("work/a.m"), "a");
}

TEST_F(DiskTreeTest, ChangesFromOutsideAreTold) {
  LoopQueue queue;
  std::string told;
  InotifyWatcher watcher(tree, queue, [&](const std::string& folder) { told += "[" + folder + "]"; });
  EXPECT_TRUE(watcher.watch(""));
  EXPECT_TRUE(watcher.watch("sub"));
  EXPECT_TRUE(watcher.watch("sub"));
  EXPECT_FALSE(watcher.watch("../work_private"));
  const auto waitFor = [&](const std::string& expected) {
    for (int k = 0; k < 500 && told != expected; ++k) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      queue.runReady();
    }
    EXPECT_EQ(told, expected);
    told.clear();
  };
  write("work/sub/new.m", "1");
  write("work/sub/other.m", "1");
  waitFor("[sub]");  // a burst is told once
  fs::remove(base + "/work/a.m");
  waitFor("[]");
  watcher.unwatch("sub");
  write("work/sub/more.m", "1");
  write("work/b.m", "1");
  waitFor("[]");
}

}  // namespace
}  // namespace kelo::platform::native
