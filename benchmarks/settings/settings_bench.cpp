#include "benchmarks/support/sizes.h"

#include <tree/cart_settings.h>
#include <tree/chaid_settings.h>
#include <tree/core_settings.h>
#include <tree/quest_settings.h>
#include <tree/variable_settings.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>

namespace tree_800::bench {
namespace {

// Numbers of predictors.
void Sizes(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(20)->Arg(1'000); }

CoreSettingsImp Core(int predictors) {
    CoreSettingsImp core;
    core.GetTarget()->SetMeasurementLevel(global_800::Nominal);
    for (int i = 0; i < predictors; ++i) {
        core.AddPredictor()->SetNumValues(i);
    }
    return core;
}

void CountPredictors(benchmark::State& state) {
    CountItems(state, static_cast<std::size_t>(Size(state)));
}

template <typename Settings>
void CloneSettings(benchmark::State& state) {
    Settings const settings(Core(Size(state)));
    for (auto _ : state) {
        std::unique_ptr<AlgSettings> const clone(settings.Clone());
        benchmark::DoNotOptimize(clone->GetType());
    }
    CountPredictors(state);
}
BENCHMARK(CloneSettings<CCartSettingsImp>)->Name("BM_CloneCartSettings")->Apply(Sizes);
BENCHMARK(CloneSettings<CChaidSettingsImp>)->Name("BM_CloneChaidSettings")->Apply(Sizes);
BENCHMARK(CloneSettings<QuestSettingsImp>)->Name("BM_CloneQuestSettings")->Apply(Sizes);

// From settings of the same kind, which replaces every part.
template <typename Settings>
void CopySettings(benchmark::State& state) {
    Settings const source(Core(Size(state)));
    Settings target(Core(1));
    for (auto _ : state) {
        target.CopyFrom(source);
        benchmark::ClobberMemory();
    }
    CountPredictors(state);
}
BENCHMARK(CopySettings<CCartSettingsImp>)->Name("BM_CopyCartSettings")->Apply(Sizes);
BENCHMARK(CopySettings<CChaidSettingsImp>)->Name("BM_CopyChaidSettings")->Apply(Sizes);
BENCHMARK(CopySettings<QuestSettingsImp>)->Name("BM_CopyQuestSettings")->Apply(Sizes);

}  // namespace
}  // namespace tree_800::bench
