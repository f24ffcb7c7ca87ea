#include "benchmarks/support/routing_trees.h"
#include "benchmarks/support/sizes.h"

#include <tree/data_sample.h>
#include <tree/node_imp.h>
#include <tree/tree_statistics.h>

#include <benchmark/benchmark.h>

#include <cstddef>

namespace tree_800::bench {
namespace {

void BM_GatherStatistics(benchmark::State& state) {
    int const leaves = Size(state);
    NodeImp const& root = *Cached<MakeBinaryTree>(leaves);
    for (auto _ : state) {
        TreeStatisticsImp statistics;
        statistics.SetIsCls(true);
        statistics.SetNumClasses(3);
        statistics.AddMisclassificationInfo(&root, TrainingSample);
        benchmark::DoNotOptimize(statistics.GetMisclassificationCount(1, 0));
    }
    CountItems(state, 2 * static_cast<std::size_t>(leaves) - 1);  // the nodes of a binary tree
}
BENCHMARK(BM_GatherStatistics)->Arg(1'000)->Arg(30'000);

}  // namespace
}  // namespace tree_800::bench
