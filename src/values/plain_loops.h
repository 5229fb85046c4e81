// The plain loops of arithmetic and logic on flat memory, each for the vectors of the processor at
// hand. `out` may be an operand.
#pragma once

#include <cstdint>

#include "values/complex_double.h"

namespace kelo {

enum class PlainOp : uint8_t { plus, minus, times, divide };

void plainBoth(PlainOp op, double* out, const double* a, const double* b, int64_t n);
void plainScalarLeft(PlainOp op, double* out, double a, const double* b, int64_t n);
void plainScalarRight(PlainOp op, double* out, const double* a, double b, int64_t n);
void timesBoth(ComplexDouble* out, const ComplexDouble* a, const ComplexDouble* b, int64_t n);
/// The squares as repeated products give them, of numbers without an imaginary part those of
/// doubles.
void squareEach(ComplexDouble* out, const ComplexDouble* z, int64_t n);
/// 1 and 0 for true and false.
void truthsAsNumbers(double* out, const bool* x, int64_t n);
/// Whether one of n numbers is below 0.
bool hasNegative(const double* x, int64_t n);
/// first + k * step
void fillSteps(double* out, double first, double step, int64_t n);

enum class LogicOp : uint8_t { and_, or_, xor_ };

void logicBoth(LogicOp op, bool* out, const bool* a, const bool* b, int64_t n);
void logicNot(bool* out, const bool* x, int64_t n);

}  // namespace kelo
