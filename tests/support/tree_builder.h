#ifndef TREE800_TESTS_SUPPORT_TREE_BUILDER_H
#define TREE800_TESTS_SUPPORT_TREE_BUILDER_H

#include <tree/cls_info.h>
#include <tree/host.h>
#include <tree/node_imp.h>
#include <tree/nominal_split_rule.h>
#include <tree/ordered_split_rule.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// Small trees in one expression, children in the order of their positions:
///
///     auto root = Split(Cut(0, 3.5), Leaf(0, {8.0, 1.0}),
///                       Split(Codes(1, {1, 0}), Leaf(1), Leaf(0)));
///
/// A null rule or child leaves its slot empty.
namespace tree_800::test {

/// An ordered rule that sends values up to the cut to child 0 and those above to child 1.
inline std::unique_ptr<OSplitRule> Cut(int predictor, double value) {
    auto rule = std::make_unique<OSplitRule>(systemMissingValue(), predictor);
    rule->SetCutPoint(value);
    return rule;
}

/// A nominal rule with the given child of each code, -1 for none.
inline std::unique_ptr<NSplitRule> Codes(int predictor, std::vector<int> const& childOfCode) {
    auto rule = std::make_unique<NSplitRule>(predictor, 0);
    int code = 0;
    for (int const child : childOfCode) {
        rule->SetCatMapping(code++, child);
    }
    return rule;
}

/// Information with one class for every count.
inline std::unique_ptr<ClsInfoImp> Counts(int prediction, std::vector<double> const& counts) {
    auto info = std::make_unique<ClsInfoImp>();
    info->SetPrediction(prediction);
    info->SetNumClasses(static_cast<int>(counts.size()));
    for (int i = 0; i < info->GetNumClasses(); ++i) {
        info->SetClassCount(i, counts[static_cast<std::size_t>(i)]);
    }
    return info;
}

inline std::unique_ptr<NodeImp> Leaf(int prediction, std::vector<double> const& counts = {}) {
    auto leaf = std::make_unique<NodeImp>();
    leaf->SetClsInfo(Counts(prediction, counts).release(), TrainingSample);
    return leaf;
}

/// Gives a node without rules its primary split and competitors.
template <typename... Rules>
void SetCompetitors(NodeImp& node, std::unique_ptr<Rules>... rules) {
    node.SetNumCompetitors(sizeof...(rules));
    unsigned int pos = 0;
    (node.SetCompetitor(pos++, rules.release()), ...);
}

template <typename... Rules>
void SetSurrogates(NodeImp& node, std::unique_ptr<Rules>... rules) {
    node.SetNumSurrogates(sizeof...(rules));
    unsigned int pos = 0;
    (node.SetSurrogate(pos++, rules.release()), ...);
}

inline void SetChild(NodeImp& node, int pos, std::unique_ptr<NodeImp> child) {
    if (child != nullptr) {
        node.SetChild(static_cast<unsigned int>(pos), child.release());
    }
}

/// A node with these children and no rules.
template <typename... Children>
std::unique_ptr<NodeImp> Inner(Children... children) {
    auto node = std::make_unique<NodeImp>();
    node->SetNumChildren(sizeof...(children));
    int pos = 0;
    (SetChild(*node, pos++, std::move(children)), ...);
    return node;
}

template <typename Rule, typename... Children>
std::unique_ptr<NodeImp> Split(std::unique_ptr<Rule> primary, Children... children) {
    auto node = Inner(std::move(children)...);
    SetCompetitors(*node, std::move(primary));
    return node;
}

}  // namespace tree_800::test

#endif
