#ifndef TREE800_EXAMPLES_ROUTE_EXPLAINER_H
#define TREE800_EXAMPLES_ROUTE_EXPLAINER_H

#include "cart/dataset.h"

#include <string>
#include <vector>

namespace tree_800 {
class NodeImp;
}

namespace examples {

/// What sent an observation from a node to one of its children.
enum class PlacedBy {
    PrimarySplit,
    MissingValueChild,  ///< the primary split has a child for missing values
    Surrogate,
    BiggestChild  ///< no rule could place the observation
};

struct RouteStep {
    tree_800::NodeImp const* from;
    tree_800::NodeImp const* to;
    PlacedBy placedBy;
    int predictor;  ///< of the rule that placed the observation; -1 for BiggestChild
    int surrogate;  ///< its position among the surrogates; -1 for none
};

/// The steps of an observation from the root to where it ends, none when it ends at the root. Every
/// inner node must have a primary split. Throws std::logic_error should the tree itself route the
/// observation elsewhere.
std::vector<RouteStep> ExplainRoute(tree_800::NodeImp const& root, double const* observation);

/// The step in words: "1 -> 2: surrogate 1, bill_depth_mm".
std::string Describe(RouteStep const& step, cart::Dataset const& data);

}  // namespace examples

#endif
