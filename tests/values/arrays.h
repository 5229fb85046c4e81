// Short builders of arrays for tests, and their description as text, so that a table row reads
// {input, expected}.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>

#include "messages/fatal_fault.h"
#include "messages/message.h"
#include "values/numbers.h"
#include "values/storable.h"

namespace kelo::testing {

using List = std::initializer_list<double>;

inline NumericArray row(List x) { return DoubleArray::row(std::span(x.begin(), x.size())); }
inline NumericArray column(List x) { return DoubleArray::column(std::span(x.begin(), x.size())); }
inline NumericArray logicals(std::initializer_list<bool> x) { return LogicalArray({1, std::ssize(x)}, x); }
inline NumericArray num(double x) { return DoubleArray(x); }
inline NumericArray whole(int64_t x) { return IntArray(x); }
inline NumericArray truth(bool x) { return LogicalArray(x); }
inline NumericArray complex(double re, double im) { return ComplexDoubleArray(ComplexDouble{re, im}); }
inline NumericArray text(const char* utf8) { return charRow(utf8); }
inline NumericArray zeros(const SizeVector& size) { return DoubleArray(size, 0.0); }
/// Subscripts from 0 of the position i, one per dimension of a size, and the way back; the plain
/// rule of storage.
inline std::vector<int64_t> subscriptsOf(const SizeVector& size, int64_t i) {
  std::vector<int64_t> subscripts;
  for (const int64_t length : size.vec()) {
    subscripts.push_back(i % length);
    i /= length;
  }
  return subscripts;
}
inline int64_t positionOf(const SizeVector& size, const std::vector<int64_t>& subscripts) {
  int64_t position = 0;
  for (size_t d = 0; d < subscripts.size(); ++d) position += subscripts[d] * size.strideOf(static_cast<int64_t>(d) + 1);
  return position;
}

/// The elements in storage order: column by column.
inline NumericArray shaped(const SizeVector& size, List x) { return DoubleArray(size, x); }
inline NumericArray complexShaped(const SizeVector& size, std::initializer_list<ComplexDouble> x) {
  return ComplexDoubleArray(size, x);
}

/// 1, 2, 3, ... in storage order.
inline NumericArray counting(const SizeVector& size) {
  DoubleArray result = DoubleArray::uninitialized(size);
  for (int64_t i = 0; i < size.numElements(); ++i) result.writable()[i] = static_cast<double>(i + 1);
  return result;
}

inline DoubleArray randomArray(std::mt19937_64& random, const SizeVector& size) {
  std::normal_distribution<double> normal;
  DoubleArray result = DoubleArray::uninitialized(size);
  for (int64_t i = 0; i < size.numElements(); ++i) result.writable()[i] = normal(random);
  return result;
}
inline ComplexDoubleArray randomComplex(std::mt19937_64& random, const SizeVector& size) {
  std::normal_distribution<double> normal;
  ComplexDoubleArray result = ComplexDoubleArray::uninitialized(size);
  for (int64_t i = 0; i < size.numElements(); ++i) result.writable()[i] = {normal(random), normal(random)};
  return result;
}

inline std::string elementText(double x) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.17g", x);
  std::string shortText = buffer;
  std::snprintf(buffer, sizeof buffer, "%.15g", x);
  return x != x ? "nan" : std::strtod(buffer, nullptr) == x ? buffer : shortText;
}
inline std::string elementText(int64_t x) { return std::to_string(x); }
inline std::string elementText(bool x) { return x ? "true" : "false"; }
inline std::string elementText(ComplexDouble z) { return elementText(z.real) + "," + elementText(z.imaginary); }
inline std::string elementText(Character c) { std::string s; c.appendUtf8To(s); return s; }

/// "double 1 x 2: 3 4", "int 1 x 1: 7": the record's own kind, the size, the elements in storage
/// order.
inline std::string describe(const NumericArray& array) {
  static const char* const kinds[] = {"double", "int", "logical", "complex", "char"};
  std::string result = std::string(kinds[static_cast<int>(array.kind())]) + " " + array.size().description() + ":";
  array.visit([&](const auto& record) {
    for (const auto& x : record.values()) result.append(" ").append(elementText(x));
  });
  return result;
}

/// What `f` gives as text, or its failure: "reason" or "reason | expected"; "fatal: ..." for a
/// fatal fault.
inline std::string outcome(const std::function<NumericArray()>& f) {
  try {
    return describe(f());
  } catch (const Problem& p) {
    return p.reason.value_or("") + (p.expected ? " | " + *p.expected : "");
  } catch (const FatalFault& fault) {
    return "fatal: " + fault.what;
  }
}

}  // namespace kelo::testing
