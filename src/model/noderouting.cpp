#include <tree/node_imp.h>

#include "model/plain_rule.h"

#include <tree/precondition.h>
#include <tree/split_rule_imp.h>

#include <cstddef>
#include <typeinfo>

namespace tree_800 {

namespace {

int ChildFor(SplitRuleImp const& rule, double const* obs) {
    TREE800_REQUIRE(rule.GetPredictorIndex() >= 0, "a rule that routes has a predictor");
    double const value = obs[rule.GetPredictorIndex()];
    OSplitRule const* const ordered = AsPlainOrdered(rule);
    return ordered != nullptr ? ClassifyOrdered(*ordered, value) : rule.Classify(value);
}

// Where the rules send an observation: the primary split, or the first surrogate that places it, or
// the child for what nothing places.
int ClassifyByRules(SplitRuleImp const& primary,
                    std::vector<std::unique_ptr<SplitRuleImp>> const& surrogates,
                    double const* obs) {
    int const pos = ChildFor(primary, obs);
    if (pos >= 0) {
        return pos;
    }
    for (std::unique_ptr<SplitRuleImp> const& surrogate : surrogates) {
        if (surrogate == nullptr) {
            continue;
        }
        int const surrogatePos = ChildFor(*surrogate, obs);
        if (surrogatePos >= 0) {
            return surrogatePos;
        }
    }
    return primary.GetDumbChildPos();
}

}  // namespace

int NodeImp::Classify(double const* obs) const {
    if (GetNumChildren() <= 0 || competitors_.empty() || competitors_.front() == nullptr) {
        return -1;
    }
    return ClassifyByRules(*competitors_.front(), surrogates_, obs);
}

NodeImp const* NodeImp::DropObservationThroughTree(double const* obs, NodeImp const* stop) const {
    NodeImp const* node = this;
    while (node != stop) {
        bool const isPlain = typeid(*node) == typeid(NodeImp);
        int const pos = isPlain ? node->NodeImp::Classify(obs) : node->Classify(obs);
        bool const hasSlot = pos >= 0 && static_cast<std::size_t>(pos) < node->children_.size();
        NodeImp const* const next =
            hasSlot ? node->children_[static_cast<std::size_t>(pos)].get() : nullptr;
        if (next == nullptr) {
            return stop == nullptr ? node : nullptr;
        }
        node = next;
    }
    return node;
}

}  // namespace tree_800
