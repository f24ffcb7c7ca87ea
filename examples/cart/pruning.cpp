#include "cart/pruning.h"

#include <tree/node_imp.h>
#include <tree/split_rule_imp.h>

#include <algorithm>
#include <limits>

namespace cart {
namespace {

using tree_800::NodeImp;

/// Parts of the root's cost, or of a risk, below which a difference is rounding.
constexpr double Tolerance = 1e-10;

std::vector<NodeImp*> PreOrder(NodeImp& root) {
    std::vector<NodeImp*> nodes;
    std::vector<NodeImp*> open = {&root};
    while (!open.empty()) {
        NodeImp* const node = open.back();
        open.pop_back();
        nodes.push_back(node);
        for (int pos = node->GetNumChildren() - 1; pos >= 0; --pos) {
            open.push_back(node->GetChildImp(static_cast<unsigned>(pos)));
        }
    }
    return nodes;
}

}  // namespace

/// What there is to know of a node while branches are cut; in pre-order, so that a parent comes
/// before its children.
struct PruningSequence::Branch {
    NodeImp* node;
    std::size_t parent;
    double costAsLeaf = 0.0;    // of all rows that pass it
    double costOfStays = 0.0;   // of the rows that end at it while it is an inner node
    double costAsBranch = 0.0;  // of the rows that pass it, where they end
    double numLeaves = 0.0;
    bool isLeaf = false;

    /// By how much the risk rises for each leaf saved: g(t) of the literature.
    double Strength() const { return (costAsLeaf - costAsBranch) / (numLeaves - 1.0); }
};

PruningSequence::PruningSequence(NodeImp& root, Dataset const& data, Rows const& training,
                                 Weighting const& weighting)
    : root_(root) {
    std::vector<Branch> branches = MakeBranches(data, training, weighting);
    for (Branch const& branch : branches) {
        leafFrom_[branch.node] = 0.0;
    }
    while (!branches.front().isLeaf) {
        CutWeakestLinks(branches);
    }
}

std::vector<PruningSequence::Branch> PruningSequence::MakeBranches(
    Dataset const& data, Rows const& training, Weighting const& weighting) const {
    std::vector<Branch> branches;
    std::unordered_map<tree_800::Node const*, std::size_t> indexOf;
    for (NodeImp* const node : PreOrder(root_)) {
        indexOf[node] = branches.size();
        std::size_t const parent = node == &root_ ? 0 : indexOf[node->GetParent()];
        branches.push_back({node, parent});
        branches.back().isLeaf = node->GetNumChildren() == 0;
    }
    for (std::size_t const row : training) {
        double weight = 1.0 / static_cast<double>(training.size());
        if (data.IsClassification()) {
            weight *= weighting.InNode()[static_cast<std::size_t>(data.targets[row])];
        }
        NodeImp const* const end = root_.DropObservationThroughTree(data.Row(row), nullptr);
        std::size_t i = indexOf[end];
        branches[i].costOfStays += weight * Loss(data, weighting, row, *end);
        for (;; i = branches[i].parent) {
            branches[i].costAsLeaf += weight * Loss(data, weighting, row, *branches[i].node);
            if (i == 0) {
                break;
            }
        }
    }
    return branches;
}

/// Cuts every branch that is as weak as the weakest, and all that have become so thereby.
void PruningSequence::CutWeakestLinks(std::vector<Branch>& branches) {
    for (Branch& branch : branches) {
        branch.costAsBranch = branch.isLeaf ? branch.costAsLeaf : branch.costOfStays;
        branch.numLeaves = branch.isLeaf ? 1.0 : 0.0;
    }
    for (std::size_t i = branches.size() - 1; i > 0; --i) {
        Branch& parent = branches[branches[i].parent];
        if (!parent.isLeaf) {
            parent.costAsBranch += branches[i].costAsBranch;
            parent.numLeaves += branches[i].numLeaves;
        }
    }
    double weakest = std::numeric_limits<double>::infinity();
    for (Branch const& branch : branches) {
        if (!branch.isLeaf) {
            weakest = std::min(weakest, branch.Strength());
        }
    }
    double const rounding = Tolerance * branches.front().costAsLeaf;
    if (weakest > alphas_.back() + rounding) {
        alphas_.push_back(weakest);
    }
    for (Branch& branch : branches) {
        bool const isBelowLeaf = branch.node != &root_ && branches[branch.parent].isLeaf;
        if (!branch.isLeaf && (isBelowLeaf || branch.Strength() <= alphas_.back() + rounding)) {
            branch.isLeaf = true;
            leafFrom_[branch.node] = alphas_.back();
        }
    }
}

tree_800::Node const& PruningSequence::FindEnd(double const* observation, double alpha) const {
    NodeImp const* node = &root_;
    while (alpha < leafFrom_.at(node)) {
        NodeImp const* child = nullptr;
        node->Child(node->Classify(observation), &child);
        if (child == nullptr) {
            break;
        }
        node = child;
    }
    return *node;
}

std::vector<NodeImp*> PruningSequence::FindNewLeaves(double alpha) const {
    std::vector<NodeImp*> newLeaves;
    for (NodeImp* const node : PreOrder(root_)) {
        bool const isCut = node->GetNumChildren() > 0 && leafFrom_.at(node) <= alpha;
        bool const isTopmost = node == &root_ || leafFrom_.at(node->GetParent()) > alpha;
        if (isCut && isTopmost) {
            newLeaves.push_back(node);
        }
    }
    return newLeaves;
}

std::size_t ChooseSubtree(std::vector<Risk> const& risks, tree_800::PruningSpec const& pruning) {
    auto const lastAtMost = [&](double limit) {
        auto const found = std::find_if(risks.rbegin(), risks.rend(), [&](Risk const& risk) {
            return risk.value <= limit + Tolerance * limit;
        });
        return static_cast<std::size_t>(risks.rend() - found) - 1;
    };
    double smallest = risks.front().value;
    for (Risk const& risk : risks) {
        smallest = std::min(smallest, risk.value);
    }
    std::size_t const best = lastAtMost(smallest);
    double const margin = pruning.GetSERuleFactor() * risks[best].stdError;
    return pruning.GetPickMinRiskTree() ? best : lastAtMost(risks[best].value + margin);
}

void Prune(NodeImp& root, std::vector<NodeImp*> const& newLeaves) {
    for (NodeImp* const leaf : newLeaves) {
        leaf->RemoveChildren(true);
        for (unsigned i = 0; i < leaf->GetNumCompetitors(); ++i) {
            leaf->SetCompetitor(i, nullptr);
        }
        leaf->SetNumCompetitors(0);
    }
    unsigned id = 0;
    for (NodeImp* const node : PreOrder(root)) {
        node->SetId(++id);
    }
}

}  // namespace cart
