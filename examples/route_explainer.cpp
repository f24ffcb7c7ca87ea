#include "route_explainer.h"

#include <tree/host.h>
#include <tree/node_imp.h>
#include <tree/split_rule_imp.h>

#include <stdexcept>

namespace examples {
namespace {

using tree_800::NodeImp;
using tree_800::SplitRuleImp;

NodeImp const* ChildAt(NodeImp const& node, int pos) {
    NodeImp const* child = nullptr;
    node.Child(pos, &child);
    return child;
}

/// Asks the rules of an inner node in the order in which the node itself does. The step leads to
/// null when the observation ends here.
RouteStep TakeStep(NodeImp const& node, double const* observation) {
    auto const ask = [&](SplitRuleImp const& rule) {
        return rule.Classify(observation[rule.GetPredictorIndex()]);
    };
    SplitRuleImp const& primary = *node.GetCompetitorImp(0);
    int const predictor = primary.GetPredictorIndex();
    if (int const pos = ask(primary); pos >= 0) {
        bool const isMissing = observation[predictor] == systemMissingValue();
        return {&node, ChildAt(node, pos),
                isMissing ? PlacedBy::MissingValueChild : PlacedBy::PrimarySplit, predictor, -1};
    }
    for (unsigned i = 0; i < node.GetNumSurrogates(); ++i) {
        SplitRuleImp const& surrogate = *node.GetSurrogateImp(i);
        if (int const pos = ask(surrogate); pos >= 0) {
            return {&node, ChildAt(node, pos), PlacedBy::Surrogate, surrogate.GetPredictorIndex(),
                    static_cast<int>(i)};
        }
    }
    return {&node, ChildAt(node, node.GetBiggestChildPos()), PlacedBy::BiggestChild, -1, -1};
}

}  // namespace

std::vector<RouteStep> ExplainRoute(NodeImp const& root, double const* observation) {
    std::vector<RouteStep> steps;
    NodeImp const* node = &root;
    while (node->GetNumChildren() > 0) {
        RouteStep const step = TakeStep(*node, observation);
        if (step.to == nullptr) {
            break;
        }
        steps.push_back(step);
        node = step.to;
    }
    if (node != root.DropObservationThroughTree(observation, nullptr)) {
        throw std::logic_error("the tree routes the observation elsewhere");
    }
    return steps;
}

std::string Describe(RouteStep const& step, cart::Dataset const& data) {
    std::string const text =
        std::to_string(step.from->GetId()) + " -> " + std::to_string(step.to->GetId()) + ": ";
    auto const name = [&] { return data.Predictor(step.predictor).name; };
    switch (step.placedBy) {
        case PlacedBy::PrimarySplit:
            return text + "primary split, " + name();
        case PlacedBy::MissingValueChild:
            return text + "missing-value child, " + name();
        case PlacedBy::Surrogate:
            return text + "surrogate " + std::to_string(step.surrogate + 1) + ", " + name();
        case PlacedBy::BiggestChild:
            break;
    }
    return text + "biggest child";
}

}  // namespace examples
