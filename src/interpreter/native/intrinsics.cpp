#include "interpreter/native/intrinsics.h"

#include <limits>
#include <numbers>
#include <string_view>

namespace kelo::native {
namespace {

using Form = Intrinsic::Form;
using Limits = std::numeric_limits<double>;

constexpr Intrinsic kIntrinsics[] = {
    {"true", 0, Form::constant, Held::logical, 1},
    {"false", 0, Form::constant, Held::logical, 0},
    {"pi", 0, Form::constant, Held::real, std::numbers::pi},
    {"eps", 0, Form::constant, Held::real, Limits::epsilon()},
    {"inf", 0, Form::constant, Held::real, Limits::infinity()},
    {"Inf", 0, Form::constant, Held::real, Limits::infinity()},
    {"nan", 0, Form::constant, Held::real, Limits::quiet_NaN()},
    {"NaN", 0, Form::constant, Held::real, Limits::quiet_NaN()},
    {"complex", 2, Form::complex, Held::complex},
    {"real", 1, Form::realPart, Held::real},
    {"imag", 1, Form::imaginaryPart, Held::real},
    {"isnan", 1, Form::isNaN, Held::logical},
};

}  // namespace

const Intrinsic* intrinsicOf(const Site& site) {
  if (site.row == nullptr || site.outputs > 1) return nullptr;
  for (const Intrinsic& each : kIntrinsics) {
    if (each.arguments == site.count && std::string_view(each.name) == site.row->name) return &each;
  }
  return nullptr;
}

}  // namespace kelo::native
