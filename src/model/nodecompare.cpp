#include <tree/node_imp.h>

#include <tree/cls_info.h>
#include <tree/reg_info.h>
#include <tree/split_rule_imp.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <unordered_set>
#include <utility>

namespace tree_800 {

namespace {

using NodePair = std::pair<NodeImp const*, NodeImp const*>;

struct NodePairHash {
    std::size_t operator()(NodePair const& pair) const noexcept {
        std::hash<NodeImp const*> const hash;
        return hash(pair.first) * 31 + hash(pair.second);
    }
};

// A pair under comparison and how far it has come: its children by position, then its parents, then
// its own contents.
struct Comparison {
    NodePair nodes;
    std::size_t next;
};

// Two pointers to the same kind of object: both null, or both present and equal.
template <typename T>
bool SameOrBothNull(T const* a, T const* b) {
    return a == nullptr || b == nullptr ? a == b : *a == *b;
}

template <typename Rules>
bool SameRules(Rules const& a, Rules const& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](auto const& x, auto const& y) {
        return SameOrBothNull(x.get(), y.get());
    });
}

}  // namespace

// Pairs are met at most once, so that the parent step, which leads back to pairs under comparison,
// cannot run in circles; an explicit stack keeps the depth of the tree off the call stack.
bool NodeImp::operator==(NodeImp const& other) const {
    std::unordered_set<NodePair, NodePairHash> met;
    std::vector<Comparison> stack;
    auto const open = [&met, &stack](NodeImp const* a, NodeImp const* b) {
        if (a == nullptr || b == nullptr) {
            return a == b;
        }
        if (met.emplace(a, b).second) {
            stack.push_back({{a, b}, 0});
            return a->children_.size() == b->children_.size();
        }
        return true;
    };
    if (!open(this, &other)) {
        return false;
    }
    while (!stack.empty()) {
        auto const [a, b] = stack.back().nodes;
        std::size_t const step = stack.back().next++;
        std::size_t const numChildren = a->children_.size();
        bool equal = true;
        if (step < numChildren) {
            equal = open(a->children_[step].get(), b->children_[step].get());
        } else if (step == numChildren) {
            equal = a->parent_ == nullptr || open(a->parent_, b->parent_);
        } else {
            stack.pop_back();
            equal = a->EqualsApartFromRelatives(*b);
        }
        if (!equal) {
            return false;
        }
    }
    return true;
}

// Information is compared only where this node has it; that of a caller's own kind does not count.
bool NodeImp::EqualsApartFromRelatives(NodeImp const& other) const {
    auto const sameReg = [this, &other](DataSample sample) {
        return GetRegInfoImp(sample) == nullptr ||
               SameOrBothNull(GetRegInfoImp(sample), other.GetRegInfoImp(sample));
    };
    auto const sameCls = [this, &other](DataSample sample) {
        return GetClsInfoImp(sample) == nullptr ||
               SameOrBothNull(GetClsInfoImp(sample), other.GetClsInfoImp(sample));
    };
    return SameRules(competitors_, other.competitors_) &&
           SameRules(surrogates_, other.surrogates_) && id_ == other.id_ &&
           isClassification_ == other.isClassification_ && sameReg(TrainingSample) &&
           sameReg(TestSample) && sameCls(TrainingSample) && sameCls(TestSample) &&
           predictors_ == other.predictors_;
}

}  // namespace tree_800
