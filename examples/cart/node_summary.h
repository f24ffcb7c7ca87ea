#ifndef TREE800_EXAMPLES_CART_NODE_SUMMARY_H
#define TREE800_EXAMPLES_CART_NODE_SUMMARY_H

#include "cart/dataset.h"
#include "cart/weighting.h"

namespace tree_800 {
class NodeImp;
}

namespace cart {

/// Number of slices in the histogram of a regression node; 1 where all targets are equal.
constexpr int NumBins = 8;

/// Fills in what the node tells of the rows that reach it: the information of the training sample,
/// that of the test sample where the tree has one, and the predictor summaries of the training
/// sample. `all` are the rows of the whole tree, against which a percent size is taken.
///
/// What the node predicts comes from the training sample alone, for either sample: the class of the
/// smallest expected cost, the first of equals, under the probabilities of the classes, which are
/// their shares weighted by the priors; or the mean. Class counts are cases, each counted once.
/// Standard deviations divide by the number of cases.
void Summarise(tree_800::NodeImp& node, Dataset const& data, SampleRows const& rows,
               SampleRows const& all, Weighting const& weighting);

/// Weight x Gini index under the weights of the criterion, or the sum of squared deviations from
/// the mean, of the training sample of a summarised node.
double Impurity(tree_800::NodeImp const& node, Weighting const& weighting);

}  // namespace cart

#endif
