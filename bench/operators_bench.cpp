// Operators on large arrays: the rows that bench/compare/operators.py prints for NumPy.
#include <benchmark/benchmark.h>

#include "values/operators.h"

namespace {

using namespace kelo;
using Op = BinaryOp;

DoubleArray filled(int64_t rows, int64_t columns) {
  DoubleArray x = DoubleArray::uninitialized(SizeVector(rows, columns));
  for (int64_t i = 0; i < x.numElements(); ++i) x.writable()[i] = 1.0 + static_cast<double>(i % 1000) * 0.001;
  return x;
}

void expression(benchmark::State& state) {
  const int64_t n = state.range(0);
  const NumericArray a = filled(n, 1), b = filled(n, 1), c = filled(n, 1), d = filled(n, 1), e = filled(n, 1);
  for (auto _ : state) {
    NumericArray sum = elementwise(Op::plus, elementwise(Op::dmult, a, b), elementwise(Op::rdivide, c, d));
    benchmark::DoNotOptimize(elementwise(Op::minus, std::move(sum), e));
  }
}
BENCHMARK(expression)->Name("a.*b + c./d - e")->Arg(1000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

void binary(benchmark::State& state, Op op, int64_t rowsA, int64_t columnsA, int64_t rowsB, int64_t columnsB) {
  const NumericArray a = filled(rowsA, columnsA), b = filled(rowsB, columnsB);
  for (auto _ : state) benchmark::DoNotOptimize(elementwise(op, a, b));
}
BENCHMARK_CAPTURE(binary, array_array_plus, Op::plus, 1000000, 1, 1000000, 1)
    ->Name("a + b")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(binary, array_array_lt, Op::lt, 1000000, 1, 1000000, 1)->Name("a < b")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(binary, array_array_dpower, Op::dpower, 1000000, 1, 1000000, 1)
    ->Name("a .^ b")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(binary, matrix_row_plus, Op::plus, 1000, 1000, 1, 1000)
    ->Name("matrix + row")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(binary, matrix_column_plus, Op::plus, 1000, 1000, 1000, 1)
    ->Name("matrix + column")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(binary, column_row_plus, Op::plus, 1000, 1, 1, 1000)
    ->Name("column + row")
    ->Unit(benchmark::kMicrosecond);

void transposition(benchmark::State& state) {
  const Storable a = filled(state.range(0), state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(transpose(a, false));
}
BENCHMARK(transposition)->Name("transpose")->Arg(1000)->Arg(1024)->Unit(benchmark::kMicrosecond);

void joined(benchmark::State& state, int64_t dim, int64_t pieces, int64_t rows, int64_t columns) {
  const Storable piece = filled(rows, columns);
  for (auto _ : state) {
    benchmark::DoNotOptimize(catenate(std::vector<Storable>(static_cast<size_t>(pieces), piece), dim));
  }
}
BENCHMARK_CAPTURE(joined, scalars, 2, 1000, 1, 1)->Name("row of 1000 scalars")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(joined, matrices, 2, 10, 1000, 100)
    ->Name("[10 matrices side by side]")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(joined, stacked, 1, 10, 100, 1000)->Name("[10 matrices stacked]")->Unit(benchmark::kMicrosecond);

void ranges(benchmark::State& state) {
  const NumericArray first = DoubleArray(0.0), step = DoubleArray(0.5), last = DoubleArray(499999.5);
  for (auto _ : state) benchmark::DoNotOptimize(rangeOf(first, &step, last).elements());
}
BENCHMARK(ranges)->Name("range of 1e6")->Unit(benchmark::kMicrosecond);

}  // namespace
