#ifndef TREE800_EXAMPLES_CART_CROSS_VALIDATION_H
#define TREE800_EXAMPLES_CART_CROSS_VALIDATION_H

#include "cart/dataset.h"
#include "cart/risk.h"
#include "cart/weighting.h"

#include <tree/cart_settings.h>

#include <vector>

namespace cart {

/// Deals the rows into the folds of the specification, shuffled by std::mt19937 under its seed; of
/// sizes that differ by one at most. The folds are stratified: the rows of each class are spread
/// over them as evenly as possible. Rows with a regression target are shuffled alone. The same
/// seed gives the same folds everywhere.
std::vector<Rows> DealIntoFolds(Dataset const& data, Rows const& rows,
                                tree_800::ValidationSpec const& validation);

/// Judges the pruned subtrees of a tree by cross-validation (Breiman et al. 1984, section 3.4.2):
/// for each fold a tree is grown on the other folds, pruned to the geometric mean of each two
/// neighbouring complexity parameters of the whole tree, and predicts the rows of the fold. Borrows
/// what it is given; one thread at a time.
class CrossValidator {
public:
    CrossValidator(Dataset const& data, Rows const& training,
                   tree_800::CartSettings const& settings, std::vector<double> const& alphas);

    /// Grows and judges the tree of the next fold; there must be one.
    void JudgeNextFold();
    bool IsComplete() const { return numJudged_ == folds_.size(); }
    /// The risks of the subtrees, in the order of the parameters, over the folds judged so far.
    std::vector<Risk> GetRisks(Weighting const& weighting) const;

private:
    Dataset const& data_;
    tree_800::CartSettings const& settings_;
    std::vector<Rows> folds_;
    std::vector<double> alphas_;  // at which the subtrees are judged
    std::size_t numJudged_ = 0;
    Rows judgedRows_;
    std::vector<std::vector<double>> losses_;  // of the judged rows, for each alpha
};

}  // namespace cart

#endif
