#ifndef TREE800_TREE_ROUTER_H
#define TREE800_TREE_ROUTER_H

#include <tree/export.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tree_800 {

class NodeImp;
class RouterTables;

/// What is wrong at one node of a tree.
struct TreeProblem {
    std::vector<int> path;  ///< child positions from the root down to the node; empty for the root
    std::string what;       ///< one sentence
};

/// Every problem that keeps the tree from being routed by a TreeRouter, in pre-order; none for a
/// sound tree. A problem is: an empty child slot; children without a primary split; a primary split
/// or surrogate on a negative predictor index, with a child position (GetNumChildren, and the
/// primary split's dumb child) beyond the children, or of a caller's own kind without a clone; a
/// child that is shared with another slot or leads back up, which is told by its parent link and is
/// not entered. Empty surrogate slots are none, nor are the rules of a leaf: routing passes over
/// both. Throws bad_alloc when memory runs out.
TREE800_EXPORT std::vector<TreeProblem> CheckTree(NodeImp const& root);

/// Rows of predictor values that the caller owns: the value of predictor p in row r is
/// values[r * rowStride + p * predictorStride].
struct RowBatch {
    double const* values;         ///< of row 0, predictor 0; borrowed; null only without rows
    std::size_t numRows;          ///< may be 0
    std::size_t rowStride;        ///< in values, from a row to the next
    std::size_t predictorStride;  ///< in values, from a predictor to the next

    /// Row after row, each row starting `stride` values after the one before.
    static RowBatch RowMajor(double const* values, std::size_t numRows,
                             std::size_t stride) noexcept {
        return {values, numRows, stride, 1};
    }
    /// Predictor after predictor, each column starting `stride` values after the one before.
    static RowBatch ColumnMajor(double const* values, std::size_t numRows,
                                std::size_t stride) noexcept {
        return {values, numRows, 1, stride};
    }
};

/// A finished tree compiled into tables for routing many rows fast. For every row it answers
/// exactly the node that root.DropObservationThroughTree(row, nullptr) answers.
///
/// The tables are the router's own: edits of the tree after Compile do not reach them, and rules of
/// a caller's own kind are kept as clones. The nodes that a router answers are the tree's: they are
/// borrowed and dangle once the tree deletes them; leaf numbers stay good. Nodes are taken as
/// NodeImp routes them: a class derived from it must not override Classify, nor what tells of
/// children and rules.
///
/// Immutable; any number of threads may use one router at a time as long as the Classify of every
/// rule of a caller's own kind allows it. Routing allocates nothing.
///
///     std::vector<TreeProblem> problems;
///     if (auto const router = TreeRouter::Compile(*root, &problems)) {
///         router->RouteToLeaves(RowBatch::RowMajor(values, numRows, numPredictors), leaves);
///     }
class TREE800_EXPORT TreeRouter {
public:
    /// The router of the tree below the root, which may be an inner node of a larger tree. Null
    /// when CheckTree finds problems, which then replace the contents of *problems unless that is
    /// null. Throws bad_alloc when memory runs out.
    [[nodiscard]] static std::unique_ptr<TreeRouter> Compile(NodeImp const& root,
                                                             std::vector<TreeProblem>* problems);
    TreeRouter(TreeRouter const&) = delete;
    TreeRouter& operator=(TreeRouter const&) = delete;
    ~TreeRouter();

    /// Number of values that a row must have: one more than the highest predictor index in use.
    std::size_t GetNumPredictors() const noexcept;
    /// Leaves are numbered in pre-order, from 0.
    int GetNumLeaves() const noexcept;
    /// The leaf with the number, in [0, GetNumLeaves()); borrowed.
    NodeImp const* GetLeaf(int number) const noexcept;
    /// Memory that the tables take, in bytes, without clones of rules of a caller's own kind.
    std::size_t GetTableSize() const noexcept;

    /// The node at which the observation's walk ends: a leaf, or an inner node that cannot place
    /// it. obs[i] is the value of predictor i, missing ones coded as in NodeImp::Classify; it has
    /// GetNumPredictors() values. Borrowed.
    NodeImp const* Route(double const* obs) const;
    /// The number of the leaf at which the walk ends; -1 where it ends at an inner node.
    int RouteToLeaf(double const* obs) const;

    /// Both for each row of a batch, into arrays of rows.numRows elements that the caller owns;
    /// every row has GetNumPredictors() values. Several rows are under way at a time, so that one
    /// waits for memory while the others go on. @{
    void Route(RowBatch const& rows, NodeImp const** nodes) const;
    void RouteToLeaves(RowBatch const& rows, int* leaves) const;
    /// @}

private:
    explicit TreeRouter(std::unique_ptr<RouterTables const> tables) noexcept;

    std::unique_ptr<RouterTables const> tables_;
};

}  // namespace tree_800

#endif
