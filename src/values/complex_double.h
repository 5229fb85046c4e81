// A complex number and its plain arithmetic. Products and quotients are the textbook formulas,
// without the recovery of infinities that compilers add. Order comparisons look at the real parts
// only; a NaN part makes every comparison but != false.
#pragma once

#include <cmath>

namespace kelo {

struct ComplexDouble {
  double real = 0;
  double imaginary = 0;

  bool hasNaN() const { return std::isnan(real) || std::isnan(imaginary); }
  bool hasInf() const { return std::isinf(real) || std::isinf(imaginary); }
  double magnitude() const { return std::hypot(real, imaginary); }
};

inline ComplexDouble operator+(ComplexDouble a, ComplexDouble b) {
  return {a.real + b.real, a.imaginary + b.imaginary};
}
inline ComplexDouble operator-(ComplexDouble a, ComplexDouble b) {
  return {a.real - b.real, a.imaginary - b.imaginary};
}
inline ComplexDouble operator-(ComplexDouble a) { return {-a.real, -a.imaginary}; }
inline ComplexDouble conj(ComplexDouble a) { return {a.real, -a.imaginary}; }
inline ComplexDouble operator*(ComplexDouble a, ComplexDouble b) {
  return {a.real * b.real - a.imaginary * b.imaginary, a.real * b.imaginary + a.imaginary * b.real};
}
inline ComplexDouble operator/(ComplexDouble a, ComplexDouble b) {
  const double h = b.real * b.real + b.imaginary * b.imaginary;
  return {(a.real * b.real + a.imaginary * b.imaginary) / h, (a.imaginary * b.real - a.real * b.imaginary) / h};
}

inline bool operator==(ComplexDouble a, ComplexDouble b) { return a.real == b.real && a.imaginary == b.imaginary; }
inline bool operator!=(ComplexDouble a, ComplexDouble b) { return a.hasNaN() || b.hasNaN() || !(a == b); }
inline bool operator<(ComplexDouble a, ComplexDouble b) { return !a.hasNaN() && !b.hasNaN() && a.real < b.real; }
inline bool operator<=(ComplexDouble a, ComplexDouble b) { return !a.hasNaN() && !b.hasNaN() && a.real <= b.real; }
inline bool operator>(ComplexDouble a, ComplexDouble b) { return b < a; }
inline bool operator>=(ComplexDouble a, ComplexDouble b) { return b <= a; }

}  // namespace kelo
