#include "fuzz/rule_model.h"

#include <tree/node_imp.h>
#include <tree/tree_router.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <utility>

namespace tree_800::fuzz {
namespace {

constexpr int NumPredictors = 3;
constexpr int MaxNodes = 40;

using Row = std::array<double, NumPredictors>;
using Rules = std::vector<std::optional<RuleModel>>;

/// The twin of a node: its rules and children, an empty slot where the node has one.
struct NodeModel {
    NodeImp* node = nullptr;
    std::vector<std::unique_ptr<NodeModel>> children;
    Rules competitors;
    Rules surrogates;

    int NumChildren() const { return static_cast<int>(children.size()); }

    int Classify(Row const& row) const {
        if (children.empty() || competitors.empty() || !competitors[0]) {
            return -1;
        }
        auto const ask = [&row](std::optional<RuleModel> const& rule) {
            return rule ? rule->Classify(row[static_cast<std::size_t>(rule->predictor)]) : -1;
        };
        int child = ask(competitors[0]);
        for (std::size_t i = 0; child < 0 && i < surrogates.size(); ++i) {
            child = ask(surrogates[i]);
        }
        return child >= 0 ? child : competitors[0]->dumb;
    }
    /// The nodes of the walk, this one first.
    std::vector<NodeModel const*> Path(Row const& row) const {
        std::vector<NodeModel const*> path{this};
        for (;;) {
            NodeModel const& last = *path.back();
            auto const pos = static_cast<std::size_t>(last.Classify(row));
            if (pos >= last.children.size() || last.children[pos] == nullptr) {
                return path;
            }
            path.push_back(last.children[pos].get());
        }
    }
    void Collect(std::vector<NodeModel*>& nodes) {
        nodes.push_back(this);
        for (auto const& child : children) {
            if (child != nullptr) {
                child->Collect(nodes);
            }
        }
    }
    /// A twin of another subtree that has the same form.
    std::unique_ptr<NodeModel> CopyFor(NodeImp* copy) const {
        auto model = std::make_unique<NodeModel>();
        model->node = copy;
        model->competitors = competitors;
        model->surrogates = surrogates;
        for (unsigned int pos = 0; pos < children.size(); ++pos) {
            auto const& child = children[pos];
            model->children.push_back(child != nullptr ? child->CopyFor(copy->GetChildImp(pos))
                                                       : nullptr);
        }
        return model;
    }
};

void CheckRow(NodeModel const& from, Row const& row, NodeModel const& stop) {
    NodeImp const stranger;
    auto const path = from.Path(row);
    bool const isPassed = std::find(path.begin(), path.end(), &stop) != path.end();
    auto const drop = [&](NodeImp const* stopNode) {
        return from.node->DropObservationThroughTree(row.data(), stopNode);
    };
    Check(from.node->Classify(row.data()) == from.Classify(row), "one step");
    Check(drop(nullptr) == path.back()->node, "the whole walk");
    Check(drop(stop.node) == (isPassed ? stop.node : nullptr), "the walk to a stop node");
    Check(drop(&stranger) == nullptr, "the walk to a node elsewhere");
}

void CheckForm(NodeModel const& model) {
    NodeImp const& node = *model.node;
    Check(node.GetNumChildren() == model.NumChildren(), "GetNumChildren");
    Check(node.GetNumCompetitors() == model.competitors.size(), "GetNumCompetitors");
    Check(node.GetNumSurrogates() == model.surrogates.size(), "GetNumSurrogates");
    for (unsigned int pos = 0; pos < model.children.size(); ++pos) {
        auto const& child = model.children[pos];
        Check(node.GetChild(pos) == (child != nullptr ? child->node : nullptr), "GetChild");
        Check(child == nullptr || child->node->GetParent() == &node, "GetParent");
    }
}

/// Makes a subtree sound: a node without a primary split becomes a leaf, and one whose rules need
/// more children gets them. Answers whether it was sound.
bool Mend(NodeImp& node) {
    if (node.GetNumChildren() > 0 &&
        (node.GetNumCompetitors() == 0 || node.GetCompetitorImp(0) == nullptr)) {
        node.RemoveChildren(true);
        return false;
    }
    std::vector<NodeImp*> children(static_cast<std::size_t>(node.GetNumChildren()));
    for (std::size_t pos = 0; pos < children.size(); ++pos) {
        children[pos] = node.GetChildImp(static_cast<unsigned int>(pos));
    }
    std::size_t const numFormer = children.size();
    auto const grow = [&children](int n) {
        children.resize(std::max(children.size(), static_cast<std::size_t>(std::max(n, 0))));
    };
    if (numFormer > 0) {
        grow(std::max(node.GetCompetitorImp(0)->GetNumChildren(), node.GetBiggestChildPos() + 1));
        for (unsigned int pos = 0; pos < node.GetNumSurrogates(); ++pos) {
            auto const* const rule = node.GetSurrogateImp(pos);
            grow(rule != nullptr ? rule->GetNumChildren() : 0);
        }
    }
    bool isSound = children.size() == numFormer;
    node.SetNumChildren(static_cast<int>(children.size()));
    for (std::size_t pos = 0; pos < children.size(); ++pos) {
        isSound = children[pos] != nullptr && Mend(*children[pos]) && isSound;
        children[pos] = children[pos] != nullptr ? children[pos] : new NodeImp;
        node.SetChild(static_cast<unsigned int>(pos), children[pos]);
    }
    return isSound;
}

/// Routes by tables through a sound copy of the tree.
void CheckRouter(Input& input, NodeImp const& root) {
    std::unique_ptr<NodeImp> const tree(root.Clone());
    Check(Mend(*tree) == CheckTree(root).empty(), "a tree has problems or needs no mending");
    auto const router = TreeRouter::Compile(*tree, nullptr);
    Check(router != nullptr, "a sound tree compiles");
    std::array<Row, 9> rows{};  // more than a batch has under way
    for (Row& row : rows) {
        std::generate(row.begin(), row.end(), [&input] {
            return input.Draw(0, 2) == 0 ? systemMissingValue() : input.Number();
        });
    }
    std::array<NodeImp const*, rows.size()> ends{};
    router->Route(RowBatch::RowMajor(rows[0].data(), rows.size(), NumPredictors), ends.data());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        double const* const row = rows[i].data();
        NodeImp const* const end = tree->DropObservationThroughTree(row, nullptr);
        int const leaf = router->RouteToLeaf(row);
        Check(ends[i] == end && router->Route(row) == end, "the walk by tables");
        Check(leaf >= 0 ? router->GetLeaf(leaf) == end : end->GetNumChildren() > 0, "its leaf");
    }
}

void SetChild(NodeModel& model, std::size_t pos, std::unique_ptr<NodeModel> child) {
    model.node->SetChild(static_cast<unsigned int>(pos), child->node);
    model.children[pos] = std::move(child);
}

/// Sizes the list of children anew; each one that was there is deleted or finds another slot.
void ResizeChildren(Input& input, NodeModel& model) {
    auto former = std::exchange(model.children, {});
    int const n = input.Flag() ? 2 : input.Draw(0, 4);
    model.node->SetNumChildren(n);
    model.children.resize(static_cast<std::size_t>(n));
    for (auto& child : former) {
        std::size_t const pos = n > 0 ? input.Index(model.children.size()) : 0;
        if (child != nullptr && n > 0 && model.children[pos] == nullptr) {
            SetChild(model, pos, std::move(child));
        } else if (child != nullptr) {
            delete child->node;
        }
    }
}

void FillChildren(Input& input, NodeModel& model) {
    if (model.children.empty()) {
        ResizeChildren(input, model);
    }
    for (std::size_t pos = 0; pos < model.children.size(); ++pos) {
        if (model.children[pos] == nullptr) {
            auto leaf = std::make_unique<NodeModel>();
            leaf->node = std::make_unique<NodeImp>().release();
            SetChild(model, pos, std::move(leaf));
        }
    }
}

void Reorder(Input& input, NodeModel& model) {
    std::vector<int> newPos(model.children.size());
    std::iota(newPos.begin(), newPos.end(), 0);
    for (std::size_t i = newPos.size(); i > 1; --i) {
        std::swap(newPos[i - 1], newPos[input.Index(i)]);
    }
    std::vector<RuleModel*> renumbered;
    auto const add = [&renumbered](std::optional<RuleModel>& rule) {
        if (rule) {
            renumbered.push_back(&*rule);
        }
    };
    std::for_each(model.competitors.begin(),
                  model.competitors.begin() + (model.competitors.empty() ? 0 : 1), add);
    std::for_each(model.surrogates.begin(), model.surrogates.end(), add);
    if (!std::all_of(renumbered.begin(), renumbered.end(),
                     [&model](auto* rule) { return rule->CanReorder(model.NumChildren()); })) {
        return;
    }
    model.node->ReorderSiblings(newPos);
    std::for_each(renumbered.begin(), renumbered.end(),
                  [&newPos](auto* rule) { rule->Reorder(newPos); });
    auto former = std::move(model.children);
    model.children = std::vector<std::unique_ptr<NodeModel>>(former.size());
    for (std::size_t i = 0; i < former.size(); ++i) {
        model.children[static_cast<std::size_t>(newPos[i])] = std::move(former[i]);
    }
}

/// Sizes a list of rules, puts one into a slot or empties the slot, or changes the one that is
/// there.
void ChangeRules(Input& input, NodeModel& model) {
    bool const areSurrogates = input.Flag();
    NodeImp& node = *model.node;
    Rules& rules = areSurrogates ? model.surrogates : model.competitors;
    auto const set = [&](std::size_t slot, std::unique_ptr<SplitRuleImp> rule) {
        auto const pos = static_cast<unsigned int>(slot);
        areSurrogates ? node.SetSurrogate(pos, rule.release())
                      : node.SetCompetitor(pos, rule.release());
    };
    if (rules.empty() || input.Draw(0, 7) == 0) {
        for (std::size_t pos = 0; pos < rules.size(); ++pos) {
            set(pos, nullptr);
        }
        auto const n = static_cast<unsigned int>(input.Draw(0, 3));
        areSurrogates ? node.SetNumSurrogates(n) : node.SetNumCompetitors(n);
        rules.assign(n, std::nullopt);
        return;
    }
    std::size_t const slot = input.Index(rules.size());
    std::optional<RuleModel>& rule = rules[slot];
    int const choice = input.Draw(0, 15);
    if (!rule || choice < 2) {
        rule = DrawEmptyRule(input, NumPredictors);
        set(slot, rule->NewRule());
    } else if (choice == 2) {
        rule.reset();
        set(slot, nullptr);
        return;
    }
    auto const pos = static_cast<unsigned int>(slot);
    auto* const imp = areSurrogates ? node.GetSurrogateImp(pos) : node.GetCompetitorImp(pos);
    for (int n = input.Draw(1, 4); n > 0; --n) {
        ChangeRule(input, *imp, *rule);
    }
}

void ChangeChildren(Input& input, NodeModel& model) {
    auto const removeOne = [&] {
        int const pos = input.Draw(-1, model.NumChildren());
        model.node->RemoveChild(pos);
        if (pos >= 0 && pos < model.NumChildren()) {
            model.children.erase(model.children.begin() + pos);
        }
    };
    auto const removeAll = [&] {
        model.node->RemoveChildren(input.Flag());
        model.children.clear();
        model.surrogates.clear();
    };
    auto const fill = [&] { FillChildren(input, model); };
    DoOneOf(
        input, removeOne, removeAll, [&] { Reorder(input, model); },
        [&] { ResizeChildren(input, model); }, fill, fill, fill);
}

}  // namespace

void DriveRouting(Input& input) {
    auto root = std::make_unique<NodeImp>();
    auto model = std::make_unique<NodeModel>();
    model->node = root.get();
    std::vector<NodeModel*> nodes{model.get()};
    for (int step = 0; step < 80 && !input.IsUsedUp(); ++step) {
        NodeModel& changed = *input.Pick(nodes);
        NodeModel const& other = *input.Pick(nodes);
        int const operation = input.Draw(0, 15);
        if (operation == 0) {
            root.reset(model->node->Clone());
            model = model->CopyFor(root.get());
        } else if (operation == 1 && nodes.size() < MaxNodes / 2) {
            *changed.node = *other.node;
            if (&changed != &other) {
                changed = std::move(*other.CopyFor(changed.node));
            }
        } else if (operation < 6 && nodes.size() < MaxNodes) {
            ChangeChildren(input, changed);
        } else {
            ChangeRules(input, changed);
        }
        nodes.clear();
        model->Collect(nodes);
        for (NodeModel const* const node : nodes) {
            CheckForm(*node);
        }
        Row row{};
        std::generate(row.begin(), row.end(), [&input] { return input.Number(); });
        CheckRow(*model, row, *input.Pick(nodes));
        CheckRow(*input.Pick(nodes), row, *input.Pick(nodes));
        if (step % 8 == 7) {
            CheckRouter(input, *root);
        }
    }
    CheckRouter(input, *root);
}

}  // namespace tree_800::fuzz
