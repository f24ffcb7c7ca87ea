#ifndef TREE800_EXAMPLES_CART_RISK_H
#define TREE800_EXAMPLES_CART_RISK_H

#include "cart/dataset.h"
#include "cart/weighting.h"

#include <vector>

namespace tree_800 {
class Node;
}

namespace cart {

/// An estimate of the expected loss of a case, and the standard error of the estimate.
struct Risk {
    double value;
    double stdError;
};

/// What it costs to predict the row by the node: the cost of taking its class for the predicted
/// one, or the squared error.
double Loss(Dataset const& data, Weighting const& weighting, std::size_t row,
            tree_800::Node const& node);

/// The risk that the losses of the rows amount to (Breiman et al. 1984, sections 3.4, 8.3 and
/// 11.4). The losses are in the order of the rows, of which there is one at least.
///
/// Under priors from the data, and in regression, over the n rows:
///     R  = mean of the losses
///     SE = sqrt(variance of the losses / n)
/// Under given priors pi(j), over the n(j) rows of each class j:
///     R  = sum over j of pi(j) mean(j) = sum over i and j of pi(j) / n(j) C(i|j) n(i, j)
///     SE = sqrt(sum over j of pi(j)^2 variance(j) / n(j))
/// Here C(i|j) is the cost of taking class j for class i, n(i, j) the number of rows of class j
/// predicted as i, and a variance divides by the number of rows. A class without rows adds nothing.
Risk Judge(Dataset const& data, Weighting const& weighting, Rows const& rows,
           std::vector<double> const& losses);

}  // namespace cart

#endif
