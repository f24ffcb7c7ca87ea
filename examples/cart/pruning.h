#ifndef TREE800_EXAMPLES_CART_PRUNING_H
#define TREE800_EXAMPLES_CART_PRUNING_H

#include "cart/dataset.h"
#include "cart/risk.h"
#include "cart/weighting.h"

#include <tree/pruning_spec.h>

#include <unordered_map>
#include <vector>

namespace tree_800 {
class Node;
class NodeImp;
}  // namespace tree_800

namespace cart {

/// The nested subtrees of a grown tree that minimal cost-complexity pruning passes through (Breiman
/// et al. 1984, section 3.3). For a complexity parameter alpha the subtree T(alpha) minimises
/// risk + alpha x number of leaves, and is the smallest that does. The risk is that of the training
/// rows, under the priors and costs of the weighting; a row that ends at an inner node counts
/// there. Borrows the tree, which must stay as it is; one thread at a time.
///
///     PruningSequence sequence(root, data, rows, weighting);
///     sequence.FindEnd(data.Row(0), sequence.GetAlphas()[1]);
class PruningSequence {
public:
    PruningSequence(tree_800::NodeImp& root, Dataset const& data, Rows const& training,
                    Weighting const& weighting);

    /// Where the subtree changes, ascending from 0: the subtree of alphas[k] minimises for every
    /// alpha from alphas[k] to below alphas[k + 1], and that of the last one is the root alone.
    std::vector<double> const& GetAlphas() const { return alphas_; }

    /// Where an observation ends in T(alpha).
    tree_800::Node const& FindEnd(double const* observation, double alpha) const;

    /// The nodes that are inner nodes of the tree and leaves of T(alpha), topmost ones alone.
    std::vector<tree_800::NodeImp*> FindNewLeaves(double alpha) const;

private:
    struct Branch;
    std::vector<Branch> MakeBranches(Dataset const& data, Rows const& training,
                                     Weighting const& weighting) const;
    void CutWeakestLinks(std::vector<Branch>& branches);

    tree_800::NodeImp& root_;
    std::vector<double> alphas_ = {0.0};
    std::unordered_map<tree_800::Node const*, double> leafFrom_;  // the alpha; 0 for every leaf
};

/// The position of the subtree that the specification picks, of subtrees in descending size: the
/// smallest whose risk is at most the smallest risk plus the factor times the standard error of
/// that, or the smallest one of minimum risk (Breiman et al. 1984, section 3.4.3).
std::size_t ChooseSubtree(std::vector<Risk> const& risks, tree_800::PruningSpec const& pruning);

/// Makes leaves of the nodes, without rules, and numbers the nodes of the tree 1, 2, ... in
/// pre-order.
void Prune(tree_800::NodeImp& root, std::vector<tree_800::NodeImp*> const& newLeaves);

}  // namespace cart

#endif
