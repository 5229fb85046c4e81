#include "linear/matrix_structure.h"

#include "linear/matrix_parts.h"

namespace kelo {
namespace {

template <class T>
Bandwidth bandOf(const TypedArray<T>& a) {
  const int64_t m = a.size().rows(), n = a.size().columns();
  Bandwidth band;
  const T* column = a.data();
  for (int64_t j = 0; j < n; ++j, column += m) {
    // Only what lies outside the band so far is looked at, from the outside.
    for (int64_t i = 0; i < std::min(m, j - band.upper); ++i) {
      if (column[i] != T{}) band.upper = j - i;
    }
    for (int64_t i = m - 1; i > j + band.lower; --i) {
      if (column[i] != T{}) band.lower = i - j;
    }
  }
  return band;
}

bool differ(double a, double b, double tolerance) { return a != b && !(std::fabs(a - b) <= tolerance); }
bool differ(ComplexDouble a, ComplexDouble b, double tolerance) {
  return a != b && !((a - b).magnitude() <= tolerance);
}

// Block by block, since one of the two triangles is read across the memory.
template <class T>
bool mirrors(const TypedArray<T>& a, Mirror mirror, double tolerance) {
  constexpr int64_t kBlock = 32;
  const int64_t n = a.size().rows();
  const T* x = a.data();
  for (int64_t left = 0; left < n; left += kBlock) {
    for (int64_t top = 0; top <= left; top += kBlock) {
      for (int64_t j = left; j < std::min(n, left + kBlock); ++j) {
        for (int64_t i = top; i < std::min(j + 1, top + kBlock); ++i) {
          const T opposite = mirror == Mirror::conjugated ? conj(x[i * n + j]) : x[i * n + j];
          if (differ(x[j * n + i], opposite, tolerance)) return false;
        }
      }
    }
  }
  return true;
}

}  // namespace

Bandwidth bandwidthOf(const NumericArray& a) {
  switch (a.kind()) {
    case Kind::Int: return bandOf(a.asInt());
    case Kind::Logical: return bandOf(a.asLogical());
    case Kind::Complex: return bandOf(a.asComplex());
    default: return bandOf(a.asDouble());
  }
}

bool isMirrored(const NumericArray& a, Mirror mirror, double tolerance) {
  if (!a.size().isMatrix() || a.size().rows() != a.size().columns()) return false;
  return inCommonKind([&](const auto& matrix) { return mirrors(matrix, mirror, tolerance); }, a);
}

}  // namespace kelo
