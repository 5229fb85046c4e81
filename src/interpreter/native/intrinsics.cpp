#include "interpreter/native/intrinsics.h"

#include <limits>
#include <numbers>
#include <string_view>

#include "values/indexing.h"
#include "values/operators.h"

namespace kelo::native {
namespace {

using Form = Intrinsic::Form;

constexpr double kInf = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr Intrinsic kIntrinsics[] = {
    {"true", 0, Form::logical, 1},
    {"false", 0, Form::logical, 0},
    {"pi", 0, Form::real, std::numbers::pi},
    {"eps", 0, Form::real, std::numeric_limits<double>::epsilon()},
    {"inf", 0, Form::real, kInf},
    {"Inf", 0, Form::real, kInf},
    {"nan", 0, Form::real, kNaN},
    {"NaN", 0, Form::real, kNaN},
    {"complex", 2, Form::complex},
    {"real", 1, Form::realPart},
    {"imag", 1, Form::imaginaryPart},
    {"conj", 1, Form::conjugate},
    {"isnan", 1, Form::isNaN},
};

}  // namespace

const Intrinsic* intrinsicOf(const Site& site) {
  if (site.row == nullptr || site.outputs > 1) return nullptr;
  for (const Intrinsic& each : kIntrinsics) {
    if (each.arguments == site.count && std::string_view(each.name) == site.row->name) return &each;
  }
  return nullptr;
}

double rangeCount(double first, double step, double last) noexcept {
  try {
    const NumericArray stride(step);
    return static_cast<double>(rangeOf(NumericArray(first), &stride, NumericArray(last)).count);
  } catch (...) {
    return -1;
  }
}

int64_t appendToVector(Storable* variable, Word* words, double value) noexcept {
  try {
    if (!appendScalar(*variable->numeric(), value)) return 0;
    describe(*variable->numeric(), words);
    return 1;
  } catch (...) {
    return 0;
  }
}

int64_t appendToRow(Storable* variable, Word* words, double value) noexcept {
  return variable->numeric()->size().isRow() ? appendToVector(variable, words, value) : 0;
}

}  // namespace kelo::native
