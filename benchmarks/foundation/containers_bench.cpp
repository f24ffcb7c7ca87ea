#include "benchmarks/support/sizes.h"

#include <tree/array.h>
#include <tree/array_rw.h>
#include <tree/matrix.h>
#include <tree/value_set.h>

#include <benchmark/benchmark.h>

#include <cstddef>

namespace tree_800::bench {
namespace {

// Numbers of elements.
void Sizes(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(10)->Arg(1'000); }

// Filled upward into room that is there.
TArray<double> FilledArray(int size) {
    TArray<double> array(true);
    array.Init(size);
    for (int i = 0; i < size; ++i) {
        array.SetAt(i, i);
    }
    return array;
}

// Filled upward, growing at every element.
TArray<double> GrownArray(int size) {
    TArray<double> array(true);
    for (int i = 0; i < size; ++i) {
        array.SetAtGrow(i, i);
    }
    return array;
}

MCTree_800::ArrayRW<double> FilledArrayRW(int size) {
    MCTree_800::ArrayRW<double> array;
    for (int i = 0; i < size; ++i) {
        array.Add(i);
    }
    return array;
}

TMatrix<double> FilledMatrix(int size) {
    constexpr int NumColumns = 10;
    TMatrix<double> matrix(true);
    matrix.Init(size / NumColumns, NumColumns);
    for (int i = 0; i < size; ++i) {
        matrix.SetAt(i / NumColumns, i % NumColumns, i);
    }
    return matrix;
}

NValueSet FilledCodes(int size) {
    NValueSet codes;
    for (int code = 0; code < size; ++code) {
        codes.Add(code);
    }
    return codes;
}

template <auto Fill>
void FillContainer(benchmark::State& state) {
    for (auto _ : state) {
        auto filled = Fill(Size(state));
        benchmark::DoNotOptimize(&filled);
        benchmark::ClobberMemory();
    }
    CountItems(state, static_cast<std::size_t>(Size(state)));
}
BENCHMARK(FillContainer<FilledArray>)->Name("BM_FillArray")->Apply(Sizes);
BENCHMARK(FillContainer<GrownArray>)->Name("BM_GrowArray")->Apply(Sizes);
BENCHMARK(FillContainer<FilledArrayRW>)->Name("BM_FillArrayRW")->Apply(Sizes);
BENCHMARK(FillContainer<FilledMatrix>)->Name("BM_FillMatrix")->Apply(Sizes);
BENCHMARK(FillContainer<FilledCodes>)->Name("BM_FillCodes")->Apply(Sizes);

template <auto Fill>
void CopyContainer(benchmark::State& state) {
    auto const filled = Fill(Size(state));
    for (auto _ : state) {
        auto copy = filled;
        benchmark::DoNotOptimize(&copy);
        benchmark::ClobberMemory();
    }
    CountItems(state, static_cast<std::size_t>(Size(state)));
}
BENCHMARK(CopyContainer<FilledArray>)->Name("BM_CopyArray")->Apply(Sizes);
BENCHMARK(CopyContainer<FilledArrayRW>)->Name("BM_CopyArrayRW")->Apply(Sizes);
BENCHMARK(CopyContainer<FilledMatrix>)->Name("BM_CopyMatrix")->Apply(Sizes);
BENCHMARK(CopyContainer<FilledCodes>)->Name("BM_CopyCodes")->Apply(Sizes);

}  // namespace
}  // namespace tree_800::bench
