#include "benchmarks/support/heap_trace.h"
#include "benchmarks/support/routing_trees.h"
#include "benchmarks/support/sizes.h"

#include <tree/cumulative_node.h>
#include <tree/data_sample.h>
#include <tree/node_imp.h>
#include <tree/node_iterator.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <vector>

namespace tree_800::bench {
namespace {

std::vector<Node const*> NodesOf(NodeImp const& root) {
    std::vector<Node const*> nodes;
    PrefixNodeIterator walk(&root);
    while (Node const* node = walk.Next()) {
        nodes.push_back(node);
    }
    return nodes;
}

void Sizes(benchmark::internal::Benchmark* benchmark) { benchmark->Arg(1'000)->Arg(30'000); }

void CloneSizes(benchmark::internal::Benchmark* benchmark) {
    Sizes(benchmark);
    if (!IsSmokeRun()) {
        benchmark->Arg(1'000'000);
    }
}

NodeImp const& Tree(benchmark::State const& state) { return *Cached<MakeBinaryTree>(Size(state)); }

std::size_t NumNodes(benchmark::State const& state) { return NodesOf(Tree(state)).size(); }

// What a clone of the tree and then its destruction ask of the allocator.
struct CloneTrace {
    HeapTrace heap;
    std::size_t numCloneRequests = 0;
    std::size_t numBytes = 0;
};

CloneTrace MakeCloneTrace(int leaves) {
    NodeImp const& root = *Cached<MakeBinaryTree>(leaves);
    CloneTrace trace;
    NodeImp* clone = nullptr;
    trace.heap.Record([&] { clone = root.Clone(); });
    trace.numCloneRequests = trace.heap.NumRequests();
    trace.numBytes = trace.heap.NumLiveBytes();
    trace.heap.Record([&] { delete clone; });
    return trace;
}

void BM_BuildTree(benchmark::State& state) {
    for (auto _ : state) {
        auto root = BuildBinaryTree(Size(state));
        benchmark::DoNotOptimize(root);
        state.PauseTiming();
        root.reset();
        state.ResumeTiming();
    }
    CountItems(state, NumNodes(state));
}
BENCHMARK(BM_BuildTree)->Apply(Sizes);

void BM_CloneTree(benchmark::State& state) {
    NodeImp const& root = Tree(state);
    for (auto _ : state) {
        std::unique_ptr<NodeImp> clone(root.Clone());
        benchmark::DoNotOptimize(clone);
        state.PauseTiming();
        clone.reset();
        state.ResumeTiming();
    }
    std::size_t const numNodes = NumNodes(state);
    CountItems(state, numNodes);
    state.counters["bytes_per_node"] =
        static_cast<double>(Cached<MakeCloneTrace>(Size(state)).numBytes) /
        static_cast<double>(numNodes);
}
BENCHMARK(BM_CloneTree)->Apply(CloneSizes);

void BM_AllocateClone(benchmark::State& state) {
    CloneTrace& trace = Cached<MakeCloneTrace>(Size(state));
    for (auto _ : state) {
        trace.heap.Replay(0, trace.numCloneRequests);
        state.PauseTiming();
        trace.heap.Replay(trace.numCloneRequests, trace.heap.NumRequests());
        state.ResumeTiming();
    }
    CountItems(state, NumNodes(state));
}
BENCHMARK(BM_AllocateClone)->Apply(CloneSizes);

void BM_DestroyTree(benchmark::State& state) {
    NodeImp const& root = Tree(state);
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<NodeImp> clone(root.Clone());
        state.ResumeTiming();
        clone.reset();
    }
    CountItems(state, NumNodes(state));
}
BENCHMARK(BM_DestroyTree)->Apply(CloneSizes);

void BM_ReleaseClone(benchmark::State& state) {
    CloneTrace& trace = Cached<MakeCloneTrace>(Size(state));
    for (auto _ : state) {
        state.PauseTiming();
        trace.heap.Replay(0, trace.numCloneRequests);
        state.ResumeTiming();
        trace.heap.Replay(trace.numCloneRequests, trace.heap.NumRequests());
    }
    CountItems(state, NumNodes(state));
}
BENCHMARK(BM_ReleaseClone)->Apply(CloneSizes);

void BM_CompareTrees(benchmark::State& state) {
    NodeImp const& root = Tree(state);
    std::unique_ptr<NodeImp> const clone(root.Clone());
    for (auto _ : state) {
        bool const areEqual = root == *clone;
        if (!areEqual) {
            throw std::logic_error("a tree differs from its clone");
        }
    }
    CountItems(state, NumNodes(state));
}
BENCHMARK(BM_CompareTrees)->Apply(Sizes);

void BM_TraverseTree(benchmark::State& state) {
    NodeImp const& root = Tree(state);
    for (auto _ : state) {
        PrefixNodeIterator walk(&root);
        while (Node const* node = walk.Next()) {
            benchmark::DoNotOptimize(node);
        }
    }
    CountItems(state, NumNodes(state));
}
BENCHMARK(BM_TraverseTree)->Apply(Sizes);

void BM_PoolNodes(benchmark::State& state) {
    std::vector<Node const*> const nodes = NodesOf(Tree(state));
    CumulativeNode pooled(nodes);
    for (auto _ : state) {
        benchmark::DoNotOptimize(pooled.GetNodeSize(TrainingSample));
        benchmark::DoNotOptimize(pooled.GetClsInfo(TrainingSample));
    }
    CountItems(state, nodes.size());
}
BENCHMARK(BM_PoolNodes)->Apply(Sizes);

}  // namespace
}  // namespace tree_800::bench
