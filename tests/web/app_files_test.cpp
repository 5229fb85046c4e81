// The app's files by their exact paths, and the address as a code.
#include "shells/web/app_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "shells/web/qr_code.h"

namespace kelo::web {
namespace {

namespace fs = std::filesystem;

TEST(AppFiles, OnlyWhatTheBuildMadeIsThere) {
  std::string folder = (fs::temp_directory_path() / "kelo_app.XXXXXX").string();
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  fs::create_directory(folder + "/assets");
  for (const char* name :
       {"index.html", "index.html.br", "assets/app-1A.js", "assets/app-1A.js.gz", "unknown.kind", "key"}) {
    std::ofstream(folder + "/" + name) << name;
  }
  const AppFiles files = AppFiles::read(folder);
  const AppFile* page = files.find("/");
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(page, files.find("/index.html"));
  EXPECT_EQ(page->brotli, "index.html.br");
  EXPECT_EQ(page->gzip, std::nullopt);
  EXPECT_FALSE(page->isHashed);
  const AppFile* script = files.find("/assets/app-1A.js");
  ASSERT_NE(script, nullptr);
  EXPECT_EQ(script->type, "text/javascript; charset=utf-8");
  EXPECT_TRUE(script->isHashed);
  EXPECT_NE(script->tag, page->tag);
  for (const char* path : {"", "index.html", "/index.html.br", "/unknown.kind", "/key", "/assets", "/assets/",
                           "/assets/../index.html", "//index.html", "/%69ndex.html", "/index.html/"}) {
    EXPECT_EQ(files.find(path), nullptr) << path;
  }
  fs::remove_all(folder);
  EXPECT_TRUE(AppFiles::read(folder).isEmpty());
}

TEST(QrCode, IsASquareWithItsThreeEyes) {
  const std::string code = qrCode("http://192.168.178.20:45678/#aB3dEfGh1jKlMnOpQrStUvWxYz-_aB3dEfGh1jKlMnO");
  const auto lines = std::count(code.begin(), code.end(), '\n');
  EXPECT_EQ(lines, (33 + 8 + 1) / 2);                       // version 4 has 33 modules a side, with margins of 4
  EXPECT_NE(code.find("    █▀▀▀▀▀█ "), std::string::npos);  // an eye
  EXPECT_EQ(qrCode(std::string(5000, 'x')), "");
}

}  // namespace
}  // namespace kelo::web
