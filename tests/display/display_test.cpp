#include "display/display.h"

#include <gtest/gtest.h>

#include "display/display_items.h"
#include "values/arrays.h"
#include "values/function_bodies.h"

namespace kelo {
namespace {

using namespace testing;

// 5 digits: 8 columns of doubles in 80 cells.
Display::Parameters cells(double count, int nDigits = 5) {
  Display::Parameters parameters;
  parameters.consoleViewWidth = count * CellMeasure::kPointsPerCell;
  parameters.nDigits = nDigits;
  return parameters;
}

StructArray structure(std::initializer_list<std::pair<const char*, Storable>> fields) {
  StructArray array;
  for (const auto& [name, value] : fields) {
    const int64_t field = array.ensureField(Name::intern(name));
    array.writableValue(0, field) = value;
  }
  return array;
}

FunctionHandle anonymous(const char* displayText) {
  auto function = makeRef<AnonymousFunction>();
  function->body = makeRef<HandleBody>();
  function->body->displayText = displayText;
  return FunctionHandle::anonymous(std::move(function));
}

LocalFunction localFunction(const char* name) {
  auto file = makeRef<LocalFunctionFile>();
  file->functions.push_back({Name::intern(name), {}, {}, nullptr});
  return {std::move(file), 0};
}

TEST(Display, ShowsArrays) {
  const struct {
    Storable value;
    const char *named, *unnamed;
  } rows[] = {
      // empty, of whatever shape
      {DoubleArray(), "x =\n [] (double array)", " [] (double array)"},
      {LogicalArray(), "x =\n [] (logical array)", " [] (logical array)"},
      {ComplexDoubleArray(SizeVector{2, 0, 3}, {}), "x =\n [] (complex-double array)", " [] (complex-double array)"},
      {charRow(""), "x =\n [] (char array)", " [] (char array)"},
      // scalars and scale
      {num(5), "x = \n 5.0000", " 5.0000"},
      {num(-0.0), "x = \n 0.0000", " 0.0000"},
      {num(1e6), "x = 1e6 × \n 1.0000", " 1e6 × \n 1.0000"},
      {num(0.001), "x = 1e-3 × \n 1.0000", " 1e-3 × \n 1.0000"},
      {whole(1000000), "x = 1e6 × \n 1.0000", " 1e6 × \n 1.0000"},
      // rows and matrices
      {row({1, -2, 1e6}), "x = 1e6 × \n 0.0000  -0.0000   1.0000", " 1e6 × \n 0.0000  -0.0000   1.0000"},
      {shaped({2, 2}, {1, 3, 20, 400}), "x = \n 1.0000   20.000\n 3.0000   400.00",
       " 1.0000   20.000\n 3.0000   400.00"},
      {row({kInf, 1e-3}), "x = 1e-3 × \n Inf      1.0000", " 1e-3 × \n Inf      1.0000"},
      // logical, complex, char
      {LogicalArray({2, 2}, {true, false, false, true}), "x = \n1  0\n0  1", "1  0\n0  1"},
      {complexShaped({1, 2}, {{1, 2}, {-3, -0.5}}), "x = \n 1.0000 + 2.0000i  -3.0000 - 0.5000i",
       " 1.0000 + 2.0000i  -3.0000 - 0.5000i"},
      {std::move(charRow("acbd")).reshaped({2, 2}), "x = \nab\ncd", "ab\ncd"},
      // pages
      {shaped({1, 2, 2}, {1, 2, 3, 4}), "x(:, :, 1) = \n 1.0000   2.0000\n\nx(:, :, 2) = \n 3.0000   4.0000",
       "(:, :, 1) = \n 1.0000   2.0000\n\n(:, :, 2) = \n 3.0000   4.0000"},
      {shaped({1, 1, 2, 2}, {1e5, 2e5, 3e5, 4e5}),
       "x(:, :, 1, 1) = 1e5 ×\n 1.0000\n\nx(:, :, 2, 1) = 1e5 ×\n 2.0000\n\n"
       "x(:, :, 1, 2) = 1e5 ×\n 3.0000\n\nx(:, :, 2, 2) = 1e5 ×\n 4.0000",
       "(:, :, 1, 1) = 1e5 ×\n 1.0000\n\n(:, :, 2, 1) = 1e5 ×\n 2.0000\n\n"
       "(:, :, 1, 2) = 1e5 ×\n 3.0000\n\n(:, :, 2, 2) = 1e5 ×\n 4.0000"},
  };
  for (const auto& r : rows) {
    EXPECT_EQ(Display(r.value, "x", cells(80)).displayText(), r.named);
    EXPECT_EQ(Display(r.value, std::nullopt, cells(80)).displayText(), r.unnamed);
    EXPECT_EQ(Display::dispValue(r.value, cells(80)).displayText(), r.unnamed);
  }
}

TEST(Display, ShowsStructures) {
  const DoubleArray big(SizeVector(2, 2), 1e6);
  const struct {
    Storable value;
    const char* text;
  } rows[] = {
      {StructArray(SizeVector(0, 0), {}), "s =\n [] (struct)"},
      {StructArray(), "s =\n struct with no field\n"},
      {structure({{"a", num(5)}}), "s =\n struct with field:\n    a: Double [1 x 1]  5.0000\n"},
      // clang-format off
      {structure({{"name", charRow("Ann")}, {"x", row({1, -2, 1e6})}, {"m", big},
                  {"f", anonymous("@(x) x+1")}, {"none", Storable()}, {"noText", charRow("")}}),
       "s =\n struct with fields:\n"
       "      name: Char [1 x 3] 'Ann'\n"
       "         x: Double [1 x 3] × 1e6  0.0000  -0.0000   1.0000\n"
       "         m: Double [2 x 2] × 1e6\n         f: @(x) x+1\n"
       "      none: Empty double array\n    noText: Empty char array\n"},
      {structure({{"i", whole(3)}, {"l", truth(true)}, {"z", complex(1e-3, 0)},
                  {"c", std::move(charRow("acbd")).reshaped({2, 2})}, {"s", StructArray(SizeVector{2, 1, 2}, {})},
                  {"e", StructArray(SizeVector(0, 0), {})}}),
       "s =\n struct with fields:\n"
       "    i: Int [1 x 1]\n    l: Logical [1 x 1]\n    z: Complex [1 x 1] × 1e-3\n"
       "    c: Char [2 x 2]\n    s: Struct [2 x 1 x 2]\n    e: Empty struct array\n"},
      // clang-format on
      {StructArray(SizeVector(1, 2), {}), "s =\n struct array (1 x 2) with no field."},
      {StructArray(SizeVector(2, 2), {Name::intern("b"), Name::intern("a")}),
       "s =\n struct array (2 x 2) with fields:\nb\na"},
  };
  for (const auto& r : rows) EXPECT_EQ(Display(r.value, "s", cells(80)).displayText(), r.text);
  EXPECT_EQ(Display(StructArray(), std::nullopt, cells(80)).displayText(), "struct with no field\n");
  EXPECT_EQ(Display(StructArray(SizeVector(0, 0), {}), std::nullopt, cells(80)).displayText(), "[] (struct)");
}

TEST(Display, ShowsFunctions) {
  const struct {
    Storable value;
    const char *named, *unnamed;
    DisplayContentType contentType;
  } rows[] = {
      {anonymous("@(x) x+1"), "f = \n@(x) x+1", "@(x) x+1", DisplayContentType::anonymousFunc},
      {FunctionHandle::builtIn(Name::intern("sin")), "f = \n@sin", "@sin", DisplayContentType::builtInFunc},
      {FunctionHandle::userDefined(Name::intern("mine")), "f = \n@mine", "@mine", DisplayContentType::userDefinedFunc},
      {FunctionHandle::local(localFunction("near")), "f = (local function)\n @near", " @near",
       DisplayContentType::localFunc},
      {localFunction("near"), "f = (local function)\n @near", " @near", DisplayContentType::localFunc},
  };
  for (const auto& r : rows) {
    const Display display(r.value, "f", cells(80));
    EXPECT_EQ(display.displayText(), r.named);
    EXPECT_EQ(display.contentType(), r.contentType);
    EXPECT_EQ(Display(r.value, std::nullopt, cells(80)).displayText(), r.unnamed);
  }
}

TEST(Display, ShowsTextsAndMessages) {
  Message message;
  message.lineNum = 1;
  message.reason = "No";
  const Display error = Display::error(message, cells(80));
  EXPECT_EQ(error.displayText(), "Error at Line 1 of the console. No.");
  EXPECT_EQ(contentTypeName(error.contentType()), "error");

  const Display echo = Display::inputText("a = '😀'\nb", cells(80));
  EXPECT_EQ(echo.displayText(), "a = '😀'\nb");
  EXPECT_EQ(echo.textAttributeInfo(), (std::vector<ConsoleTextAttributes>{{{}, true, {0, 10}}}));
  EXPECT_EQ(echo.numOfLines(), 2);

  EXPECT_EQ(Display::disp("a\n\nb\n", cells(80)).numOfLines(), 3);
  EXPECT_EQ(Display::disp("", cells(80)).numOfLines(), 0);
}

TEST(Display, FitsColumnsToTheWidth) {
  struct Row {
    Storable value;
    double cells;
    int nDigits;
    const char* text;
  };
  const NumericArray three = counting({1, 3});
  const Row rows[] = {
      // 20 points are kept free: two and a half cells
      {three, 20.5, 5, "x = \nColumns 1 to 2:\n 1.0000   2.0000\nColumn 3:\n 3.0000"},
      {three, 20.4, 5, "x = \nColumn 1:\n 1.0000\nColumn 2:\n 2.0000\nColumn 3:\n 3.0000"},
      {three, 38.5, 8, "x = \n 1.0000000   2.0000000   3.0000000"},
      {three, 38.4, 8, "x = \nColumns 1 to 2:\n 1.0000000   2.0000000\nColumn 3:\n 3.0000000"},
      // not even one column fits
      {LogicalArray({2, 2}, {true, false, true, true}), 1, 5, "x = \nColumn 1:\n1\n0\nColumn 2:\n1\n1"},
      {LogicalArray(SizeVector(1, 5), true), 11.5, 5, "x = \nColumns 1 to 3:\n1  1  1\nColumns 4 to 5:\n1  1"},
      {complexShaped({1, 2}, {{1, 1}, {2, 2}}), 40, 5,
       "x = \nColumn 1:\n 1.0000 + 1.0000i\nColumn 2:\n 2.0000 + 2.0000i"},
      {charRow("hello world"), 13.5, 5, "x = \nhello world"},
      {charRow("hello world"), 13.4, 5, "x = \nColumns 1 to 10:\nhello worl\nColumn 11:\nd"},
      // a wide character makes all columns wide; a mark alone takes nothing
      {charRow("日a日"), 6.5, 5, "x = \nColumns 1 to 2:\n日a\nColumn 3:\n日"},
      {charRow("e\u0301e"), 4.5, 5, "x = \ne\u0301e"},
  };
  for (const auto& r : rows) {
    EXPECT_EQ(Display(r.value, "x", cells(r.cells, r.nDigits)).displayText(), r.text) << r.cells;
  }
}

TEST(Display, CutsLongOutputToItsTail) {
  const struct {
    SizeVector size;
    const char *start, *end;
    int64_t lines;
  } rows[] = {
      {{1000, 1}, "x = \n 501.00\n 502.00\n", "\n 1000.0", 501},
      {{500, 1}, "x = \n 1.0000\n", "\n 500.00", 501},
      // rows first: of a tall array only the last block of the last page is shown
      {{600, 10}, "x = \nColumns 9 to 10:\n 4901.0   5501.0\n", " 6000.0", 502},
      // then blocks, then pages
      {{3, 1600}, "x = \nColumns 265 to 272:\n", " 4800.0", 1 + 167 * 4},
      {{300, 1, 3}, "x(:, :, 2) = \n 301.00\n", "\n 900.00", 603},
      {{1, 10, 400}, "x(:, :, 151) = \nColumns 1 to 8:\n", "\n 3999.0   4000.0", 250 * 6 - 1},
  };
  for (const auto& r : rows) {
    const Display display(counting(r.size), "x", cells(80));
    EXPECT_EQ(display.displayText().substr(0, std::string_view(r.start).size()), r.start);
    EXPECT_TRUE(display.displayText().ends_with(r.end)) << r.size.description();
    EXPECT_EQ(display.numOfLines(), r.lines) << r.size.description();
  }

  // columns without end
  const Display wide(LogicalArray(SizeVector(1, 20'000'001), true), "x", cells(1));
  EXPECT_LT(wide.displayText().size(), 12'000u);
  const Display longField(structure({{"a", DoubleArray(SizeVector(1, 1'000'000), 1.0)}}), "s", cells(80));
  EXPECT_LT(longField.displayText().size(), 100'000u);
  EXPECT_TRUE(longField.displayText().ends_with("   1.0000 ...\n"));
}

TEST(Display, ColoursBlockHeaders) {
  const Display display(std::move(charRow("a😀bcdefg")).reshaped({2, 4}), "t", cells(6.6));
  ASSERT_EQ(display.displayText(), "t = \nColumns 1 to 2:\nab\n😀c\nColumns 3 to 4:\ndf\neg");
  const std::map<TextAttribute, ConsoleColor> secondary = {{TextAttribute::foregroundColor, ConsoleColor::secondary}};
  EXPECT_EQ(display.textAttributeInfo(),
            (std::vector<ConsoleTextAttributes>{{secondary, false, {5, 15}}, {secondary, false, {28, 15}}}));
}

TEST(DisplayItems, JoinsItemsAndFormatsThemAgain) {
  DisplayItems items(cells(80));
  items.append(Display::inputText("x = '😀'", cells(80)));
  items.append(Display(counting({1, 2}), "x", cells(80)));
  EXPECT_EQ(items.displayText(), "x = '😀'\n\nx = \n 1.0000   2.0000");

  items.append(Display(num(0.5), std::nullopt, cells(12, 8)));
  EXPECT_EQ(items.displayText(),
            "x = '😀'\n\nx = \nColumn 1:\n 1.0000000\nColumn 2:\n 2.0000000\n\n 1e-1 × \n 5.0000000");
  ASSERT_EQ(items.textAttributes().size(), 3u);
  EXPECT_EQ(items.textAttributes()[0].range, (ConsoleTextAttributes::Range{0, 8}));
  EXPECT_EQ(items.textAttributes()[1].range, (ConsoleTextAttributes::Range{15, 9}));
  EXPECT_EQ(items.textAttributes()[2].range, (ConsoleTextAttributes::Range{36, 9}));
  EXPECT_EQ(items.items()[1].numOfLines(), 5);
}

}  // namespace
}  // namespace kelo
