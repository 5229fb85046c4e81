// The files panel over a tree in memory: operations, their alerts, orders, search.
#include "files/file_panel.h"

#include <gtest/gtest.h>

#include <functional>

#include "files/file_search.h"
#include "platform/memory/twins.h"
#include "platform/memory_file_tree.h"

namespace kelo {
namespace {

class FilePanelTest : public testing::Test {
 protected:
  platform::MemoryFileSystem files;
  platform::MemoryFileTree tree{files};
  platform::MemoryStore store;
  FilePanel panel{tree, store, "/home/a b"};

  /// "TITLE | TEXT" of the alert that an action gives, or "none".
  static std::string alertOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const Alert& alert) {
      return alert.title + " | " + alert.text;
    }
    return "none";
  }

  /// All files and folders, with contents, to see that nothing has changed.
  std::string snapshot(const std::string& folder = "") const {
    std::string all;
    const auto entries = *tree.list(folder);
    for (const auto& entry : entries) {
      const std::string path = folder.empty() ? entry.name : folder + "/" + entry.name;
      all += path + (entry.status->isFolder ? "/ " + snapshot(path) : "=" + *tree.read(path) + " ");
    }
    return all;
  }

  std::string order(SortBy sorting) {
    panel.setSortedBy(sorting);
    std::string names;
    for (const FileItem& item : panel.list("")) names += (names.empty() ? "" : " ") + item.relativePath;
    return names;
  }
};

constexpr const char* kFileRule =
    "Invalid File Name | Only letters, numbers, and underscore are allowed in a file name. A valid name cannot start "
    "with a number or underscore.";
constexpr const char* kFolderRule =
    "Invalid Folder Name | Only letters, numbers, and underscore are allowed in a folder name. A folder name cannot "
    "start with a number or underscore, and cannot contain a file extension.";

TEST_F(FilePanelTest, SortsInEightWays) {
  for (const auto& [name, bytes] : std::map<std::string, std::string>{
           {"b.m", "12"}, {"a.txt", "1234"}, {"a.m", "1"}, {"C.csv", "123"}, {"plain", "1"}, {"a_1.m", "12"}}) {
    files.writeFile(name, bytes);
  }
  files.makeDirectory("dir");
  files.makeDirectory("sub.v2");
  files.writeFile(".hidden", "");
  tree.modified = {{"b.m", 30}, {"a.txt", 10}, {"dir", 20}, {"C.csv", 10}};
  const struct {
    SortBy sorting;
    const char* expected;
  } kRows[] = {
      {SortBy::dateDesc, "b.m dir a.txt C.csv a.m a_1.m plain sub.v2"},
      {SortBy::nameDesc, "sub.v2 plain dir C.csv b.m a_1.m a.m a.txt"},
      {SortBy::typeDesc, "sub.v2 a.txt a.m a_1.m b.m C.csv dir plain"},
      {SortBy::sizeDesc, "dir sub.v2 a.txt C.csv a_1.m b.m a.m plain"},
      {SortBy::dateAsc, "a.txt C.csv dir b.m a.m a_1.m plain sub.v2"},
      {SortBy::nameAsc, "a.m a.txt a_1.m b.m C.csv dir plain sub.v2"},
      {SortBy::typeAsc, "dir plain C.csv a.m a_1.m b.m a.txt sub.v2"},
      {SortBy::sizeAsc, "a.m plain a_1.m b.m C.csv a.txt dir sub.v2"},
  };
  for (const auto& row : kRows) EXPECT_EQ(order(row.sorting), row.expected) << static_cast<int>(row.sorting);

  store.set("sortedBy", int64_t{9});
  EXPECT_EQ(panel.sortedBy(), SortBy::nameAsc);
  EXPECT_FALSE(sortByOf(8));
  EXPECT_FALSE(sortByOf(-1));
  EXPECT_LT(compareNames("\xC3\xA9tude", "f"), 0);  // accents decide last
  EXPECT_LT(compareNames("a", "A"), 0);
  EXPECT_LT(compareNames("A", "b"), 0);
}

TEST_F(FilePanelTest, ItemsTellOfTheirFiles) {
  files.makeDirectory("d");
  files.writeFile("d/x.m", "abc");
  tree.modified["d/x.m"] = 978307200 + 86400.5;
  const FileItem item = panel.list("d").at(0);
  EXPECT_EQ(item.id, "d/x.m");
  EXPECT_EQ(item.url, "file:///home/a%20b/d/x.m");
  EXPECT_EQ(item.size, 3);
  EXPECT_EQ(item.lastModifiedDate, 86400.5);
  EXPECT_TRUE(item.dowloaded);
  EXPECT_EQ(panel.list("").at(0).size, std::nullopt);
}

TEST_F(FilePanelTest, MakesAndRenames) {
  EXPECT_EQ(panel.newFolder("", "sub"), "sub");
  EXPECT_EQ(panel.newFile("sub", "f_1"), "sub/f_1.m");
  EXPECT_EQ(panel.newFile("", "data.csv"), "data.csv");
  EXPECT_EQ(snapshot(), "data.csv= sub/ sub/f_1.m=%% f_1\n%% Enter your code here.\n ");
  EXPECT_EQ(panel.rename("sub/f_1.m", "g"), "sub/g.m");
  EXPECT_EQ(panel.rename("data.csv", "data.txt"), "data.txt");
  EXPECT_EQ(panel.rename("sub", "dir"), "dir");
  EXPECT_EQ(panel.duplicate("dir"), "dir_copy");
  EXPECT_EQ(panel.duplicate("dir/g.m"), "dir/g_copy.m");
  EXPECT_EQ(panel.duplicate("dir/g.m"), "dir/g_copy2.m");
  EXPECT_EQ(panel.copy({"data.txt", "dir"}, "dir_copy"),
            (std::vector<std::string>{"dir_copy/data.txt", "dir_copy/dir"}));
  EXPECT_EQ(panel.move({"dir_copy/data.txt"}, "dir"), std::vector<std::string>{"dir/data.txt"});
  panel.remove({"dir_copy/g.m"});
  EXPECT_EQ(snapshot("dir_copy"),
            "dir_copy/dir/ dir_copy/dir/g.m=%% f_1\n%% Enter your code here.\n "
            "dir_copy/dir/g_copy.m=%% f_1\n%% Enter your code here.\n "
            "dir_copy/dir/g_copy2.m=%% f_1\n%% Enter your code here.\n ");
}

TEST_F(FilePanelTest, FailuresAreAlertsAndChangeNothing) {
  files.makeDirectory("d/e");
  for (const std::string name : {"a.m", "d/a.m", "d/b.m"}) files.writeFile(name, name);
  files.writeFile("picture.png", std::string("\x89PNG\0", 5));
  const std::string before = snapshot(), longName(300, 'a');
  const std::string revision = panel.read("a.m").revision;
  const struct {
    std::function<void()> action;
    std::string expected;
  } kRows[] = {
      {[&] { panel.newFile("", "1a"); }, kFileRule},
      {[&] { panel.newFile("", ""); }, kFileRule},
      {[&] { panel.newFile("", "a."); }, kFileRule},
      {[&] { panel.newFile("", "d/x"); }, kFileRule},
      {[&] { panel.newFile("", longName); }, kFileRule},
      {[&] { panel.newFile("", "a.exe"); }, "Invalid File Name | Only m, csv, txt or dat file"},
      {[&] { panel.newFile("", "a"); }, "Invalid File Name | File \"a.m\" already exists in the destination folder"},
      {[&] { panel.newFile("none", "a"); }, "Failed to create file a.m | "},
      {[&] { panel.newFolder("", "data.v2"); }, "Invalid Folder Name | A folder name should have no file extension"},
      {[&] { panel.newFolder("", ".."); }, kFolderRule},
      {[&] { panel.rename("a.m", "_b"); }, kFileRule},
      {[&] { panel.rename("none.m", "b"); }, "Failed to rename file none.m | "},
      {[&] { panel.rename("d/a.m", "b"); },
       "Failed to rename file a.m | File \"b.m\" already exists in the destination folder"},
      {[&] { panel.rename("", "b"); }, "Failed to rename folder  | "},
      {[&] { panel.duplicate("none.m"); }, "Failed to duplicate none.m | "},
      {[&] { panel.copy({"d"}, "d/e"); }, "Failed to Copy | Cannot copy a folder to its child folder"},
      {[&] { panel.copy({"d"}, "d"); }, "Failed to Copy | Cannot copy a folder to its child folder"},
      {[&] {
         panel.copy({"picture.png", "a.m"}, "d");
       },
       "Failed to Copy | File \"a.m\" already exists in the destination folder"},
      {[&] {
         panel.copy({"a.m", "d/a.m"}, "d/e");
       },
       "Failed to Copy | File \"a.m\" already exists in the destination folder"},
      {[&] { panel.move({"d"}, "d/e"); }, "Failed to Move | Cannot move a folder to its child folder"},
      {[&] { panel.move({"a.m"}, "none"); }, "Failed to Move | \"none\" does not exist"},
      {[&] {
         panel.remove({"a.m", "../a.m"});
       },
       "Failed to delete a.m | "},
      {[&] { panel.remove({""}); }, "Failed to delete  | "},
      {[&] { panel.importFile("", "a.m", "x"); },
       "Import Aborted | File \"a.m\" already exists in the destination folder"},
      {[&] { panel.importFile("", "b.png", std::string_view("\0", 1)); },
       "Import Aborted | Importing a file of non-text type (b.png)"},
      {[&] { panel.importFile("", "b.txt", "\xFF"); }, "Import Aborted | Importing a file of non-text type (b.txt)"},
      {[&] { panel.importFile("", "../b.txt", "x"); }, "Import Aborted | Error occurred while importing \"../b.txt\""},
      {[&] { panel.read("picture.png"); }, "Failed to load \"picture.png\" | The file is not a text file"},
      {[&] { panel.read("d"); }, "Failed to load \"d\" | "},
      {[&] { panel.write("none.m", "x", {}); }, "Failed to save \"none.m\" | The file does not exist any more"},
      {[&] { panel.write("a.m", "x", "0-0"); },
       "Failed to save \"a.m\" | The file has been changed by someone else since it was opened"},
      {[&] { panel.list("../d"); }, "Failed to enumerate directory ../d | "},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(alertOf(row.action), row.expected);
    EXPECT_EQ(snapshot(), before) << row.expected;
  }
  tree.isReadOnly = true;
  EXPECT_EQ(alertOf([&] { panel.write("a.m", "x", revision); }), "Failed to save \"a.m\" | ");
  EXPECT_EQ(alertOf([&] { panel.newFile("", "n"); }), "Failed to create file n.m | ");
  EXPECT_EQ(alertOf([&] { panel.copy({"d/e"}, ""); }), "Failed to Copy | Unexpected error occurred");
  EXPECT_EQ(alertOf([&] { panel.importFile("", "n.md", "x"); }),
            "Import Aborted | Error occurred while importing \"n.md\"");
  EXPECT_EQ(snapshot(), before);
}

TEST_F(FilePanelTest, NothingHiddenOrOutsideIsReached) {
  files.writeFile(".FIGURES/a.kfig", "{}");
  for (const std::string path : {".FIGURES", ".FIGURES/a.kfig", "..", "a/../../b", "/etc/passwd", "%2e%2e", "./a",
                                 "a//b", "C:\\", "CON", "a.", "..."}) {
    EXPECT_NE(alertOf([&] { panel.read(path); }), "none") << path;
    EXPECT_NE(alertOf([&] { panel.write(path, "x", {}); }), "none") << path;
    EXPECT_NE(alertOf([&] { panel.remove({path}); }), "none") << path;
    EXPECT_NE(alertOf([&] { panel.copy({path}, ""); }), "none") << path;
    EXPECT_NE(alertOf([&] { panel.newFile(path, "x"); }), "none") << path;
  }
  EXPECT_TRUE(panel.list("").empty());
}

TEST_F(FilePanelTest, RevisionsKeepTwoEditorsApart) {
  files.writeFile("a.m", "one");
  const std::string first = panel.read("a.m").revision;
  const std::string second = panel.write("a.m", "two", first);
  EXPECT_NE(alertOf([&] { panel.write("a.m", "three", first); }), "none");
  EXPECT_EQ(panel.read("a.m").text, "two");
  EXPECT_EQ(panel.read("a.m").revision, second);
  panel.write("a.m", "four", std::nullopt);
  EXPECT_EQ(panel.read("a.m").text, "four");
}

TEST_F(FilePanelTest, DeletesFoldersWithAllThatIsInThem) {
  files.writeFile("d/e/f.m", "");
  files.writeFile("d/g.m", "");
  files.writeFile("h.m", "");
  panel.remove({"d", "d/e/f.m", "d"});
  EXPECT_EQ(snapshot(), "h.m= ");
}

TEST_F(FilePanelTest, SearchesNamesAndContents) {
  files.writeFile("d/Zeta.m", "x = 1;\r\ny = ZETA(\xF0\x9D\x84\x9E, zeta)\n");
  files.writeFile("data.bin", std::string("zeta\0", 5));
  files.writeFile(".hidden", "zeta");
  FileSearch search(tree, "Zeta");
  while (search.step()) {
  }
  std::string found;
  for (const FileHit& hit : search.hits) {
    found += hit.path + ":" + std::to_string(hit.line) + ":" + std::to_string(hit.start) + "+" +
             std::to_string(hit.length) + " " + hit.preview + "\n";
  }
  EXPECT_EQ(found,
            "d/Zeta.m:0:0+4 Zeta.m\n"
            "d/Zeta.m:2:4+4 y = ZETA(\xF0\x9D\x84\x9E, zeta)\n"
            "d/Zeta.m:2:13+4 y = ZETA(\xF0\x9D\x84\x9E, zeta)\n");
  EXPECT_FALSE(FileSearch(tree, "").step());

  files.writeFile("long.txt", std::string(5000, 'q'));
  FileSearch many(tree, "q");
  while (many.step()) {
  }
  EXPECT_EQ(many.hits.size(), FileSearch::kMostHits);
  EXPECT_LE(many.hits.back().preview.size(), 200u);
}

}  // namespace
}  // namespace kelo
