// Element access on the raw helpers: single elements, appending, masks, slices, structure fields.
#include <benchmark/benchmark.h>

#include <random>

#include "values/chains.h"
#include "values/indexing.h"

namespace kelo {
namespace {

Storable randomRow(int64_t n) {
  std::mt19937 engine(1);
  std::normal_distribution<double> normal;
  DoubleArray row = DoubleArray::uninitialized(SizeVector(1, n));
  for (int64_t k = 0; k < n; ++k) row.writable()[k] = normal(engine);
  return row;
}

Storable positiveOf(const Storable& x) {
  LogicalArray mask = LogicalArray::uninitialized(x.size());
  bool* out = mask.writable();
  for (const double value : x.numeric()->asDouble().values()) *out++ = value > 0;
  return mask;
}

void elementFast(benchmark::State& state) {
  Storable x = randomRow(1000);
  double k = 1;
  for (auto _ : state) {
    double value = 0;
    readScalar(*x.numeric(), k, &value);
    benchmark::DoNotOptimize(writeScalar(*x.numeric(), k, value + 1));
    k = k == 1000 ? 1 : k + 1;
  }
}
BENCHMARK(elementFast);

void elementPlain(benchmark::State& state) {
  Storable x = randomRow(1000);
  double k = 1;
  for (auto _ : state) {
    const Index index = Index::from(Storable(k));
    benchmark::DoNotOptimize(readElements(x, {&index, 1}));
    writeElements(x, {&index, 1}, Storable(k));
    k = k == 1000 ? 1 : k + 1;
  }
}
BENCHMARK(elementPlain);

void append(benchmark::State& state) {
  for (auto _ : state) {
    Storable x;
    for (int64_t k = 0; k < 100000; ++k) {
      if (writeScalar(*x.numeric(), static_cast<double>(k + 1), 1.0)) continue;
      const Index index = Index::one(k);
      writeElements(x, {&index, 1}, Storable(1.0));
    }
    benchmark::DoNotOptimize(x);
  }
  state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(append)->Unit(benchmark::kMicrosecond);

void appendStructures(benchmark::State& state) {
  const Name field = Name::intern("a");
  for (auto _ : state) {
    Storable s = StructArray(SizeVector(1, 1), {field});
    for (int64_t k = 0; k < 10000; ++k) {
      FieldChain chain(field);
      chain.addIndices({Index::one(k)});
      chain.addField(field);
      chain.assign(s, false, Storable(1.0));
    }
    benchmark::DoNotOptimize(s);
  }
  state.SetItemsProcessed(state.iterations() * 10000);
}
BENCHMARK(appendStructures)->Unit(benchmark::kMicrosecond);

void maskRead(benchmark::State& state) {
  const Storable x = randomRow(1000000);
  const Storable mask = positiveOf(x);
  for (auto _ : state) {
    const Index index = Index::from(mask);
    benchmark::DoNotOptimize(readElements(x, {&index, 1}));
  }
}
BENCHMARK(maskRead)->Unit(benchmark::kMicrosecond);

void maskFill(benchmark::State& state) {
  Storable x = randomRow(1000000);
  const Storable mask = positiveOf(x);
  for (auto _ : state) {
    const Index index = Index::from(mask);
    writeElements(x, {&index, 1}, Storable(0.0));
  }
}
BENCHMARK(maskFill)->Unit(benchmark::kMicrosecond);

void listRead(benchmark::State& state) {
  const Storable x = randomRow(1000000);
  DoubleArray backwards = DoubleArray::uninitialized(x.size());
  for (int64_t k = 0; k < 1000000; ++k) backwards.writable()[k] = static_cast<double>(1000000 - k);
  for (auto _ : state) {
    const Index index = Index::from(backwards);
    benchmark::DoNotOptimize(readElements(x, {&index, 1}));
  }
}
BENCHMARK(listRead)->Unit(benchmark::kMicrosecond);

void columns(benchmark::State& state) {
  const Storable a = randomRow(1000000).numeric()->asDouble().reshaped(SizeVector(1000, 1000));
  for (auto _ : state) {
    for (int64_t k = 0; k < 1000; ++k) {
      const Index indices[] = {Index::colon(1000), Index::one(k)};
      benchmark::DoNotOptimize(readElements(a, indices));
    }
  }
}
BENCHMARK(columns)->Unit(benchmark::kMicrosecond);

void rows(benchmark::State& state) {
  const Storable a = randomRow(1000000).numeric()->asDouble().reshaped(SizeVector(1000, 1000));
  for (auto _ : state) {
    for (int64_t k = 0; k < 1000; ++k) {
      const Index indices[] = {Index::one(k), Index::colon(1000)};
      benchmark::DoNotOptimize(readElements(a, indices));
    }
  }
}
BENCHMARK(rows)->Unit(benchmark::kMicrosecond);

void fieldElement(benchmark::State& state) {
  const Name a = Name::intern("a");
  Storable s = StructArray(SizeVector(1, 1), {a});
  s.structure()->writableValue(0, 0) = randomRow(1000);
  for (auto _ : state) {
    FieldChain chain(a);
    chain.addField(a);
    chain.addIndices({Index::one(7)});
    chain.assign(s, false, Storable(1.0));
  }
}
BENCHMARK(fieldElement);

void fieldPlain(benchmark::State& state) {
  const Name a = Name::intern("a");
  Storable s = StructArray(SizeVector(1, 1), {a});
  s.structure()->writableValue(0, 0) = Storable(0.0);
  for (auto _ : state) {
    Storable value(plainField(s, a)->doubleScalar() + 1);
    *writablePlainField(s, a) = std::move(value);
  }
}
BENCHMARK(fieldPlain);

}  // namespace
}  // namespace kelo
