#include "benchmarks/support/sizes.h"

#include <tree/cost.h>
#include <tree/priors.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>

namespace tree_800::bench {
namespace {

// Numbers of classes.
void Sizes(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(3)->Arg(30)->Arg(300); }

void FillCosts(Cost& costs, int classes) {
    for (int i = 0; i < classes; ++i) {
        for (int j = 0; j < classes; ++j) {
            costs.Set(i, j, i == j ? 0.0 : 1.0 + i);
        }
    }
}

void CountCells(benchmark::State& state) {
    auto const classes = static_cast<std::size_t>(Size(state));
    CountItems(state, classes * classes);
}

// Into a matrix that has its size.
void BM_FillCosts(benchmark::State& state) {
    CostImp costs;
    costs.Resize(Size(state));
    for (auto _ : state) {
        FillCosts(costs, Size(state));
        benchmark::ClobberMemory();
    }
    CountCells(state);
}
BENCHMARK(BM_FillCosts)->Apply(Sizes);

// Into an empty matrix, which grows at many of its cells.
void BM_GrowCosts(benchmark::State& state) {
    for (auto _ : state) {
        CostImp costs;
        FillCosts(costs, Size(state));
        benchmark::DoNotOptimize(costs.GetNumClasses());
    }
    CountCells(state);
}
BENCHMARK(BM_GrowCosts)->Apply(Sizes);

void BM_CopyCosts(benchmark::State& state) {
    CostImp costs;
    FillCosts(costs, Size(state));
    for (auto _ : state) {
        std::unique_ptr<Cost> const copy(costs.Clone());
        benchmark::DoNotOptimize(copy->GetNumClasses());
    }
    CountCells(state);
}
BENCHMARK(BM_CopyCosts)->Apply(Sizes);

void BM_AlterPriors(benchmark::State& state) {
    int const classes = Size(state);
    CostImp costs;
    FillCosts(costs, classes);
    PriorsImp priors;
    for (int i = 0; i < classes; ++i) {
        priors.Set(i, 1.0 / classes);
    }
    for (auto _ : state) {
        priors.AlterPriorVector(PriorsImp::SecondPriors, PriorsImp::GivenPriors, costs);
        benchmark::DoNotOptimize(priors.Get(0, PriorsImp::SecondPriors));
    }
    CountCells(state);
}
BENCHMARK(BM_AlterPriors)->Apply(Sizes);

}  // namespace
}  // namespace tree_800::bench
