#include <tree/tree_router.h>

#include "model/plain_rule.h"

#include <tree/node_imp.h>

#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tree_800 {

namespace {

// Walks a tree with a stack of its own and collects the problems.
class Check {
public:
    explicit Check(NodeImp const& root) : root_(&root) {}

    std::vector<TreeProblem> Run() {
        Enter(*root_);
        while (!open_.empty()) {
            NodeImp const& node = *open_.back().node;
            int const pos = open_.back().nextChild++;
            if (pos == node.GetNumChildren()) {
                open_.pop_back();
                if (!open_.empty()) {
                    path_.pop_back();
                }
                continue;
            }
            NodeImp const* const child = node.GetChildImp(static_cast<unsigned int>(pos));
            if (child == nullptr) {
                Report("Child slot " + std::to_string(pos) + " is empty.");
                continue;
            }
            path_.push_back(pos);
            if (IsElsewhereToo(*child, node, pos)) {
                Report("The node is shared with another place in the tree or leads back up.");
                path_.pop_back();
            } else {
                Enter(*child);
            }
        }
        return std::move(problems_);
    }

private:
    struct OpenNode {
        NodeImp const* node;
        int nextChild;
    };

    void Report(std::string what) { problems_.push_back({path_, std::move(what)}); }

    // A node knows one parent: whatever holds it besides cannot be its parent too. What is left
    // are two slots of one parent and the root, whose parent is not of this tree.
    bool IsElsewhereToo(NodeImp const& child, NodeImp const& parent, int pos) {
        if (child.GetParent() != &parent || &child == root_) {
            return true;
        }
        if (parent.GetNumChildren() == 2) {
            return pos == 1 && parent.GetChildImp(0) == &child;
        }
        return !childrenOfWideNodes_.insert(&child).second;
    }

    void Enter(NodeImp const& node) {
        open_.push_back({&node, 0});
        int const numChildren = node.GetNumChildren();
        if (numChildren == 0) {
            return;
        }
        if (node.GetNumCompetitors() == 0 || node.GetCompetitorImp(0) == nullptr) {
            Report("The node has children and no primary split.");
        } else {
            CheckRule(*node.GetCompetitorImp(0), Primary, numChildren);
            if (node.GetBiggestChildPos() >= numChildren) {
                Report("The biggest child's position lies beyond the children.");
            }
        }
        for (unsigned int i = 0; i < node.GetNumSurrogates(); ++i) {
            if (SplitRuleImp const* const surrogate = node.GetSurrogateImp(i)) {
                CheckRule(*surrogate, static_cast<int>(i), numChildren);
            }
        }
    }

    static constexpr int Primary = -1;

    // A rule is named by its number among the surrogates.
    void ReportRule(int number, char const* what) {
        Report((number == Primary ? "The primary split" : "Surrogate " + std::to_string(number)) +
               what);
    }

    void CheckRule(SplitRuleImp const& rule, int number, int numChildren) {
        if (rule.GetPredictorIndex() < 0) {
            ReportRule(number, " has a negative predictor index.");
        }
        if (rule.GetNumChildren() > numChildren) {
            ReportRule(number, " answers a position beyond the children.");
        }
        bool const isPlain = AsPlainOrdered(rule) != nullptr || AsPlainNominal(rule) != nullptr;
        if (!isPlain && std::unique_ptr<SplitRuleImp const>(rule.Clone()) == nullptr) {
            ReportRule(number, " has no clone.");
        }
    }

    NodeImp const* root_;
    std::vector<OpenNode> open_;
    std::vector<int> path_;
    std::unordered_set<NodeImp const*> childrenOfWideNodes_;
    std::vector<TreeProblem> problems_;
};

}  // namespace

std::vector<TreeProblem> CheckTree(NodeImp const& root) { return Check(root).Run(); }

}  // namespace tree_800
