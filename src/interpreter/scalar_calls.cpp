#include "interpreter/scalar_calls.h"

#include <cmath>
#include <string_view>

namespace kelo {
namespace {

struct Row {
  std::string_view name;
  ScalarCall function;
  int32_t count;
};

constexpr Row kRows[] = {
    {"abs", ScalarCall::abs, 1},     {"ceil", ScalarCall::ceil, 1}, {"fix", ScalarCall::fix, 1},
    {"floor", ScalarCall::floor, 1}, {"max", ScalarCall::max, 2},   {"min", ScalarCall::min, 2},
    {"mod", ScalarCall::mod, 2},     {"rem", ScalarCall::rem, 2},   {"round", ScalarCall::round, 1},
    {"sqrt", ScalarCall::sqrt, 1},
};

}  // namespace

int32_t scalarCallOf(Name name, int32_t count) {
  for (const Row& row : kRows) {
    if (row.count == count && row.name == name.text()) return static_cast<int32_t>(row.function);
  }
  return -1;
}

bool scalarCall(ScalarCall function, double x, double y, Storable* result) {
  switch (function) {
    case ScalarCall::abs: result->setNumber(std::fabs(x)); return true;
    case ScalarCall::ceil: result->setNumber(std::ceil(x)); return true;
    case ScalarCall::fix: result->setNumber(std::trunc(x)); return true;
    case ScalarCall::floor: result->setNumber(std::floor(x)); return true;
    case ScalarCall::round: result->setNumber(std::round(x)); return true;
    case ScalarCall::max:
      if (std::isnan(x) || std::isnan(y)) return false;
      result->setNumber(y > x ? y : x);
      return true;
    case ScalarCall::min:
      if (std::isnan(x) || std::isnan(y)) return false;
      result->setNumber(y < x ? y : x);
      return true;
    case ScalarCall::mod: result->setNumber(y == 0 ? x : x - y * std::floor(x / y)); return true;
    case ScalarCall::rem:
      if (y == 0) return false;
      result->setNumber(x - y * std::trunc(x / y));
      return true;
    case ScalarCall::sqrt:
      if (!(x >= 0)) return false;
      result->setNumber(std::sqrt(x));
      return true;
  }
  return false;
}

}  // namespace kelo
