// Error functions and distributions: published values, identities, the guards of the degenerate
// cases, sizes and complaints.
//
// The values were worked out to 60 digits by summing the series of erf and of the Poisson
// probabilities, and by Newton's method for the inverses, and then rounded.
#include <gtest/gtest.h>

#include <cmath>

#include "builtins/calls.h"
#include "builtins/special/incomplete_gamma.h"

namespace kelo {
namespace {

using namespace kelo::testing;

double value(const char* name, std::initializer_list<double> args) {
  std::vector<Storable> values;
  for (const double x : args) values.emplace_back(x);
  return called(name, values).asDouble().scalar();
}

TEST(Distributions, publishedValues) {
  const struct {
    const char* name;
    std::initializer_list<double> args;
    double expected;
    double accuracy = 2e-15;  // relative
  } rows[] = {
      // clang-format off
      {"erf", {0.1}, 0.1124629160182849},                    {"erf", {0.5}, 0.5204998778130465},
      {"erf", {-1}, -0.8427007929497149},                    {"erf", {3.5}, 0.9999992569016276},
      {"erfc", {0.5}, 0.4795001221869535},                   {"erfc", {2}, 0.004677734981047266},
      {"erfc", {-2}, 1.9953222650189527},                    {"erfc", {10}, 2.088487583762545e-45, 2e-14},
      {"erfc", {20}, 5.3958656116079005e-176, 1e-13},        {"erfinv", {0.1}, 0.08885599049425769},
      {"erfinv", {-0.5}, -0.4769362762044699},               {"erfinv", {0.9}, 1.163087153676674},
      {"erfcinv", {0.001}, 2.3267537655135246},              {"normcdf", {-3}, 0.0013498980316300946},
      {"normcdf", {0.5}, 0.6914624612740131},                {"normcdf", {13.92, 10, 2}, 0.9750021048517795},
      {"normpdf", {0}, 0.3989422804014327},                  {"normpdf", {3, 1, 2}, 0.12098536225957168},
      {"norminv", {0.975}, 1.9599639845400543},              {"norminv", {0.1, 5, 2}, 5 - 2 * 1.2815515655446004},
      {"exppdf", {2, 4}, 0.15163266492815836},               {"expcdf", {std::log(2.0)}, 0.5},
      {"expinv", {0.5, 2}, 1.3862943611198906},              {"poisspdf", {3, 2}, 0.18044704431548358},
      {"poisspdf", {120, 100}, 0.005561064886513001, 1e-13}, {"poisscdf", {3, 2}, 0.857123460498547},
      {"poisscdf", {40, 30}, 0.9676904258341257, 1e-14},     {"poisscdf", {99, 100}, 0.48670120172085135, 1e-13},
      {"poisscdf", {950, 1000}, 0.05783629295532321, 1e-12}, {"poissinv", {0.1, 3}, 1},
      {"poissinv", {0.95, 3}, 6},                            {"poissinv", {0.001, 150}, 114},
      {"poissinv", {0.999, 150}, 189},
      {"poisscdf", {98, 99.5}, 0.4666622490394732, 1e-13},  // the last one without the quadrature
      // clang-format on
  };
  for (const auto& r : rows) {
    EXPECT_NEAR(value(r.name, r.args), r.expected, r.accuracy * std::fabs(r.expected))
        << r.name << " " << *r.args.begin();
  }
}

TEST(Distributions, degenerateCases) {
  const struct {
    const char* name;
    std::initializer_list<double> args;
    double expected;
  } rows[] = {
      // clang-format off
      {"erf", {kInf}, 1},                    {"erf", {-kInf}, -1},
      {"erf", {kNaN}, kNaN},                 {"erfc", {-kInf}, 2},
      {"erfcinv", {0}, 100},                 {"erfcinv", {2}, -100},
      {"erfcinv", {kNaN}, kNaN},             {"erfinv", {1}, 100},
      {"erfinv", {-1}, -100},                {"normcdf", {0, 0, 0}, 1},
      {"normcdf", {0, 0, -1}, kNaN},         {"normpdf", {0, 0, 0}, kNaN},
      {"norminv", {0}, -kInf},               {"norminv", {1}, kInf},
      {"norminv", {1.5}, kNaN},              {"exppdf", {-1}, 0},
      {"exppdf", {1, 0}, kNaN},              {"expcdf", {1, kInf}, kNaN},
      {"expcdf", {kInf}, 1},                 {"expinv", {1}, kInf},
      {"expinv", {-0.1}, kNaN},              {"poisspdf", {0, 0}, 1},
      {"poisspdf", {1, 0}, 0},               {"poisspdf", {2.5, 2}, 0},
      {"poisspdf", {-1, -1}, kNaN},          {"poisspdf", {kNaN, kInf}, 0},
      {"poisspdf", {kInf, 1}, kNaN},         {"poisspdf", {16777217, 16777217}, 0},
      {"poisspdf", {1e300, 1}, 0},           {"poisscdf", {0, 0}, 1},
      {"poisscdf", {-1, 0}, 0},              {"poisscdf", {kInf, 1}, 1},
      {"poisscdf", {kInf, kInf}, 0},         {"poisscdf", {1, 1e300}, 0},
      {"poissinv", {0.5, 0}, 0},             {"poissinv", {2, 0}, kNaN},
      {"poissinv", {0, kInf}, 0},            {"poissinv", {0.5, kInf}, kNaN},
      {"poissinv", {1, 3}, kInf},            {"poissinv", {kNaN, 3}, kNaN},
      {"poissinv", {0.01, 3}, 0},
      {"poisscdf", {5000, 10}, 1},  // what is left to 1 is below the least double
      // clang-format on
  };
  for (const auto& r : rows) {
    const double y = value(r.name, r.args);
    EXPECT_TRUE(y == r.expected || (y != y && r.expected != r.expected))
        << r.name << " " << *r.args.begin() << ": " << y;
  }
}

TEST(Distributions, methodsOfTheIncompleteGammaFunctionAgree) {
  for (const double a : {100.0, 150.0, 1000.0}) {
    for (const double x : {a - 2 * std::sqrt(a), a, a + 3 * std::sqrt(a)}) {
      const double q = x < a + 1 ? 1 - special::gser(a, x) : special::gcf(a, x);
      EXPECT_NEAR(special::gammpapprox(a, x, special::Tail::upper), q, 1e-12) << a << " " << x;
      EXPECT_NEAR(special::gammpapprox(a, x, special::Tail::lower), 1 - q, 1e-12) << a << " " << x;
    }
  }
}

TEST(Distributions, inversesUndoFunctions) {
  for (double p = 0.005; p < 1; p += 0.01) {
    EXPECT_NEAR(value("normcdf", {value("norminv", {p, 3, 2}), 3, 2}), p, 1e-14);
    EXPECT_NEAR(value("expcdf", {value("expinv", {p, 3}), 3}), p, 1e-14);
    for (const double lambda : {0.2, 4.0, 77.7, 5000.0}) {
      const double x = value("poissinv", {p, lambda});
      EXPECT_LE(value("poisscdf", {x - 1, lambda}), p) << lambda;
      EXPECT_GT(value("poisscdf", {x, lambda}), p) << lambda;
    }
  }
  EXPECT_NEAR(value("poissinv", {0.5, 1e10}), 1e10, 1e5);
  for (const double lambda : {1e17, 1e25, 1e300}) value("poissinv", {0.5, lambda});  // come to an end
}

TEST(Distributions, sizesAndComplaints) {
  check({
      {"erf", {shaped({2, 0, 3}, {})}, "double 2 x 0 x 3:"},
      {"erfc", {column({kInf, -kInf})}, "double 2 x 1: 0 2"},
      {"erfinv", {complexShaped({1, 1}, {{1, 0}})}, "double 1 x 1: 100"},
      {"erfc", {StructArray()}, " | erfc() expects a numeric array as its input argument"},
      {"erfinv", {complex(0, 1)}, " | erfinv() expects a real input argument"},
      {"normcdf", {row({kInf, 1}), num(0), row({1, 0})}, "double 1 x 2: 1 1"},
      {"normpdf", {num(0), num(0), column({0, -1})}, "double 2 x 1: nan nan"},
      {"norminv", {row({0, 1}), column({0, 1})}, "Incompatible array sizes"},
      {"exppdf", {row({-1, -2}), row({1, 0})}, "double 1 x 2: 0 nan"},
      {"normpdf", {StructArray()}, " | In normpdf(x), x should be a numeric array"},
      {"normcdf", {num(1), num(1), StructArray()}, " | In normcdf(x, mu, sigma), sigma should be a numeric array"},
      {"expcdf", {complex(0, 1)}, " | In expcdf(x), x should be an array of real numbers"},
  });
}

}  // namespace
}  // namespace kelo
