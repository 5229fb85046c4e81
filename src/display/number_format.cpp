// Printing of numbers. Most go through whole-number arithmetic instead of printf; where that could
// round differently, printf decides. Tested by tests/display/number_format_test.cpp, which holds
// both against each other.
#include "display/number_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "values/powers_of_ten.h"

namespace kelo {

namespace {

// Divisions by ten until the magnitude is below 1. Below 1e22 the comparison gives the same count:
// a rounded quotient never reaches the next power of ten.
int integerDigits(double magnitude) {
  if (magnitude < 1) return 1;
  if (magnitude < kPowersOfTen.back()) {
    const auto above = std::upper_bound(kPowersOfTen.begin(), kPowersOfTen.end(), magnitude);
    return static_cast<int>(above - kPowersOfTen.begin());
  }
  int divisions = 0;
  for (; magnitude >= 1; ++divisions) magnitude /= 10;
  return divisions;
}

enum class Sign : bool { none, blankOrMinus };

void appendWithPrintf(std::string& out, double x, int width, int precision, Sign sign) {
  char buffer[512];  // 309 integer digits, the point, the sign, and at most kMaxDigits after the point
  const int length =
      std::snprintf(buffer, sizeof buffer, sign == Sign::none ? "%#*.*f" : "% #*.*f", width, precision, x);
  out.append(buffer, static_cast<size_t>(length));
}

// OPTIMIZATION: below 1e12 the error of magnitude * 10^precision is below 1e-4, so a fraction
// farther than that from one half rounds as the exact value does.
constexpr double kExactLimit = 1e12;
constexpr double kUndecided = 1e-3;

// A finite x as printf's "%#W.Pf" gives it, with or without the blank flag.
void appendFixed(std::string& out, double x, int width, int precision, Sign sign) {
  const double magnitude = std::fabs(x);
  const bool isExact = precision < static_cast<int>(kPowersOfTen.size());
  const double shifted = isExact ? magnitude * kPowersOfTen[precision] : kExactLimit;
  if (!(shifted < kExactLimit)) return appendWithPrintf(out, x, width, precision, sign);
  auto whole = static_cast<uint64_t>(shifted);
  const double fraction = shifted - static_cast<double>(whole);
  if (std::fabs(fraction - 0.5) < kUndecided) return appendWithPrintf(out, x, width, precision, sign);
  if (fraction > 0.5) ++whole;

  char buffer[128];
  char* const end = buffer + sizeof buffer;
  char* at = end;
  for (int k = 0; k < precision; ++k, whole /= 10) *--at = static_cast<char>('0' + whole % 10);
  *--at = '.';
  do *--at = static_cast<char>('0' + whole % 10);
  while (whole /= 10);
  if (std::signbit(x))
    *--at = '-';
  else if (sign == Sign::blankOrMinus)
    *--at = ' ';
  while (end - at < width) *--at = ' ';
  out.append(at, static_cast<size_t>(end - at));
}

// " NaN", " Inf" or "-Inf" and blanks up to the width.
void appendNonFinite(std::string& out, double x, int nDigits) {
  out += std::isnan(x) ? " NaN" : x > 0 ? " Inf" : "-Inf";
  if (nDigits > 2) out.append(static_cast<size_t>(nDigits - 2), ' ');
}

void appendImaginary(std::string& out, int nDigits, double b) {
  out += b < 0 ? " - " : " + ";
  if (std::isfinite(b)) {
    appendFixed(out, std::fabs(b), nDigits + 1, precisionFor(nDigits, b), Sign::none);
  } else {
    out += std::isnan(b) ? "NaN" : "Inf";
    if (nDigits > 2) out.append(static_cast<size_t>(nDigits - 2), ' ');
  }
  out += 'i';
}

constexpr double kLargest = std::numeric_limits<double>::max();

// Four maxima side by side, so that the loop is not bound by the latency of one. Inf and NaN count
// as 0.
double largestFiniteMagnitude(const double* values, int64_t count) {
  double lanes[4] = {};
  int64_t i = 0;
  for (; i + 4 <= count; i += 4) {
    for (int lane = 0; lane < 4; ++lane) {
      const double magnitude = std::fabs(values[i + lane]);
      const double finite = magnitude <= kLargest ? magnitude : 0;
      lanes[lane] = finite > lanes[lane] ? finite : lanes[lane];
    }
  }
  for (; i < count; ++i) {
    const double magnitude = std::fabs(values[i]);
    if (magnitude <= kLargest) lanes[0] = std::max(lanes[0], magnitude);
  }
  return std::max({lanes[0], lanes[1], lanes[2], lanes[3]});
}

int scaleOfLargest(double magnitude, int nDigits) {
  const int exponent = decimalExponent(magnitude);
  return exponent >= 0 && exponent < nDigits ? 0 : -exponent;
}

}  // namespace

int decimalExponent(double magnitude) {
  if (magnitude == 0) return 0;
  const double logarithm = std::log10(magnitude);
  const double exponent = magnitude >= 1 ? std::floor(logarithm) : std::ceil(logarithm);
  const double mantissa = std::pow(10.0, logarithm - exponent);
  return static_cast<int>(exponent) - (mantissa < 1 ? 1 : 0);
}

int precisionFor(int nDigits, double x) {
  const int digits = integerDigits(std::fabs(x));
  return digits >= 2 ? std::max(nDigits - digits, 0) : nDigits - 1;
}

void appendReal(std::string& out, int nDigits, double x) {
  if (std::isfinite(x))
    appendFixed(out, x, nDigits + 2, precisionFor(nDigits, x), Sign::blankOrMinus);
  else
    appendNonFinite(out, x, nDigits);
}

void appendComplex(std::string& out, int nDigits, ComplexDouble z) {
  appendReal(out, nDigits, z.real);
  appendImaginary(out, nDigits, z.imaginary);
}

int scaleExponent(std::span<const double> values, int nDigits) {
  return scaleOfLargest(largestFiniteMagnitude(values.data(), static_cast<int64_t>(values.size())), nDigits);
}

int scaleExponent(std::span<const int64_t> values, int nDigits) {
  double largest = 0;
  for (const int64_t x : values) largest = std::max(largest, std::fabs(static_cast<double>(x)));
  return scaleOfLargest(largest, nDigits);
}

int scaleExponent(std::span<const ComplexDouble> values, int nDigits) {
  static_assert(sizeof(ComplexDouble) == 2 * sizeof(double));
  const auto* parts = reinterpret_cast<const double*>(values.data());
  return scaleOfLargest(largestFiniteMagnitude(parts, 2 * static_cast<int64_t>(values.size())), nDigits);
}

double scaled(double x, int scale) {
  for (; scale > 0; --scale) x *= 10;
  for (; scale < 0; ++scale) x /= 10;
  return x == 0 ? 0.0 : x;
}

ComplexDouble scaled(ComplexDouble z, int scale) { return {scaled(z.real, scale), scaled(z.imaginary, scale)}; }

std::string shortNumber(double x, int nDigits) {
  if (std::isnan(x)) return "NaN";
  if (std::isinf(x)) return x > 0 ? "Inf" : "-Inf";
  if (x == 0) return "0";
  const double magnitude = std::fabs(x);
  if (x == std::trunc(x)) return magnitude < 1e16 ? fmt::format("{:.0f}", x) : fmt::format("{:.16g}", x);
  // The fixed form would lose significant digits of what is below 0.1.
  if (magnitude < 0.1) return fmt::format("{:.{}g}", x, nDigits);
  std::string text = fmt::format("{:#.{}f}", x, precisionFor(nDigits, x));
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace kelo
