#ifndef TREE800_BENCHMARKS_SUPPORT_ROUTING_TREES_H
#define TREE800_BENCHMARKS_SUPPORT_ROUTING_TREES_H

#include <tree/node_imp.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <vector>

/// Trees and the rows to route through them, the same in every run. The leaves of a binary tree
/// receive about equally many of the rows, and so, roughly, do those of a multiway tree. Leaves are
/// numbered from 0 in pre-order by their ids; every node holds the counts of three classes. But for
/// BuildBinaryTree they are copies: their nodes lie in memory in pre-order, as NodeImp::Clone makes
/// them.
namespace tree_800::bench {

constexpr std::size_t NumPredictors = 20;

/// So many that a branch predictor cannot learn the ways of all by heart, as it does with some
/// thousands; in a smoke run few.
std::size_t NumRows();

/// The numbers of leaves of the binary trees: 31, 1,000, 30,000 and, but for smoke runs, 1,000,000.
/// Their leaves lie at mean depths of 5, 11, 20 and 20.
void BinarySizes(benchmark::internal::Benchmark* benchmark);

/// A tree of binary ordered rules on predictors with values in [0, 1). Every inner node has two
/// surrogates, some of them reversed, and names its biggest child. leaves is one of BinarySizes.
std::unique_ptr<NodeImp> BuildBinaryTree(int leaves);
std::unique_ptr<NodeImp> MakeBinaryTree(int leaves);

/// Rows for the binary trees, one after the other, of which so many values in a hundred are
/// missing.
std::vector<double> MakeOrderedRows(int missingPercent);

/// A tree of rules with two to five children: predictors with even indices are ordered, with values
/// in [0, 1), the others nominal, with 10 to 40 categories. Every inner node names its biggest
/// child; there are no surrogates.
std::unique_ptr<NodeImp> MakeMultiwayTree(int leaves);

/// Rows for the multiway trees, as above.
std::vector<double> MakeMixedRows(int missingPercent);

}  // namespace tree_800::bench

#endif
