#include <tree/node_imp.h>

#include <tree/cls_info.h>
#include <tree/reg_info.h>
#include <tree/split_rule_imp.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace tree_800 {

namespace {

template <typename Rules>
Rules CloneRules(Rules const& rules) {
    Rules clones(rules.size());
    for (std::size_t i = 0; i < rules.size(); ++i) {
        clones[i].reset(rules[i] != nullptr ? rules[i]->Clone() : nullptr);
    }
    return clones;
}

// A node to copy, and where the copy goes.
struct CopyJob {
    NodeImp const* source;
    NodeImp* parent;
    unsigned int pos;
};

}  // namespace

NodeImp* NodeImp::Clone() const {
    auto copy = std::make_unique<NodeImp>();
    *copy = *this;
    return copy.release();
}

// The copy is complete before anything of this node is released: a throw changes nothing, and the
// other node may be part of this one's tree. Each node is made just before its rules and its first
// child, so that a walk down a copy finds close together what it needs together.
NodeImp& NodeImp::operator=(NodeImp const& other) {
    if (this == &other) {
        return *this;
    }
    NodeImp copy;
    std::vector<CopyJob> pending;
    auto const copyNode = [&pending](NodeImp const& source, NodeImp& target) {
        target.CopyAllButChildren(source);
        int const numChildren = source.GetNumChildren();
        target.SetNumChildren(numChildren);
        for (auto pos = static_cast<unsigned int>(std::max(numChildren, 0)); pos-- > 0;) {
            if (NodeImp const* const child = source.GetChildImp(pos)) {
                pending.push_back({child, &target, pos});
            }
        }
    };
    copyNode(other, copy);
    while (!pending.empty()) {
        CopyJob const job = pending.back();
        pending.pop_back();
        job.parent->SetChild(job.pos, new NodeImp);
        copyNode(*job.source, *job.parent->GetChildImp(job.pos));
    }

    Clean();
    children_ = std::move(copy.children_);
    for (std::unique_ptr<NodeImp> const& child : children_) {
        if (child != nullptr) {
            child->parent_ = this;
        }
    }
    competitors_ = std::move(copy.competitors_);
    surrogates_ = std::move(copy.surrogates_);
    id_ = copy.id_;
    isClassification_ = copy.isClassification_;
    std::move(std::begin(copy.regInfo_), std::end(copy.regInfo_), std::begin(regInfo_));
    std::move(std::begin(copy.clsInfo_), std::end(copy.clsInfo_), std::begin(clsInfo_));
    predictors_ = std::move(copy.predictors_);
    return *this;
}

void NodeImp::CopyAllButChildren(NodeImp const& other) {
    competitors_ = CloneRules(other.competitors_);
    surrogates_ = CloneRules(other.surrogates_);
    id_ = other.id_;
    predictors_ = other.predictors_;
    for (DataSample const sample : {TrainingSample, TestSample}) {
        if (other.isClassification_) {
            ClsInfoImp const* const info = other.GetClsInfoImp(sample);
            SetClsInfo(info != nullptr ? info->Clone() : nullptr, sample);
        } else {
            RegInfoImp const* const info = other.GetRegInfoImp(sample);
            SetRegInfo(info != nullptr ? new RegInfoImp(*info) : nullptr, sample);
        }
    }
}

}  // namespace tree_800
