#include <gtest/gtest.h>

#include "docs/doc_search.h"
#include "docs/page_loader.h"
#include "docs/terminal_text.h"
#include "platform/memory_file_system.h"

namespace kelo::docs {
namespace {

/// Three pages in a folder, one of them broken.
struct Pages {
  Pages() {
    std::vector<DocFilesLoader::FileInfo> infos = {{"functions", "Functions & more", true, ""},
                                                   {"functions/sum.html", "sum", false, "html"},
                                                   {"functions/cumsum.html", "cumsum, Cumsum", false, "html"},
                                                   {"functions/bad.html", "bad", false, "html"},
                                                   {"functions/notes.txt", "notes", false, "txt"}};
    files.writeFile("docs.plist", propertyList(infos));
    files.writeFile("html_files/functions/sum.html",
                    "<html>\n<head>\n</head>\n<body>\n<div>[TOC]</div><p>Sums</p><div>[TOC]</div>\n</body>\n</html>\n");
    files.writeFile("html_files/functions/bad.html", "<html>\xff</html>");
    files.writeFile("html_files/functions/notes.txt", "notes");
    files.writeFile("html_files/secret.html", "secret");
    files.writeFile("page_texts/functions/sum.md", "# sum\n\nAdds.\n");
    files.writeFile("search.json", searchIndex({{"guide/text.html", "Text", "Straße and SUM of it\nend"},
                                                {"functions/cumsum.html", "cumsum", "Running sum"},
                                                {"functions/sum.html", "sum", "Adds. A sum."},
                                                {"guide/late.html", "Late", std::string(200, 'x') + " a sum here"}}));
  }

  platform::MemoryFileSystem files;
};

std::string foundIn(DocSearch::Scope scope, const std::string& text) {
  const Pages pages;
  std::string names;
  for (const auto& item : DocSearch(pages.files).find(scope, text))
    names += item.displayName + "|" + item.excerpt + "\n";
  return names;
}

TEST(DocFiles, TheTreeIsReadInItsOrderAndNamesLeadToPages) {
  const Pages pages;
  const DocFilesLoader files(pages.files);
  ASSERT_EQ(files.files().size(), 5u);
  EXPECT_EQ(files.files()[0].displayName, "Functions & more");
  EXPECT_TRUE(files.files()[0].isDir);
  EXPECT_EQ(files.pathOfName("sum"), "functions/sum.html");
  for (const char* spelling : {"cumsum", "Cumsum"}) EXPECT_EQ(files.pathOfName(spelling), "functions/cumsum.html");
  for (const char* other : {"prod", "cum", "cumsum, Cumsum", "Functions & more", ""})
    EXPECT_FALSE(files.pathOfName(other));
  EXPECT_TRUE(DocFilesLoader(platform::MemoryFileSystem()).files().empty());
}

TEST(DocFiles, ABrokenDescriptionGivesNoFiles) {
  for (const char* text : {"", "<plist", "<plist version=\"1.0\"><string>x</string></plist>"}) {
    platform::MemoryFileSystem files;
    files.writeFile("docs.plist", text);
    EXPECT_TRUE(DocFilesLoader(files).files().empty()) << text;
  }
}

TEST(PageLoader, PutsHeadFooterAndSizeAroundThePage) {
  const Pages pages;
  const DocFilesLoader files(pages.files);
  EXPECT_EQ(loadPage(files, "functions/sum.html", {DocStyle::dark, 120}),
            "<html data-theme=\"dark\">\n<head>\n"
            "<link rel=\"stylesheet\" href=\"../_styles/_css/github.css\" media=\"all\">\n"
            "<link rel=\"stylesheet\" href=\"../_styles/highlight/styles/github-dark.min.css\">\n"
            "<script src=\"../_styles/highlight/highlight.min.js\"></script>\n"
            "<script>hljs.highlightAll();</script>\n"
            "<meta name=\"viewport\" content=\"initial-scale=1, viewport-fit=cover\">\n"
            "<script nomodule src=\"../_styles/es6/minified.js\"></script>\n"
            "<script id=\"MathJax-script\" async src=\"../_styles/mathjax/tex-mml-chtml.js\"></script>\n"
            "</head>\n<body class=\"markdown-body\"><br>\n<p>Sums</p>\n"
            "<footer><p>Last updated: version " KELO_VERSION "</p></footer>\n"
            "<script src=\"../_styles/_js/search.js\"></script>\n"
            "<script>document.getElementsByTagName('body')[0].style.webkitTextSizeAdjust='120%'</script>\n"
            "</body>\n</html>\n");
}

TEST(PageLoader, WhatIsNoReadablePageStaysBlank) {
  const Pages pages;
  const DocFilesLoader files(pages.files);
  for (const char* path :
       {"functions/bad.html", "functions/cumsum.html", "functions/notes.txt", "secret.html", "functions",
        "../functions/sum.html", "functions/../functions/sum.html", "", "/etc/passwd"}) {
    EXPECT_EQ(loadPage(files, path, {}), "") << path;
  }
}

TEST(DocSearch, TitlesComeFirstThenThePlaceInThePage) {
  EXPECT_EQ(foundIn(DocSearch::Scope::title, "SUM"), "sum|\ncumsum|\n");
  EXPECT_EQ(foundIn(DocSearch::Scope::content, "sum"),
            "sum|Adds. A sum.\ncumsum|Running sum\nText|Straße and SUM of it end\n"
            "Late|…" + std::string(37, 'x') + " a sum here\n");
  EXPECT_EQ(foundIn(DocSearch::Scope::content, "STRAßE"), "Text|Straße and SUM of it end\n");
  EXPECT_EQ(foundIn(DocSearch::Scope::content, ""), "");
  EXPECT_EQ(foundIn(DocSearch::Scope::content, "prod"), "");
}

struct Rendered {
  const char* markdown;
  const char* text;
};

TEST(TerminalText, RendersEachKindOfBlock) {
  const Rendered rows[] = {
      {"# sum\n\nAdds the `A(k)` of an\narray *twice* over.", "sum\n\nAdds the A(k) of an\narray twice over.\n"},
      {"```kelo\n> x = 1\nx =\n 1.0000\n\n\\> no command\n```", "  > x = 1\n  x =\n   1.0000\n\n  > no command\n"},
      {"- one\n- two words that will go on\n\n3. third", "- one\n- two words that will go\n  on\n\n3. third\n"},
      {"| Name | Is |\n|---|---|\n| `A` | an |\n| long | of two |", "Name  Is\nA     an\nlong  of two\n"},
      {"| Name | Is |\n|---|---|\n| `a_long_name` | what it means |", "Name\n    Is\na_long_name\n    what it means\n"},
      {"$\\frac{a}{b} \\le \\pi$ costs \\$5", "{a}/{b} ≤ π costs $5\n"},
      {"![A wave](w.svg)\n\n[text](t.md)\n\n---", "[Figure: A wave]\n\ntext\n\n--------------------\n"},
      {"averyveryverylongwordindeed x", "averyveryverylongwordindeed\nx\n"},
      {"<b>&lt;</b>", "<b><</b>\n"},
  };
  for (const auto& [markdown, text] : rows) EXPECT_EQ(terminalText(parseMarkdown(markdown), {24, false}), text);
}

TEST(TerminalText, ColourIsOnlyThereWhereItIsWanted) {
  EXPECT_EQ(terminalText(parseMarkdown("# a\n\n`b`, c"), {20, true}), "\x1b[1ma\x1b[0m\n\n\x1b[36mb\x1b[0m, c\n");
}

TEST(TerminalText, APageIsFoundByItsName) {
  const Pages pages;
  const DocFilesLoader files(pages.files);
  EXPECT_EQ(nameText(files, "sum", {}), "sum\n\nAdds.\n");
  EXPECT_FALSE(nameText(files, "cumsum", {}));
}

}  // namespace
}  // namespace kelo::docs
