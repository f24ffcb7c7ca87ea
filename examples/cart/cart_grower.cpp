#include "cart/cart_grower.h"

#include "cart/node_summary.h"
#include "cart/split_search.h"
#include "cart/surrogates.h"

#include <tree/tree_statistics.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
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

CartGrower::CartGrower(Dataset data, tree_800::StopRule const& stopRule,
                       tree_800::ValidationSpec const& validation)
    : data_(std::move(data)), stopRule_(stopRule.Clone()), validation_(validation.Clone()) {
    if (validation.GetType() == tree_800::CrossValidation) {
        throw std::invalid_argument("the CART grower does not cross-validate");
    }
    for (std::size_t row = 0; row < data_.NumRows(); ++row) {
        all_.Of(data_.samples[row]).push_back(row);
    }
    if (all_.training.empty()) {
        throw std::invalid_argument("the data have no training row");
    }
}

NodeImp* CartGrower::ReleaseRoot() {
    undecided_.clear();
    return root_.release();
}

tree_800::VariableSettings const* CartGrower::GetPredictor(int index) const {
    bool const exists = 0 <= index && index < data_.NumPredictors();
    return exists ? &data_.Predictor(index).settings : nullptr;
}

bool CartGrower::Run() {
    while (Step()) {
    }
    return root_ && !isCancelled_;
}

bool CartGrower::Step() {
    if (isCancelled_) {
        return false;
    }
    if (!isPlanted_) {
        Plant();
    }
    if (undecided_.empty()) {
        return false;
    }
    Undecided const leaf = std::move(undecided_.back());
    undecided_.pop_back();
    ++numDecided_;
    if (Rules splits = FindWorthwhileSplits(leaf); !splits.empty()) {
        Split(leaf, std::move(splits));
    }
    return !undecided_.empty();
}

void CartGrower::Reset() {
    root_.reset();
    undecided_.clear();
    numDecided_ = 0;
    numSplits_ = 0;
    isPlanted_ = false;
    isCancelled_ = false;
}

double CartGrower::GetProgress() const {
    if (!isPlanted_) {
        return 0.0;
    }
    std::size_t underway = 0;
    for (Undecided const& leaf : undecided_) {
        underway += leaf.rows.training.size();
    }
    return 1.0 - static_cast<double>(underway) / static_cast<double>(all_.training.size());
}

int CartGrower::GetNumLeaves() const {
    return root_ ? numSplits_ + 1 : 0;  // every split makes two leaves of one
}

double CartGrower::GetRisk(tree_800::DataSample sample) const { return Judge(sample).mean; }

double CartGrower::GetRiskStdError(tree_800::DataSample sample) const {
    return Judge(sample).stdError;
}

bool CartGrower::GetStatistics(tree_800::TreeStatistics& out) const {
    if (!root_) {
        return false;
    }
    auto const type = validation_->GetType();
    Risk const risk = Judge(type == tree_800::TestSampleValidation ? TestSample : TrainingSample);
    out = tree_800::TreeStatisticsImp(*this, risk.mean, risk.stdError, type);
    return true;
}

void CartGrower::Plant() {
    auto root = std::make_unique<NodeImp>();
    root->SetId(1);
    Summarise(*root, data_, all_, all_);
    undecided_.push_back({root.get(), all_, 0});
    root_ = std::move(root);
    isPlanted_ = true;
}

/// Best first; empty where the stop rule or the data make the node a leaf for good.
Rules CartGrower::FindWorthwhileSplits(Undecided const& leaf) const {
    Rows const& rows = leaf.rows.training;
    std::size_t const numCases = all_.training.size();
    std::size_t const minNodeSize =
        LargerSize(stopRule_->GetMinNodeSize(), stopRule_->GetMinNodePercentSize(), numCases);
    std::size_t const minChildSize =
        LargerSize(stopRule_->GetMinChildSize(), stopRule_->GetMinChildPercentSize(), numCases);
    int const maxDepth = stopRule_->GetMaxTreeDepth();
    if (rows.size() < minNodeSize || (maxDepth > 0 && leaf.depth >= maxDepth)) {
        return {};
    }
    Rules splits = FindSplits(data_, rows, minChildSize);
    double const enough = stopRule_->GetMinImprovement() * Impurity(*root_);
    if (!splits.empty() && splits.front()->GetStatistic(ImprovementStatistic) < enough) {
        return {};
    }
    return splits;
}

void CartGrower::Split(Undecided const& leaf, Rules splits) {
    NodeImp& node = *leaf.node;
    tree_800::SplitRuleImp& primary = *splits.front();
    Rules surrogates = FindSurrogates(data_, leaf.rows.training, primary);
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
        Summarise(*child, data_, rows[pos], all_);
        undecided_.push_back({child.get(), std::move(rows[pos]), leaf.depth + 1});
        node.SetChild(pos, child.release());
    }
    ++numSplits_;
    unsigned id = numDecided_;
    for (auto next = undecided_.rbegin(); next != undecided_.rend(); ++next) {
        next->node->SetId(++id);
    }
}

/// The loss of a case is its squared error, or 1 when it is misclassified and 0 otherwise. With the
/// mean r of those the standard error is sqrt(r (1 - r) / n): Breiman et al. 1984, sections 3.4 and
/// 8.3.
CartGrower::Risk CartGrower::Judge(tree_800::DataSample sample) const {
    Rows const& rows = all_.Of(sample);
    if (!root_ || rows.empty()) {
        return {systemMissingValue(), systemMissingValue()};
    }
    std::vector<double> losses;
    for (std::size_t const row : rows) {
        double const predicted =
            root_->DropObservationThroughTree(data_.Row(row), nullptr)->GetAssignment();
        double const error = predicted - data_.targets[row];
        double const misclassified = error == 0.0 ? 0.0 : 1.0;
        losses.push_back(IsClassification() ? misclassified : error * error);
    }
    auto const numCases = static_cast<double>(losses.size());
    double mean = 0.0;
    for (double const loss : losses) {
        mean += loss / numCases;
    }
    double variance = 0.0;
    for (double const loss : losses) {
        variance += (loss - mean) * (loss - mean) / numCases;
    }
    return {mean, std::sqrt(variance / numCases)};
}

}  // namespace cart
