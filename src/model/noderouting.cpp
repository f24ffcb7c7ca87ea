#include <tree/node_imp.h>

#include "model/plain_rule.h"

#include <tree/precondition.h>
#include <tree/split_rule_imp.h>

#include <cstddef>
#include <memory>
#include <typeinfo>
#include <vector>

namespace tree_800 {

namespace {

// Apart from ChildFor: inlined there, it makes ordered rules a few hundredths slower.
[[gnu::noinline]] int ClassifyByOther(SplitRuleImp const& rule, double value) {
    NSplitRule const* const nominal = AsPlainNominal(rule);
    return nominal != nullptr ? nominal->NSplitRule::Classify(value) : rule.Classify(value);
}

[[gnu::always_inline]] inline int ChildFor(SplitRuleImp const& rule, double const* obs) {
    TREE800_REQUIRE(rule.GetPredictorIndex() >= 0, "a rule that routes has a predictor");
    double const value = obs[rule.GetPredictorIndex()];
    OSplitRule const* const ordered = AsPlainOrdered(rule);
    return ordered != nullptr ? ClassifyOrdered(*ordered, value) : ClassifyByOther(rule, value);
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
    // Without competitors the front is null, too.
    if (GetNumChildren() <= 0 || competitors_.front() == nullptr) {
        return -1;
    }
    return ClassifyByRules(*competitors_.front(), surrogates_, obs);
}

NodeImp const* NodeImp::DropObservationThroughTree(double const* obs, NodeImp const* stop) const {
    // Reads a child and asks memory for its primary split, two cache lines, before it is known
    // which child is next: both are on their way while this node's rule is asked. In place of a
    // leaf's rule, which is null, the leaf itself is asked for, to no use: a branch around it would
    // be predicted badly.
    auto const fetch = [](NodeImp const* child) {
        constexpr std::size_t LineSize = 64;
        if (child != nullptr) {
            void const* const rule = child->competitors_.front().get();
            auto const* const bytes = static_cast<char const*>(rule != nullptr ? rule : child);
            __builtin_prefetch(bytes);
            __builtin_prefetch(bytes + LineSize);
        }
    };
    NodeImp const* node = this;
    while (node != stop) {
        if (node->children_.size() == 2) {
            fetch(node->children_[0].get());
            fetch(node->children_[1].get());
        }
        // What Classify does, without the virtual calls, which only derived classes need.
        bool const routesByRules = &typeid(*node) == &typeid(NodeImp) && !node->children_.empty() &&
                                   node->competitors_.front() != nullptr;
        int const pos = routesByRules
                            ? ClassifyByRules(*node->competitors_.front(), node->surrogates_, obs)
                            : node->Classify(obs);
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
