// How one number is printed: the same number of significant digits for all, each in a field of the
// same width.
//
// W = nDigits + 2 is the width of a real number: one position for the sign, one for the point. Each
// number has the precision that its own magnitude asks for, so in a column the point moves while
// the width stays. A power of ten that is common to an array is taken out before (scaleExponent,
// scaled).
//
// REQUIRES: 1 <= nDigits <= kMaxDigits throughout.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "values/complex_double.h"

namespace kelo {

inline constexpr int kMaxDigits = 64;

/// A number of digits brought into the range that the functions here ask for.
constexpr int boundedDigits(int nDigits) { return nDigits < 1 ? 1 : nDigits > kMaxDigits ? kMaxDigits : nDigits; }

/// The e of a magnitude m x 10^e with 1 <= m < 10, as far as the rounding of the logarithm allows;
/// 0 of 0.
int decimalExponent(double magnitude);

/// Digits after the point. With c digits before it (one for |x| < 1): nDigits - c from two on,
/// else nDigits - 1; never below 0. It comes from the value before rounding, so 9.99999 prints
/// as " 10.0000". NOTE: intended.
int precisionFor(int nDigits, double x);

/// Appends a finite x as printf's "% #W.Pf" prints it, P its precision; NaN, Inf and -Inf
/// left-aligned in the field.
void appendReal(std::string& out, int nDigits, double x);
/// Appends the real part as a real, then " + " or " - ", the magnitude of the imaginary part and
/// "i".
void appendComplex(std::string& out, int nDigits, ComplexDouble z);

/// The number of times to multiply by ten before printing, negative for divisions: it gives the
/// largest finite magnitude one integer digit if that is below 1 or reaches 10^nDigits, and is 0
/// otherwise. A lone 0.5 has 1.
/// NOTE: intended. 0 without a finite element. For complex numbers all parts count alike.
int scaleExponent(std::span<const double> values, int nDigits);
int scaleExponent(std::span<const int64_t> values, int nDigits);
int scaleExponent(std::span<const ComplexDouble> values, int nDigits);

/// x multiplied by ten `scale` times, or divided -scale times, one step at a time, which fixes the
/// rounding. A zero loses its sign.
double scaled(double x, int scale);
ComplexDouble scaled(ComplexDouble z, int scale);

/// A number as short text, without blanks: whole numbers bare ("5"), others with nDigits
/// significant digits ("3.1416", "0.5000", "1.2346e-10"); "NaN", "Inf", "-Inf".
std::string shortNumber(double x, int nDigits);

}  // namespace kelo
