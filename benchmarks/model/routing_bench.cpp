#include "benchmarks/support/routing_trees.h"
#include "benchmarks/support/sizes.h"

#include <tree/node_imp.h>
#include <tree/ordered_split_rule.h>
#include <tree/tree_router.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tree_800::bench {
namespace {

using Rows = std::vector<double>;

// The yardstick of routing: a binary tree as an array written by hand, siblings side by side, in
// pre-order. It knows no missing values, no surrogates and no other kind of rule.
class FlatTree {
public:
    explicit FlatTree(NodeImp const& root) : nodes_(1) {
        std::vector<std::pair<NodeImp const*, std::size_t>> toPlace = {{&root, 0}};
        while (!toPlace.empty()) {
            auto const [node, place] = toPlace.back();
            toPlace.pop_back();
            if (node->GetNumChildren() == 0) {
                nodes_[place] = {0.0, -1, static_cast<int>(node->GetId())};
                continue;
            }
            auto const& rule = dynamic_cast<OSplitRule const&>(*node->GetCompetitorImp(0));
            std::size_t const firstChild = nodes_.size();
            nodes_.resize(firstChild + 2);
            nodes_[place] = {rule.GetCutPoint(), rule.GetPredictorIndex(),
                             static_cast<int>(firstChild)};
            toPlace.emplace_back(node->GetChildImp(1), firstChild + 1);
            toPlace.emplace_back(node->GetChildImp(0), firstChild);
        }
    }

    // The number of the leaf of one row. The compiler makes the comparison a number that it adds.
    int Route(double const* row) const {
        FlatNode const* const nodes = nodes_.data();
        int i = 0;
        while (nodes[i].predictor >= 0) {
            i = nodes[i].firstChild + static_cast<int>(row[nodes[i].predictor] > nodes[i].cut);
        }
        return nodes[i].firstChild;
    }

    // The same with a branch at every node, as the compiler makes of this form.
    int RouteByBranches(double const* row) const {
        FlatNode const* node = nodes_.data();
        while (node->predictor >= 0) {
            if (row[node->predictor] <= node->cut) {
                node = nodes_.data() + node->firstChild;
            } else {
                node = nodes_.data() + node->firstChild + 1;
            }
        }
        return node->firstChild;
    }

private:
    struct FlatNode {
        double cut;
        int predictor;   // negative for a leaf
        int firstChild;  // of a leaf, its number
    };
    static_assert(sizeof(FlatNode) == 16);

    std::vector<FlatNode> nodes_;
};

FlatTree MakeFlatTree(int leaves) {
    NodeImp const& root = *Cached<MakeBinaryTree>(leaves);
    FlatTree flat(root);
    Rows const& rows = Cached<MakeOrderedRows>(0);
    for (std::size_t i = 0; i < 1'000; ++i) {
        double const* const row = &rows[i * NumPredictors];
        auto const leaf = root.DropObservationThroughTree(row, nullptr)->GetId();
        if (flat.Route(row) != static_cast<int>(leaf)) {
            throw std::logic_error("the flat tree routes a row elsewhere");
        }
    }
    return flat;
}

// Times one pass over all rows, one row at a time.
template <typename Route>
void RouteRows(benchmark::State& state, Rows const& rows, Route route) {
    std::vector<decltype(route(rows.data()))> ends(NumRows());
    for (auto _ : state) {
        double const* row = rows.data();
        for (auto& end : ends) {
            end = route(row);
            row += NumPredictors;
        }
        benchmark::DoNotOptimize(ends.data());
        benchmark::ClobberMemory();
    }
    CountItems(state, ends.size());
}

void DropRows(benchmark::State& state, NodeImp const& root, Rows const& rows) {
    RouteRows(state, rows,
              [&](double const* row) { return root.DropObservationThroughTree(row, nullptr); });
}

void BM_Flat(benchmark::State& state) {
    FlatTree const& flat = Cached<MakeFlatTree>(Size(state));
    RouteRows(state, Cached<MakeOrderedRows>(0),
              [&](double const* row) { return flat.Route(row); });
}
BENCHMARK(BM_Flat)->Apply(BinarySizes);

void BM_FlatByBranches(benchmark::State& state) {
    FlatTree const& flat = Cached<MakeFlatTree>(Size(state));
    RouteRows(state, Cached<MakeOrderedRows>(0),
              [&](double const* row) { return flat.RouteByBranches(row); });
}
BENCHMARK(BM_FlatByBranches)->Apply(BinarySizes);

void BM_DropObservation(benchmark::State& state) {
    DropRows(state, *Cached<MakeBinaryTree>(Size(state)), Cached<MakeOrderedRows>(0));
}
BENCHMARK(BM_DropObservation)->Apply(BinarySizes);

void BM_DropObservationHoles(benchmark::State& state) {
    DropRows(state, *Cached<MakeBinaryTree>(Size(state)), Cached<MakeOrderedRows>(10));
}
BENCHMARK(BM_DropObservationHoles)->Apply(BinarySizes);

void BM_MultiwayDropObservation(benchmark::State& state) {
    DropRows(state, *Cached<MakeMultiwayTree>(Size(state)), Cached<MakeMixedRows>(0));
}
BENCHMARK(BM_MultiwayDropObservation)->Arg(1'000)->Arg(30'000);

void BM_MultiwayDropObservationHoles(benchmark::State& state) {
    DropRows(state, *Cached<MakeMultiwayTree>(Size(state)), Cached<MakeMixedRows>(10));
}
BENCHMARK(BM_MultiwayDropObservationHoles)->Arg(1'000)->Arg(30'000);

// Routers, in the same order.

void RouteOneByOne(benchmark::State& state, TreeRouter const& router, Rows const& rows) {
    RouteRows(state, rows, [&](double const* row) { return router.RouteToLeaf(row); });
}

void RouteBatch(benchmark::State& state, TreeRouter const& router, Rows const& rows) {
    std::vector<int> leaves(NumRows());
    auto const batch = RowBatch::RowMajor(rows.data(), NumRows(), NumPredictors);
    for (auto _ : state) {
        router.RouteToLeaves(batch, leaves.data());
        benchmark::DoNotOptimize(leaves.data());
        benchmark::ClobberMemory();
    }
    CountItems(state, leaves.size());
}

std::unique_ptr<TreeRouter> MakeRouter(int leaves) {
    return TreeRouter::Compile(*Cached<MakeBinaryTree>(leaves), nullptr);
}

std::unique_ptr<TreeRouter> MakeMultiwayRouter(int leaves) {
    return TreeRouter::Compile(*Cached<MakeMultiwayTree>(leaves), nullptr);
}

void BM_RouterOneRow(benchmark::State& state) {
    RouteOneByOne(state, *Cached<MakeRouter>(Size(state)), Cached<MakeOrderedRows>(0));
}
BENCHMARK(BM_RouterOneRow)->Apply(BinarySizes);

void BM_RouterOneRowHoles(benchmark::State& state) {
    RouteOneByOne(state, *Cached<MakeRouter>(Size(state)), Cached<MakeOrderedRows>(10));
}
BENCHMARK(BM_RouterOneRowHoles)->Apply(BinarySizes);

void BM_RouterBatch(benchmark::State& state) {
    RouteBatch(state, *Cached<MakeRouter>(Size(state)), Cached<MakeOrderedRows>(0));
}
BENCHMARK(BM_RouterBatch)->Apply(BinarySizes);

void BM_RouterBatchHoles(benchmark::State& state) {
    RouteBatch(state, *Cached<MakeRouter>(Size(state)), Cached<MakeOrderedRows>(10));
}
BENCHMARK(BM_RouterBatchHoles)->Apply(BinarySizes);

void BM_MultiwayRouterBatch(benchmark::State& state) {
    RouteBatch(state, *Cached<MakeMultiwayRouter>(Size(state)), Cached<MakeMixedRows>(0));
}
BENCHMARK(BM_MultiwayRouterBatch)->Arg(1'000)->Arg(30'000);

void BM_MultiwayRouterBatchHoles(benchmark::State& state) {
    RouteBatch(state, *Cached<MakeMultiwayRouter>(Size(state)), Cached<MakeMixedRows>(10));
}
BENCHMARK(BM_MultiwayRouterBatchHoles)->Arg(1'000)->Arg(30'000);

// An item is a node of the tree; the bytes are those of the tables by inner node.
void BM_CompileTree(benchmark::State& state) {
    NodeImp const& root = *Cached<MakeBinaryTree>(Size(state));
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = TreeRouter::Compile(root, nullptr)->GetTableSize();
    }
    auto const numLeaves = static_cast<std::size_t>(Size(state));
    CountItems(state, 2 * numLeaves - 1);
    state.counters["bytes_per_node"] =
        static_cast<double>(bytes) / static_cast<double>(numLeaves - 1);
}
BENCHMARK(BM_CompileTree)->Apply(BinarySizes);

}  // namespace
}  // namespace tree_800::bench
