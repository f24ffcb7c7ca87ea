#ifndef TREE800_EXAMPLES_CART_WEIGHTING_H
#define TREE800_EXAMPLES_CART_WEIGHTING_H

#include "cart/dataset.h"

#include <tree/cart_settings.h>
#include <tree/cost.h>
#include <tree/priors.h>

#include <vector>

namespace cart {

/// What the priors and misclassification costs of the settings mean for one training sample
/// (Breiman et al. 1984, sections 4.2 to 4.4). Under a prior pi(j) each of the N(j) cases of class
/// j weighs pi(j) N / N(j), so that a case weighs 1 on average and exactly 1 under priors from the
/// data. A class without training cases weighs nothing. A regression target has neither priors nor
/// costs, and its cases weigh 1.
class Weighting {
public:
    /// Priors that the settings lack are 0, costs that they lack 0 on the diagonal and 1 off it.
    /// Throws std::invalid_argument where priors and costs leave no class a prior above 0.
    Weighting(Dataset const& data, Rows const& training, tree_800::CartSettings const& settings);

    /// Whether the priors are equal or the user's, not taken from the data.
    bool HasGivenPriors() const { return hasGivenPriors_; }
    /// The priors, scaled to sum 1; altered by the costs where the settings say so.
    double Prior(int code) const { return priors_.Get(code); }
    double AlteredPrior(int code) const { return priors_.GetAltered(code); }
    double Cost(int predicted, int observed) const { return costs_.Get(predicted, observed); }

    /// What a case of each class weighs in the split criterion, by its altered prior; empty for a
    /// regression target.
    std::vector<double> const& InCriterion() const { return inCriterion_; }
    /// What it weighs in the probabilities, the prediction and the cost of a node, by its prior.
    std::vector<double> const& InNode() const { return inNode_; }

private:
    tree_800::PriorsImp priors_;
    tree_800::CostImp costs_;
    std::vector<double> inCriterion_;
    std::vector<double> inNode_;
    bool hasGivenPriors_ = false;
};

}  // namespace cart

#endif
