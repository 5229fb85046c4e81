// Saved figures on a file system in memory.
#include "figures/figure_documents.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "figures/coding/coded_form.h"
#include "platform/memory/twins.h"
#include "platform/memory_file_system.h"

namespace kelo::figures {
namespace {

struct FigureDocumentsTest : ::testing::Test {
  /// The title of the alert, or "" without one.
  template <class F>
  std::string alertOf(F action) {
    try {
      action();
    } catch (const Alert& alert) {
      return alert.title + ": " + alert.text;
    }
    return "";
  }
  std::string alertOfSaving(const std::string& name, const Figure& figure) {
    return alertOf([&] { documents.save(name, figure, "png"); });
  }
  std::set<std::string> names() {
    std::set<std::string> result;
    for (const FigureData& data : documents.loadAll()) result.insert(data.fileNameWithoutExt);
    return result;
  }
  std::string fileOf(std::optional<std::string> appVersion) {
    FigureData data = documents.described("x", PlotData(), "");
    data.appVersion = std::move(appVersion);
    return codedForm(data);
  }

  /// One file can be said to be larger than what is read.
  struct Files : platform::MemoryFileSystem {
    std::string hugeFile;
    std::optional<int64_t> fileSize(const std::string& path) const override {
      return path == hugeFile ? int64_t{1} << 40 : MemoryFileSystem::fileSize(path);
    }
  };
  Files files;
  platform::ManualClock clock;
  std::vector<std::string> log;
  FigureDocuments documents{files, clock, {"0.1.0", "6.1", "Linux"}, [this](const auto& line) { log.push_back(line); }};
};

TEST_F(FigureDocumentsTest, savesShowsAndDeletes) {
  EXPECT_EQ(alertOf([&] { documents.loadAll(); }), "Failed to Load: Default figure directory not found.");
  ASSERT_TRUE(documents.makeFolder());
  EXPECT_TRUE(documents.loadAll().empty());

  Line line;
  line.points = {{1, 2}, {3, 4}};
  const Figure plot = PlotData({line});
  EXPECT_EQ(alertOfSaving("Fig_1", plot), "");
  EXPECT_EQ(alertOfSaving("Fig_1", SurfData()), "Failed to Save: Figure named \"Fig_1\" already exists.");
  EXPECT_EQ(alertOfSaving("surface", SurfData()), "");
  EXPECT_EQ(documents.save("none", Figure(), ""), std::nullopt);

  const std::vector<FigureData> figures = documents.loadAll();
  ASSERT_EQ(figures.size(), 2u);
  EXPECT_EQ(figures[0].figure(), plot);
  EXPECT_EQ(figures[0].thumbnail.data.bytes, "png");
  EXPECT_EQ(figures[0].timeStamp, 730899015.25);
  EXPECT_EQ(figures[0].platform, "Linux");
  EXPECT_NE(figures[0].id.text, documents.loadAll()[0].id.text);

  documents.remove(figures[0]);
  EXPECT_EQ(names(), std::set<std::string>{"surface"});
  EXPECT_EQ(alertOf([&] { documents.remove(figures[0]); }),
            "Aborted: Error occurred while attempting to delete the figure named \"Fig_1\"");
}

TEST_F(FigureDocumentsTest, refusesNamesAndNumbers) {
  for (const char* name : {"1fig", "_fig", "fig 1", "", "../x", "é"}) {
    EXPECT_EQ(alertOfSaving(name, PlotData()),
              "Invalid File Name: Only letters, numbers, and underscore are allowed in a file name. "
              "A valid name cannot start with a number or underscore.")
        << name;
  }
  Line line;
  line.points = {{1, INFINITY}};
  EXPECT_EQ(alertOfSaving("x", PlotData({line})),
            "Failed to Save: Error occurred while writing data to the figure file.");
  EXPECT_FALSE(files.exists(".FIGURES/x.kfig"));
}

TEST_F(FigureDocumentsTest, leavesOutWhatIsOlderOrBroken) {
  files.writeFile(".FIGURES/older.kfig", fileOf("2.9"));
  files.writeFile(".FIGURES/null.kfig", fileOf(std::nullopt));
  files.writeFile(".FIGURES/word.kfig", fileOf("3x.0"));
  EXPECT_TRUE(names().empty());
  EXPECT_TRUE(log.empty());
  files.writeFile(".FIGURES/three.kfig", fileOf("3.0"));
  files.writeFile(".FIGURES/ten.kfig", fileOf("10"));
  files.writeFile(".FIGURES/other.KFIG", fileOf("3.0"));
  files.writeFile(".FIGURES/broken.kfig", "{");
  files.makeDirectory(".FIGURES/folder.kfig");
  EXPECT_EQ(names(), (std::set<std::string>{"three", "ten"}));
  EXPECT_EQ(log, (std::vector<std::string>{"json error=broken.kfig: a text is expected at byte 1",
                                           "json error=folder.kfig: the file cannot be read"}));
  files.hugeFile = ".FIGURES/ten.kfig";
  log.clear();
  EXPECT_EQ(names(), std::set<std::string>{"three"});
  EXPECT_EQ(log.back(), "json error=ten.kfig: the file is too large");
  EXPECT_EQ(alertOfSaving("broken", PlotData()), "Failed to Save: Figure named \"broken\" already exists.");
}

}  // namespace
}  // namespace kelo::figures
