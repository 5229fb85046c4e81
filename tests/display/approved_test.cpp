// Larger displays against approved texts in approved/. A text that differs is left beside the
// approved one as NAME.received; with KELO_ACCEPT=1 in the environment it is accepted instead:
//
//     KELO_ACCEPT=1 ctest --preset release -R display.Approved
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <numbers>
#include <sstream>

#include "display/display.h"
#include "places.h"
#include "values/arrays.h"

namespace kelo {
namespace {

using namespace testing;

const std::string kFolder = test::testsDir() + "/display/approved/";

void expectApproved(const std::string& name, const std::string& text) {
  const std::string path = kFolder + name + ".txt", received = kFolder + name + ".received";
  std::ifstream file(path);
  std::ostringstream approved;
  approved << file.rdbuf();
  std::remove(received.c_str());
  if (approved.str() == text + "\n") return;
  const bool accepts = std::getenv("KELO_ACCEPT") != nullptr;
  std::ofstream(accepts ? path : received) << text << "\n";
  EXPECT_TRUE(accepts) << path << " differs from " << received;
}

std::string shown(Storable value, double cells, int nDigits) {
  Display::Parameters parameters;
  parameters.consoleViewWidth = cells * CellMeasure::kPointsPerCell;
  parameters.nDigits = nDigits;
  return Display(std::move(value), "x", parameters).displayText();
}

DoubleArray filled(const SizeVector& size, double (*f)(int64_t)) {
  DoubleArray array = DoubleArray::uninitialized(size);
  for (int64_t i = 0; i < array.numElements(); ++i) array.writable()[i] = f(i);
  return array;
}

double mixed(int64_t i) {
  if (i % 17 == 11) return i % 2 ? kInf : -kInf;
  if (i % 17 == 5) return kNaN;
  return std::numbers::pi * std::pow(-7.5, static_cast<double>(i % 6) - 2);
}

TEST(Approved, Blocks) {
  expectApproved("reals", shown(filled({4, 12}, mixed), 80, 5));
  const auto small = [](int64_t i) { return (static_cast<double>(i) - 11) * 1.25e-7; };
  expectApproved("reals_scaled", shown(filled({3, 10}, small), 60, 5));

  ComplexDoubleArray complex = ComplexDoubleArray::uninitialized({3, 7});
  for (int64_t i = 0; i < complex.numElements(); ++i) complex.writable()[i] = {mixed(i), mixed(i + 3)};
  expectApproved("complex", shown(complex, 80, 5));

  const DoubleArray pages = filled({2, 10, 1, 2}, [](int64_t i) { return 1000.0 * static_cast<double>(i * i - 200); });
  expectApproved("pages", shown(pages, 80, 5));
}

}  // namespace
}  // namespace kelo
