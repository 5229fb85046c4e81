// Comma-separated text: which numbers come out of which text, and back.
#include "builtins/csv/csv_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>

namespace kelo::builtins {
namespace {

uint64_t bitsOf(double x) { return std::bit_cast<uint64_t>(x); }

// Each number alone, as strtod reads it.
TEST(Csv, readsTheNearestDouble) {
  std::mt19937_64 random(20240229);
  const auto digits = [&](int most) {
    std::string text;
    for (auto count = random() % static_cast<uint64_t>(most) + 1; count > 0; --count)
      text += "0123456789"[random() % 10];
    return text;
  };
  std::vector<std::string> numbers = {"0",
                                      "-0",
                                      "00012.500",
                                      ".5",
                                      "5.",
                                      "1e5",
                                      "1E+5",
                                      "9007199254740993",
                                      "1e22",
                                      "1e23",
                                      "179769313486231580793728971405301e276",
                                      "4.9406564584124654e-324",
                                      "2e-324",
                                      "-1e400",
                                      "1e-400",
                                      "1e999999999999",
                                      "0e999999999999",
                                      "0.000000000000000000000000001e27",
                                      "2.2250738585072011e-308",
                                      "inf",
                                      "-Infinity",
                                      "NaN"};
  for (int k = 0; k < 20000; ++k) {
    std::string text = random() % 2 ? "-" : "";
    text += digits(20);
    if (random() % 2) text.append(".").append(digits(20));
    if (random() % 2) text.append(random() % 2 ? "e-" : "e").append(std::to_string(random() % 330));
    numbers.push_back(text);
  }
  for (const std::string& number : numbers) {
    const auto array = arrayOfCsv(number, {});
    ASSERT_TRUE(array) << number;
    const double expected = std::strtod(number.c_str(), nullptr);
    if (std::isnan(expected)) {
      EXPECT_TRUE(std::isnan(array->scalar())) << number;
    } else {
      EXPECT_EQ(bitsOf(array->scalar()), bitsOf(expected)) << number;
    }
  }
}

TEST(Csv, refusesWhatIsNoNumber) {
  for (const char* text : {"x", "1,x", "1 2 three", "1e", "1e+", "--1", "+-1", ".", "-", "+", "e5", "1.2.3", "1'",
                           "0x10", "nan(1)", "1i", "\"1\"", "in", "1\v2"}) {
    EXPECT_FALSE(arrayOfCsv(text, {})) << text;
  }
  EXPECT_FALSE(arrayOfCsv(std::string("1\0,2", 4), {}));
}

// The rows of an array as text, "|" between them.
std::string rowsOf(const std::string& text, const CsvRange& range = {}) {
  const auto array = arrayOfCsv(text, range);
  if (!array) return "no numbers";
  std::string rows = csvOfArray(*array);
  for (char& c : rows) c = c == '\n' ? '|' : c;
  return rows;
}

TEST(Csv, splitsLinesAndCells) {
  const std::pair<const char*, const char*> cases[] = {
      // clang-format off
      {"", ""},                          {" \n\r\n\t\n", ""},               {"1,2\n3,4", "1,2|3,4|"},
      {"1;2\r\n3\t4\r\n", "1,2|3,4|"},   {"1\r2", "1|2|"},                  {"  1  2 , 3 ;4  \n", "1,2,3,4|"},
      {",1", "0,1|"},                    {"1,,2", "1,0,2|"},                {"1,", "1,0|"},
      {",", "0,0|"},                     {"1\n\n2,3", "1,0|2,3|"},          {"\xEF\xBB\xBF" "1,2", "1,2|"},
      // clang-format on
  };
  for (const auto& [text, rows] : cases) EXPECT_EQ(rowsOf(text), rows) << text;
}

TEST(Csv, readsARangeAndNothingElse) {
  const std::string text = "name,a,b\nx,1,2\n\ny,3,4,z\nw";
  EXPECT_EQ(rowsOf(text, {1, 1, 2, 2}), "1,2|3,4|");
  EXPECT_EQ(rowsOf(text, {2, 2, 2, 2}), "4|");
  EXPECT_EQ(rowsOf(text, {1, 1, 3, 2}), "1,2|3,4|0,0|");
  EXPECT_EQ(rowsOf(text, {9, 0}), "");
  EXPECT_EQ(rowsOf("1\n2\n", {0, 5}), "");
  EXPECT_EQ(rowsOf(text, {1, 0, 1, 1}), "no numbers");
}

TEST(Csv, tellsHowFarItIs) {
  std::string text;
  while (text.size() < 10'000'000) text += "1,2,3,4,5,6,7,8\n";
  std::vector<double> parts;
  ASSERT_TRUE(arrayOfCsv(text, {}, [&](double part) { parts.push_back(part); }));
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_NEAR(parts[0], 0.42, 0.01);
  EXPECT_NEAR(parts[1], 0.84, 0.01);
}

TEST(Csv, writesWhatReadsBackTheSame) {
  std::mt19937_64 random(7);
  const SizeVector size(67, 5);
  auto array = DoubleArray::uninitialized(size);
  for (int64_t k = 0; k < size.numElements(); ++k) {
    array.writable()[k] = k % 4 == 0 ? static_cast<double>(k - 100) * 1e13 : std::bit_cast<double>(random());
  }
  array.writable()[1] = -0.0;
  const auto back = arrayOfCsv(csvOfArray(array), {});
  ASSERT_TRUE(back && back->size() == size);
  for (int64_t k = 0; k < size.numElements(); ++k) {
    EXPECT_TRUE(bitsOf((*back)[k]) == bitsOf(array[k]) || (std::isnan((*back)[k]) && std::isnan(array[k]))) << array[k];
  }
}

TEST(Csv, writesEachKind) {
  EXPECT_EQ(csvOfArray(DoubleArray(SizeVector(2, 2), {1000000, 0.1, -2.5, INFINITY})), "1000000,-2.5\n0.1,Inf\n");
  EXPECT_EQ(csvOfArray(LogicalArray(true)), "1\n");
  EXPECT_EQ(csvOfArray(IntArray(INT64_MIN)), "-9223372036854775808\n");
  EXPECT_EQ(csvOfArray(ComplexDoubleArray::row(std::vector<ComplexDouble>{{1, -2}, {0, 0.5}})), "1-2i,0+0.5i\n");
  EXPECT_EQ(csvOfArray(charRow("A")), "65\n");
  EXPECT_EQ(csvOfArray(DoubleArray(SizeVector(3, 0), 0.0)), "");
}

}  // namespace
}  // namespace kelo::builtins
