#include "cart/growth.h"

#include "cart/node_summary.h"
#include "cart/split_search.h"
#include "cart/surrogates.h"

#include <tree/stop_rule.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace cart {
namespace {

using tree_800::NodeImp;
using tree_800::TestSample;
using tree_800::TrainingSample;

/// The larger of a size and a percent size, in cases.
std::size_t LargerSize(int cases, double percent, std::size_t numCases) {
    double const percentCases = std::ceil(percent / 100.0 * static_cast<double>(numCases));
    return static_cast<std::size_t>(std::max({static_cast<double>(cases), percentCases, 0.0}));
}

/// Lets what no rule places follow the majority of the cases that the primary split places.
void SetMajorityChild(tree_800::SplitRuleImp& primary, Sides const& sides) {
    if (sides[0] != sides[1]) {
        std::size_t const bigger = sides[0] < sides[1] ? 1 : 0;
        double const share =
            static_cast<double>(sides[bigger]) / static_cast<double>(sides[0] + sides[1]);
        primary.SetDumbRule(static_cast<int>(bigger), share);
    }
}

/// The rows of the node that go on to each of its two children.
std::array<SampleRows, 2> Route(NodeImp const& node, Dataset const& data, SampleRows const& rows) {
    std::array<SampleRows, 2> children;
    for (auto const sample : {TrainingSample, TestSample}) {
        for (std::size_t const row : rows.Of(sample)) {
            int const child = node.Classify(data.Row(row));
            if (child >= 0) {
                children[static_cast<std::size_t>(child)].Of(sample).push_back(row);
            }
        }
    }
    return children;
}

}  // namespace

Growth::Growth(Dataset const& data, SampleRows rows, tree_800::CartSettings const& settings,
               Weighting const& weighting)
    : data_(data),
      settings_(settings),
      weighting_(weighting),
      all_(std::move(rows)),
      root_(std::make_unique<NodeImp>()) {
    root_->SetId(1);
    Summarise(*root_, data_, all_, all_, weighting_);
    undecided_.push_back({root_.get(), all_, 0});
}

void Growth::Step() {
    Undecided const leaf = std::move(undecided_.back());
    undecided_.pop_back();
    ++numDecided_;
    if (Rules splits = FindWorthwhileSplits(leaf); !splits.empty()) {
        Split(leaf, std::move(splits));
    }
}

double Growth::GetProgress() const {
    std::size_t underway = 0;
    for (Undecided const& leaf : undecided_) {
        underway += leaf.rows.training.size();
    }
    return 1.0 - static_cast<double>(underway) / static_cast<double>(all_.training.size());
}

std::unique_ptr<NodeImp> Growth::ReleaseRoot() {
    undecided_.clear();
    return std::move(root_);
}

/// Best first; empty where the stop rule or the data make the node a leaf for good.
Rules Growth::FindWorthwhileSplits(Undecided const& leaf) const {
    tree_800::StopRule const& stopRule = *settings_.GetStopRule();
    Rows const& rows = leaf.rows.training;
    std::size_t const numCases = all_.training.size();
    std::size_t const minNodeSize =
        LargerSize(stopRule.GetMinNodeSize(), stopRule.GetMinNodePercentSize(), numCases);
    std::size_t const minChildSize =
        LargerSize(stopRule.GetMinChildSize(), stopRule.GetMinChildPercentSize(), numCases);
    int const maxDepth = stopRule.GetMaxTreeDepth();
    if (rows.size() < minNodeSize || (maxDepth > 0 && leaf.depth >= maxDepth)) {
        return {};
    }
    Rules splits =
        FindSplits(data_, rows,
                   {weighting_.InCriterion(), minChildSize,
                    std::min(static_cast<std::size_t>(settings_.GetMaxNominalPredCategories()),
                             MaxSearchedCategories),
                    static_cast<std::size_t>(settings_.GetMaxNumCompetitors())});
    double const enough = stopRule.GetMinImprovement() * Impurity(*root_, weighting_);
    if (!splits.empty() && splits.front()->GetStatistic(ImprovementStatistic) < enough) {
        return {};
    }
    return splits;
}

void Growth::Split(Undecided const& leaf, Rules splits) {
    NodeImp& node = *leaf.node;
    tree_800::SplitRuleImp& primary = *splits.front();
    Rules surrogates = FindSurrogates(data_, leaf.rows.training, primary,
                                      static_cast<std::size_t>(settings_.GetMaxNumSurrogates()));
    SetMajorityChild(primary, CountSides(data_, leaf.rows.training, primary));

    node.SetNumCompetitors(static_cast<unsigned>(splits.size()));
    for (unsigned i = 0; i < splits.size(); ++i) {
        node.SetCompetitor(i, splits[i].release());
    }
    node.SetNumSurrogates(static_cast<unsigned>(surrogates.size()));
    for (unsigned i = 0; i < surrogates.size(); ++i) {
        node.SetSurrogate(i, surrogates[i].release());
    }

    node.SetNumChildren(2);  // a node without places for children routes nothing
    std::array<SampleRows, 2> rows = Route(node, data_, leaf.rows);
    for (unsigned const pos : {1U, 0U}) {
        auto child = std::make_unique<NodeImp>();
        Summarise(*child, data_, rows[pos], all_, weighting_);
        undecided_.push_back({child.get(), std::move(rows[pos]), leaf.depth + 1});
        node.SetChild(pos, child.release());
    }
    unsigned id = numDecided_;
    for (auto next = undecided_.rbegin(); next != undecided_.rend(); ++next) {
        next->node->SetId(++id);
    }
}

}  // namespace cart
