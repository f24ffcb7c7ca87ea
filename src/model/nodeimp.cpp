#include <tree/node_imp.h>

#include <tree/cls_info.h>
#include <tree/precondition.h>
#include <tree/reg_info.h>
#include <tree/split_rule.h>
#include <tree/split_rule_imp.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tree_800 {

namespace {

// n empty slots; what the old ones held is forgotten, not deleted.
template <typename Slots>
void ResetSlots(Slots& slots, std::size_t n) {
    Slots empty(n);
    for (auto& slot : slots) {
        static_cast<void>(slot.release());
    }
    slots = std::move(empty);
}

template <typename Slots>
auto& Slot(Slots& slots, unsigned int pos) {
    TREE800_REQUIRE(pos < slots.size(), "position beyond the slots");
    return slots[pos];
}

template <typename Slots, typename Out>
bool ReadSlot(Slots const& slots, int pos, Out* out) {
    if (pos < 0 || static_cast<std::size_t>(pos) >= slots.size()) {
        return false;
    }
    *out = slots[static_cast<std::size_t>(pos)].get();
    return true;
}

template <typename Rules>
SplitRule* NewHandle(Rules const& rules, unsigned int pos) {
    return pos < rules.size() && rules[pos] != nullptr ? new SplitRule(*rules[pos]) : nullptr;
}

bool IsPermutation(std::vector<int> const& positions) {
    std::vector<bool> seen(positions.size(), false);
    for (int const pos : positions) {
        if (pos < 0 || static_cast<std::size_t>(pos) >= seen.size() ||
            seen[static_cast<std::size_t>(pos)]) {
            return false;
        }
        seen[static_cast<std::size_t>(pos)] = true;
    }
    return true;
}

}  // namespace

Node::~Node() = default;

NodeImp::NodeImp() = default;

NodeImp::~NodeImp() {
    NodeImp::RemoveChildren(false);
    ReleaseInformationAndRules();
}

void NodeImp::Clean() {
    RemoveChildren(false);
    ReleaseInformationAndRules();
}

void NodeImp::ReleaseInformationAndRules() noexcept {
    for (std::unique_ptr<ClsInfo>& info : clsInfo_) {
        info.reset();
    }
    for (std::unique_ptr<RegInfo>& info : regInfo_) {
        info.reset();
    }
    competitors_.clear();
}

Node* NodeImp::GetParent() const { return parent_; }

unsigned int NodeImp::GetId() const { return id_; }

void NodeImp::SetId(unsigned int id) { id_ = id; }

// Children

int NodeImp::GetNumChildren() const { return static_cast<int>(children_.size()); }

Node* NodeImp::GetChild(unsigned int pos) const {
    return pos < children_.size() ? children_[pos].get() : nullptr;
}

NodeImp* NodeImp::GetChildImp(unsigned int pos) const { return Slot(children_, pos).get(); }

bool NodeImp::Child(int pos, NodeImp const** out) const { return ReadSlot(children_, pos, out); }

bool NodeImp::Child(int pos, NodeImp** out) { return ReadSlot(children_, pos, out); }

void NodeImp::SetNumChildren(int n) {
    ResetSlots(children_, static_cast<std::size_t>(std::max(n, 0)));
}

void NodeImp::SetChild(unsigned int pos, Node* child) {
    TREE800_REQUIRE(dynamic_cast<NodeImp*>(child) != nullptr, "a child must be a NodeImp");
    auto* const node = static_cast<NodeImp*>(child);
    std::unique_ptr<NodeImp>& slot = Slot(children_, pos);
    static_cast<void>(slot.release());
    slot.reset(node);
    node->parent_ = this;
}

void NodeImp::RemoveChild(int pos) {
    if (pos < 0 || pos >= GetNumChildren()) {
        return;
    }
    auto const slot = static_cast<std::size_t>(pos);
    DeleteSubtree(std::move(children_[slot]));
    children_.erase(slot);
}

bool NodeImp::RemoveChildren(bool /*ignored*/) {
    for (std::unique_ptr<NodeImp>& child : children_) {
        DeleteSubtree(std::move(child));
    }
    children_.clear();
    surrogates_.clear();
    return true;
}

// Goes down by the children and back up by the parent links: neither recursion nor memory is
// needed.
void NodeImp::DeleteSubtree(std::unique_ptr<NodeImp> root) noexcept {
    if (root == nullptr) {
        return;
    }
    root->parent_ = nullptr;
    NodeImp* node = root.release();
    while (node != nullptr) {
        if (node->children_.empty()) {
            std::unique_ptr<NodeImp> const leaf(node);
            node = leaf->parent_;
            continue;
        }
        NodeImp* const child = node->children_.back().release();
        node->children_.pop_back();
        if (child != nullptr) {
            child->parent_ = node;
            node = child;
        }
    }
}

void NodeImp::ReorderSiblings(std::vector<int> const& newPos) {
    TREE800_REQUIRE(newPos.size() == children_.size() && IsPermutation(newPos),
                    "not a permutation of the child positions");
    Children reordered(children_.size());
    if (!competitors_.empty() && competitors_.front() != nullptr) {
        competitors_.front()->ReorderMappings(newPos);
    }
    for (std::unique_ptr<SplitRuleImp> const& surrogate : surrogates_) {
        if (surrogate != nullptr) {
            surrogate->ReorderMappings(newPos);
        }
    }
    for (std::size_t i = 0; i < children_.size(); ++i) {
        reordered[static_cast<std::size_t>(newPos[i])] = std::move(children_[i]);
    }
    children_ = std::move(reordered);
}

// Split rules

unsigned int NodeImp::GetNumCompetitors() const {
    return static_cast<unsigned int>(competitors_.size());
}

unsigned int NodeImp::GetNumSurrogates() const {
    return static_cast<unsigned int>(surrogates_.size());
}

int NodeImp::GetBiggestChildPos() const {
    bool const hasPrimary = !competitors_.empty() && competitors_.front() != nullptr;
    return hasPrimary ? competitors_.front()->GetDumbChildPos() : -1;
}

SplitRule* NodeImp::GetCompetitor(unsigned int pos) const { return NewHandle(competitors_, pos); }

SplitRule* NodeImp::GetSurrogate(unsigned int pos) const { return NewHandle(surrogates_, pos); }

SplitRuleImp* NodeImp::GetCompetitorImp(unsigned int pos) const {
    return Slot(competitors_, pos).get();
}

SplitRuleImp* NodeImp::GetSurrogateImp(unsigned int pos) const {
    return Slot(surrogates_, pos).get();
}

void NodeImp::SetNumCompetitors(unsigned int n) { ResetSlots(competitors_, n); }

void NodeImp::SetNumSurrogates(unsigned int n) { ResetSlots(surrogates_, n); }

void NodeImp::SetCompetitor(unsigned int pos, SplitRuleImp* rule) {
    Slot(competitors_, pos).reset(rule);
}

void NodeImp::SetSurrogate(unsigned int pos, SplitRuleImp* rule) {
    Slot(surrogates_, pos).reset(rule);
}

int NodeImp::FindCompetitorPos(int predictorIndex) const {
    auto const found =
        std::find_if(competitors_.begin(), competitors_.end(),
                     [predictorIndex](std::unique_ptr<SplitRuleImp> const& rule) {
                         return rule != nullptr && rule->GetPredictorIndex() == predictorIndex;
                     });
    return found == competitors_.end() ? -1 : static_cast<int>(found - competitors_.begin());
}

}  // namespace tree_800
