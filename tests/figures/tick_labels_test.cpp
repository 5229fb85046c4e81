#include "figures/tick_labels.h"

#include <gtest/gtest.h>

#include "figures/auto_ticks.h"

namespace kelo::figures {
namespace {

/// Each character is 6 points wide.
struct SixPoints : platform::TextMeasure {
  double width(std::string_view text) const override { return 6.0 * static_cast<double>(text.size()); }
};

std::string joined(const TickLabels& labels) {
  std::string text;
  for (const TickLabel& label : labels.labels) text += (text.empty() ? "" : " ") + label.text;
  return labels.power == 0 ? text : text + " e" + std::to_string(labels.power);
}

TEST(NumberText, table) {
  const struct {
    int n;
    double x;
    const char* text;
  } rows[] = {
      {6, 0, "0.00000"}, {4, 0.25, "0.250"},    {5, 12.5, "12.500"},  {3, 123, "123"},    {5, 9.99999, "10.000"},
      {4, 0.99999, "1.000"}, {5, -1e-17, "0.0000"}, {5, -0.5, "-0.5000"}, {3, 12345, "12345"},
  };
  for (const auto& row : rows) EXPECT_EQ(numberText(row.n, row.x), row.text) << row.x;
}

TEST(AxisPower, comesFromTheGreaterEnd) {
  EXPECT_EQ(axisPower({0, 1}), 0);
  EXPECT_EQ(axisPower({0, 99}), 0);
  EXPECT_EQ(axisPower({0, 100}), 0);
  EXPECT_EQ(axisPower({0, 1000}), 1);
  EXPECT_EQ(axisPower({-50000, 3}), 2);
  EXPECT_EQ(axisPower({0, 0.05}), 0) << "an exponent of -2 gives a power of 0";
  EXPECT_EQ(axisPower({0, 0.0005}), -2);
  EXPECT_EQ(axisPower({}), 0);
}

TEST(TickLabels, table) {
  const struct {
    const char* what;
    double lower, upper;
    std::vector<double> manual;
    double length;
    const char* labels;
  } rows[] = {
      {"one label where a tick is doubled", 0, 10, {}, 420, "0.000000 2.000000 4.000000 6.000000 8.000000 10.00000"},
      {"fewer digits in less room", 0, 10, {}, 300, "0.0000 2.0000 4.0000 6.0000 8.0000 10.000"},
      {"crowded labels are thinned, the ends stay", 0, 10, {}, 60, "0.00 10.0"},
      {"a tick next to an end gives way", 0, 10.1, {}, 440, "0.000000 2.000000 4.000000 6.000000 8.000000 10.10000"},
      {"powers of ten stand once", 0, 20000, {}, 240, "0.000 40.00 80.00 120.0 160.0 200.0 e2"},
      {"manual ticks: six digits, not thinned, only inside", 0, 10, {-1, 2, 2.1, 11}, 60, "2.00000 2.10000"},
      {"a width beyond the doubles", -1.5e308, 1.5e308, {}, 300, "-150.00000 150.00000 e306"},
  };
  const SixPoints measure;
  for (const auto& row : rows) {
    const Limits limits{row.lower, row.upper};
    const bool isAuto = row.manual.empty();
    const std::vector<double> ticks = isAuto ? autoTicks(limits) : row.manual;
    EXPECT_EQ(joined(tickLabels({limits, true, isAuto, ticks}, row.length, {measure, {}})), row.labels) << row.what;
  }
}

TEST(TickLabels, noMoreDigitsThanNeeded) {
  const struct {
    double lower, upper, length;
    const char* labels;
  } rows[] = {
      {0, 10, 900, "0.00 2.00 4.00 6.00 8.00 10.0"},
      {-0.999992, 0.999984, 900, "-1.00 -0.80 -0.40 0.00 0.40 0.80 1.00"},
      {1000, 1010, 900, "100.0 100.2 100.4 100.6 100.8 101.0 e1"},
      {1000.31, 1009.7, 900, "100.03 100.20 100.40 100.60 100.80 100.97 e1"},
      {1000.31, 1009.7, 200, "100 100 100 101 101 101 e1"},  // more have no room
  };
  const SixPoints measure;
  for (const auto& row : rows) {
    const Limits limits{row.lower, row.upper};
    const LabelMeasure labels{measure, 10, LabelMeasure::Digits::needed};
    EXPECT_EQ(joined(tickLabels({limits, true, true, autoTicks(limits)}, row.length, labels)), row.labels);
  }
}

}  // namespace
}  // namespace kelo::figures
