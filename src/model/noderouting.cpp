#include <tree/node_imp.h>

#include <tree/precondition.h>
#include <tree/split_rule_imp.h>

namespace tree_800 {

namespace {

int ChildFor(SplitRuleImp const& rule, double const* obs) {
    TREE800_REQUIRE(rule.GetPredictorIndex() >= 0, "a rule that routes has a predictor");
    return rule.Classify(obs[rule.GetPredictorIndex()]);
}

}  // namespace

int NodeImp::Classify(double const* obs) const {
    if (children_.empty() || competitors_.empty() || competitors_.front() == nullptr) {
        return -1;
    }
    SplitRuleImp const& primary = *competitors_.front();
    int const pos = ChildFor(primary, obs);
    if (pos >= 0) {
        return pos;
    }
    for (std::unique_ptr<SplitRuleImp> const& surrogate : surrogates_) {
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

NodeImp const* NodeImp::DropObservationThroughTree(double const* obs, NodeImp const* stop) const {
    NodeImp const* node = this;
    while (node != stop) {
        NodeImp const* next = nullptr;
        if (!node->Child(node->Classify(obs), &next) || next == nullptr) {
            return stop == nullptr ? node : nullptr;
        }
        node = next;
    }
    return node;
}

}  // namespace tree_800
